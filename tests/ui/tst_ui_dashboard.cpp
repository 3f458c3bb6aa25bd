#include "UiTest.h"
#include "store/AppUpdates.h"
#include "store/ConnectionSession.h"
#include "store/StoreSettings.h"
#include "store/StoreStatus.h"

#include <QAccessible>
#include <QSignalSpy>

using namespace std::chrono_literals;

namespace {

RoyaltySummary sampleSummary()
{
    RoyaltySummary summary;
    summary.gross = 1234.5;
    summary.spending = 210.25;
    summary.net = 1024.25;
    summary.paidEbookUnits = 1;
    summary.paidEbookRoyalties = 3.5;
    summary.paperbackUnits = 1234;
    summary.paperbackRoyalties = 2500;
    summary.reads = 1;
    summary.preOrderUnits = 2;
    summary.freeEbookDownloads = 7;
    return summary;
}

QList<SalesBreakdownMetric> allMetrics()
{
    constexpr auto all = SalesBreakdownMetric::allCases();
    return {all.begin(), all.end()};
}

QSet<SalesBreakdownMetric> everyMetric()
{
    const QList<SalesBreakdownMetric> all = allMetrics();
    return {all.begin(), all.end()};
}

// Every notification a screen reader would be told by `announcement`, in order: each is the words it
// holds as it turns visible.
class HeardAnnouncements
{
public:
    explicit HeardAnnouncements(QQuickItem *announcement)
    {
        QObject::connect(announcement, &QQuickItem::visibleChanged, announcement, [this, announcement] {
            if (announcement->isVisible()) {
                heard.append(announcement->property("message").toString());
            }
        });
    }
    QStringList heard;
};

} // namespace

class TestDashboard : public UiTest
{
    Q_OBJECT

    // The period picker's segments shown checked.
    QStringList checkedSegments() const
    {
        QStringList checked;
        for (int index = 0; index < 3; ++index) {
            const QString name = QStringLiteral("periodPickerSegment%1").arg(index);
            if (item(name)->property("checked").toBool()) {
                checked.append(name);
            }
        }
        return checked;
    }

private Q_SLOTS:
    void init() { startTest(); }
    void cleanup() { endTest(); }

    // Screen choice.
    void connectedStoreShowsTheDashboard();
    void settingsFlagShowsTheSettingsView();
    void disconnectedNeverShowsDashboardWhateverSettingsSays();

    // Header and period picker.
    void headerShowsTitleAndSelectedPeriod();
    void settingsButtonCallsShowSettings();
    void periodPickerShowsThePeriodsInOrderWithTheSelectedOne();
    void choosingAPeriodCallsSelectPeriod();
    void periodPickerGreysOutDuringCooldownAndCaptionCountsDown();

    // Update banner.
    void updateBannerOnlyWhileAnUpdateIsAvailable();
    void updateBannerDownloadsWhenNothingIsDownloaded();
    void updateBannerOpensAndRevealsADownloadedUpdate();
    void updateBannerButtonIsGreyedOutWhileDownloading();

    // Earnings card.
    void earningsCardShowsTheHighlightedFigure();
    void statusCircleIsOrangeWheneverAnErrorIsShownEvenOnline();
    void statusCircleIsGreenOnlineAndOrangeOffline();
    void loadingIndicatorFollowsIsLoading();
    void statusLinesFollowTheStoreClock();
    void amountRollsDownWhenTheFigureWentDown();

    // Financial rows and sales breakdown.
    void financialRowsShowTheThreeFigures();
    void hiddenAmountsMaskEveryRenderedFigureAndComeBack();
    void breakdownFollowsTheUsersOrderWithoutHiddenMetrics();
    void preOrdersAndFreeEbooksShowNoRoyalties();
    void everyMetricHiddenLeavesEmptyCardButHeading();
    void firstCustomRowHasNoDividerWithoutVisibleMetrics();
    void firstCustomRowHasDividerBelowAVisibleMetric();
    void customFormatNamedLikeAMetricIsListedSeparately();
    void customFormatsAreSortedByNameWithUnitCounts();

    // Error banner and footer.
    void errorBannerShowsTheMessageAsPlainText();
    void errorBannerIsAnnouncedAsItAppearsAndChangesWhileOpenOnly();
    void aRefreshIsAnnouncedAsItBeginsAndWithItsFigure();
    void refreshIsDisabledWhileASummaryCannotBeRequested();
    void refreshButtonCallsRefresh();
    void openMyDashboardCallsOpenDashboard();
    void quitButtonQuitsTheApplication();

    // Update prompt.
    void updatePromptShowsTitleMessageAndButtons();
    void updatePromptDownloadCallsDownloadLatestUpdate();
    void updatePromptLaterDismisses();

    // Keyboard and accessibility.
    void escapeAsksTheShellToClose();
    void ctrlRRefreshes();
    void ctrlQQuits();
    void ctrlCommaOpensSettings();
    void tabMovesThroughTheControls();
    void everyControlHasAnAccessibleName();
};

void TestDashboard::connectedStoreShowsTheDashboard()
{
    fixture->makeConnectedStore();
    show();
    QVERIFY(shown(QStringLiteral("dashboardView")));
    QVERIFY(!item(QStringLiteral("connectView")));
    QVERIFY(!item(QStringLiteral("settingsView")));
}

void TestDashboard::settingsFlagShowsTheSettingsView()
{
    fixture->makeConnectedStore();
    show();
    fixture->store().status().setIsShowingSettings(true);
    view->settle();
    QVERIFY(shown(QStringLiteral("settingsView")));
    QVERIFY(!item(QStringLiteral("dashboardView")));
}

void TestDashboard::disconnectedNeverShowsDashboardWhateverSettingsSays()
{
    RoyaltiesStore &store = fixture->makeStore();
    store.status().setIsShowingSettings(true);
    show();
    QVERIFY(shown(QStringLiteral("connectView")));
    QVERIFY(!item(QStringLiteral("dashboardView")));
    QVERIFY(!item(QStringLiteral("settingsView")));
    store.status().setIsShowingSettings(false);
    view->settle();
    QVERIFY(shown(QStringLiteral("connectView")));
}

void TestDashboard::headerShowsTitleAndSelectedPeriod()
{
    fixture->preferences().setString(QStringLiteral("selectedPeriod"), QStringLiteral("This Month"));
    fixture->makeConnectedStore();
    show();
    QCOMPARE(text(QStringLiteral("headerTitle")), QStringLiteral("Inkwarden"));
    QCOMPARE(text(QStringLiteral("headerPeriod")), QStringLiteral("This Month"));
    QVERIFY(shown(QStringLiteral("headerLogo")));
}

void TestDashboard::settingsButtonCallsShowSettings()
{
    fixture->makeConnectedStore();
    show();
    QVERIFY(click(QStringLiteral("settingsButton")));
    QVERIFY(fixture->store().isShowingSettings());
    QVERIFY(shown(QStringLiteral("settingsView")));
}

void TestDashboard::periodPickerShowsThePeriodsInOrderWithTheSelectedOne()
{
    fixture->makeConnectedStore();
    show();
    const QStringList expected{QStringLiteral("Today"), QStringLiteral("Yesterday"), QStringLiteral("This Month")};
    for (int i = 0; i < expected.size(); ++i) {
        QObject *segment = view->find(QStringLiteral("periodPickerSegment%1").arg(i));
        QVERIFY(segment);
        QCOMPARE(ViewHarness::text(segment), expected.at(i));
        QCOMPARE(segment->property("checked").toBool(), i == 0);
    }
    QVERIFY(!shown(QStringLiteral("cooldownCaption")));
}

void TestDashboard::choosingAPeriodCallsSelectPeriod()
{
    fixture->makeConnectedStore();
    show();
    QVERIFY(click(QStringLiteral("periodPickerSegment1")));
    QCOMPARE(fixture->store().selectedPeriod().rawValue(), QStringLiteral("Yesterday"));
    // selectPeriod refreshes: a request goes out and the cooldown begins.
    QVERIFY(!fixture->store().canSwitchPeriod());
    QVERIFY(view->find(QStringLiteral("periodPickerSegment1"))->property("checked").toBool());
    QCOMPARE(text(QStringLiteral("headerPeriod")), QStringLiteral("Yesterday"));
    QVERIFY(fixture->waitUntilIdle());
    QCOMPARE(fixture->statisticsRequests().size(), 1);
    // A click on the chosen segment leaves it chosen, and checked.
    fixture->clock.advance(3s);
    view->settle();
    QVERIFY(click(QStringLiteral("periodPickerSegment1")));
    view->settle();
    QCOMPARE(checkedSegments(), QStringList{QStringLiteral("periodPickerSegment1")});
    QCOMPARE(fixture->store().selectedPeriod().rawValue(), QStringLiteral("Yesterday"));
}

void TestDashboard::periodPickerGreysOutDuringCooldownAndCaptionCountsDown()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    QVERIFY(enabled(QStringLiteral("periodPicker")));
    QCOMPARE(item(QStringLiteral("periodPicker"))->opacity(), 1.0);
    store.refresh();
    QVERIFY(fixture->waitUntilIdle());
    view->settle();
    QVERIFY(!enabled(QStringLiteral("periodPicker")));
    QCOMPARE(item(QStringLiteral("periodPicker"))->opacity(), 0.5);
    QVERIFY(shown(QStringLiteral("cooldownCaption")));
    QCOMPARE(text(QStringLiteral("cooldownCaption")), QStringLiteral("Period selection available in 3s"));
    fixture->clock.advance(1s);
    view->settle();
    QCOMPARE(text(QStringLiteral("cooldownCaption")), QStringLiteral("Period selection available in 2s"));
    fixture->clock.advance(1s);
    view->settle();
    QCOMPARE(text(QStringLiteral("cooldownCaption")), QStringLiteral("Period selection available in 1s"));
    // A click on a greyed-out segment does nothing: nothing is chosen, and the chosen segment stays
    // the only one checked.
    QSignalSpy chosen(item(QStringLiteral("periodPicker")), SIGNAL(activated(QString)));
    QVERIFY(click(QStringLiteral("periodPickerSegment2")));
    QVERIFY(fixture->waitUntilIdle());
    QCOMPARE(chosen.size(), 0);
    QCOMPARE(checkedSegments(), QStringList{QStringLiteral("periodPickerSegment0")});
    QCOMPARE(store.selectedPeriod().rawValue(), QStringLiteral("Today"));
    QCOMPARE(fixture->statisticsRequests().size(), 1);
    fixture->clock.advance(1s);
    view->settle();
    QCOMPARE(store.requestCooldownRemaining(), 0);
    QVERIFY(!shown(QStringLiteral("cooldownCaption")));
    QVERIFY(enabled(QStringLiteral("periodPicker")));
    QCOMPARE(item(QStringLiteral("periodPicker"))->opacity(), 1.0);
}

void TestDashboard::updateBannerOnlyWhileAnUpdateIsAvailable()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    QVERIFY(!shown(QStringLiteral("updateBanner")));
    store.updates().setLatestAppVersion(QStringLiteral("1.4.0")); // the same as ours
    view->settle();
    QVERIFY(!shown(QStringLiteral("updateBanner")));
    store.updates().setLatestAppVersion(QStringLiteral("1.10.0"));
    view->settle();
    QVERIFY(shown(QStringLiteral("updateBanner")));
    QCOMPARE(text(QStringLiteral("updateBannerTitle")), QStringLiteral("Inkwarden 1.10.0 is available"));
    QCOMPARE(text(QStringLiteral("updateBannerSubtitle")), QStringLiteral("You have version 1.4.0"));
    QCOMPARE(text(QStringLiteral("updateActionButton")), QStringLiteral("Update"));
    QVERIFY(!shown(QStringLiteral("revealUpdateButton")));
}

void TestDashboard::updateBannerDownloadsWhenNothingIsDownloaded()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    show();
    QVERIFY(click(QStringLiteral("updateActionButton")));
    // downloadLatestUpdate: the installer is fetched, then opened.
    QTRY_COMPARE(fixture->desktop.openedFiles.size(), 1);
    QVERIFY(fixture->desktop.openedFiles.first().endsWith(QStringLiteral("Inkwarden-1.5.0.deb")));
    QVERIFY(!store.isDownloadingUpdate());
    QCOMPARE(text(QStringLiteral("updateActionButton")), QStringLiteral("Open installer"));
}

void TestDashboard::updateBannerOpensAndRevealsADownloadedUpdate()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    const QString installer = fixture->cacheFolder() + QStringLiteral("/Inkwarden-1.5.0.deb");
    store.updates().setDownloadedUpdateURL(QUrl::fromLocalFile(installer));
    show();
    QCOMPARE(text(QStringLiteral("updateActionButton")), QStringLiteral("Open installer"));
    QVERIFY(shown(QStringLiteral("revealUpdateButton")));
    QCOMPARE(text(QStringLiteral("revealUpdateButton")), QStringLiteral("Show in Files"));
    QVERIFY(click(QStringLiteral("updateActionButton")));
    QTRY_COMPARE(fixture->desktop.openedFiles, QStringList{installer});
    QVERIFY(click(QStringLiteral("revealUpdateButton")));
    QCOMPARE(fixture->desktop.revealedFiles, QStringList{installer});
    QVERIFY(!store.isDownloadingUpdate());
}

void TestDashboard::updateBannerButtonIsGreyedOutWhileDownloading()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    // An installer an earlier download left, which a click would open.
    store.updates().setDownloadedUpdateURL(QUrl::fromLocalFile(fixture->cacheFolder() + u"/Inkwarden-1.4.9.deb"));
    store.updates().setIsDownloadingUpdate(true);
    show();
    QVERIFY(!enabled(QStringLiteral("updateActionButton")));
    QCOMPARE(text(QStringLiteral("updateActionButton")), QString(QStringLiteral("Downloading") + QChar(0x2026)));
    // A click on it starts nothing more.
    QVERIFY(click(QStringLiteral("updateActionButton")));
    QTest::qWait(200);
    QVERIFY(fixture->desktop.openedFiles.isEmpty());
    QVERIFY(store.isDownloadingUpdate());
}

void TestDashboard::earningsCardShowsTheHighlightedFigure()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.session().setSummary(sampleSummary());
    show();
    QCOMPARE(text(QStringLiteral("displayedRoyaltyCaption")), QStringLiteral("GROSS ROYALTIES"));
    QCOMPARE(text(QStringLiteral("highlightedAmount")), QStringLiteral("$1,234.50"));
    store.settings().setDisplayedRoyalty(DisplayedRoyalty::net);
    view->settle();
    QCOMPARE(text(QStringLiteral("displayedRoyaltyCaption")), QStringLiteral("NET ROYALTIES"));
    QCOMPARE(text(QStringLiteral("highlightedAmount")), QStringLiteral("$1,024.25"));
    QTRY_COMPARE(text(QStringLiteral("shownAmount")), QStringLiteral("$1,024.25"));
}

void TestDashboard::statusCircleIsOrangeWheneverAnErrorIsShownEvenOnline()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.session().setIsNetworkAvailable(true);
    store.status().setErrorMessage(QStringLiteral("The server is having trouble."));
    show();
    QCOMPARE(item(QStringLiteral("statusCircle"))->property("colorName").toString(), QStringLiteral("orange"));
}

void TestDashboard::statusCircleIsGreenOnlineAndOrangeOffline()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    QCOMPARE(item(QStringLiteral("statusCircle"))->property("colorName").toString(), QStringLiteral("green"));
    store.session().setIsNetworkAvailable(false);
    view->settle();
    QCOMPARE(item(QStringLiteral("statusCircle"))->property("colorName").toString(), QStringLiteral("orange"));
}

void TestDashboard::loadingIndicatorFollowsIsLoading()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    QVERIFY(!shown(QStringLiteral("loadingIndicator")));
    store.session().setIsLoading(true);
    view->settle();
    QVERIFY(shown(QStringLiteral("loadingIndicator")));
}

void TestDashboard::statusLinesFollowTheStoreClock()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    QCOMPARE(text(QStringLiteral("lastUpdatedText")), QStringLiteral("Not refreshed yet"));
    QCOMPARE(text(QStringLiteral("nextRefreshText")), QStringLiteral("Automatic refresh not scheduled"));
    const QDateTime now = fixture->clock.now();
    store.session().setLastUpdated(now.addSecs(-10));
    store.session().setNextRefreshAt(now.addSecs(247));
    view->settle();
    QCOMPARE(text(QStringLiteral("lastUpdatedText")), QStringLiteral("Refreshed 10s ago"));
    QCOMPARE(text(QStringLiteral("nextRefreshText")), QStringLiteral("Next refresh in 04:07"));
    fixture->clock.advance(1s);
    view->settle();
    QCOMPARE(text(QStringLiteral("lastUpdatedText")), QStringLiteral("Refreshed 11s ago"));
    QCOMPARE(text(QStringLiteral("nextRefreshText")), QStringLiteral("Next refresh in 04:06"));
    store.session().setIsNetworkAvailable(false);
    view->settle();
    QCOMPARE(text(QStringLiteral("nextRefreshText")), QString(QStringLiteral("Waiting for internet") + QChar(0x2026)));
}

void TestDashboard::amountRollsDownWhenTheFigureWentDown()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.session().setSummary(sampleSummary());
    show();
    QQuickItem *amount = item(QStringLiteral("highlightedAmount"));
    QVERIFY(!amount->property("countsDown").toBool());
    store.session().setRoyaltyChangeCountsDown(true);
    RoyaltySummary lower = sampleSummary();
    lower.gross = 99;
    store.session().setSummary(lower);
    view->settle();
    QVERIFY(amount->property("countsDown").toBool());
    QCOMPARE(text(QStringLiteral("leavingAmount")), QStringLiteral("$1,234.50"));
    QTRY_COMPARE(text(QStringLiteral("shownAmount")), QStringLiteral("$99.00"));
}

void TestDashboard::financialRowsShowTheThreeFigures()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.session().setSummary(sampleSummary());
    show();
    const QStringList titles{QStringLiteral("Gross royalties"), QStringLiteral("Ad spend & expenses"),
                             QStringLiteral("Net royalties")};
    const QStringList values{QStringLiteral("$1,234.50"), QStringLiteral("$210.25"), QStringLiteral("$1,024.25")};
    for (int i = 0; i < 3; ++i) {
        QQuickItem *row = item(QStringLiteral("financialRow%1").arg(i));
        QVERIFY(ViewHarness::isShown(row));
        QCOMPARE(text(QStringLiteral("title"), row), titles.at(i));
        QCOMPARE(text(QStringLiteral("value"), row), values.at(i));
    }
}

void TestDashboard::hiddenAmountsMaskEveryRenderedFigureAndComeBack()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.session().setSummary(sampleSummary());
    store.setHideAmounts(true);
    show();
    const QString mask = QStringLiteral(u"$\u2022\u2022\u2022");
    QCOMPARE(text(QStringLiteral("highlightedAmount")), mask);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(text(QStringLiteral("value"), item(QStringLiteral("financialRow%1").arg(i))), mask);
    }
    // Counts are not money: they stay; each royalty beside them is masked.
    QQuickItem *ebooks = item(QStringLiteral("breakdownRow_paidEbooks"));
    QCOMPARE(text(QStringLiteral("units"), ebooks), QStringLiteral("1 unit"));
    QCOMPARE(text(QStringLiteral("royalties"), ebooks), mask);
    QQuickItem *paperbacks = item(QStringLiteral("breakdownRow_paperbacks"));
    QCOMPARE(text(QStringLiteral("units"), paperbacks), QStringLiteral("1,234 units"));
    QCOMPARE(text(QStringLiteral("royalties"), paperbacks), mask);
    // No digit of money anywhere in the rows.
    for (QQuickItem *row : item(QStringLiteral("salesBreakdownRows"))->childItems()) {
        if (QObject *royalties = view->find(QStringLiteral("royalties"), row);
            royalties && ViewHarness::isShown(qobject_cast<QQuickItem *>(royalties))) {
            QCOMPARE(ViewHarness::text(royalties), mask);
        }
    }

    store.setHideAmounts(false);
    view->settle();
    QCOMPARE(text(QStringLiteral("value"), item(QStringLiteral("financialRow0"))), QStringLiteral("$1,234.50"));
    QCOMPARE(text(QStringLiteral("royalties"), item(QStringLiteral("breakdownRow_paperbacks"))),
             QStringLiteral("$2,500.00"));
    QTRY_COMPARE(text(QStringLiteral("highlightedAmount")), QStringLiteral("$1,234.50"));
}

void TestDashboard::breakdownFollowsTheUsersOrderWithoutHiddenMetrics()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.session().setSummary(sampleSummary());
    store.settings().setSalesMetricOrder({SalesBreakdownMetric::paperbacks, SalesBreakdownMetric::paidEbooks,
                                          SalesBreakdownMetric::kenpReads, SalesBreakdownMetric::hardcovers});
    store.settings().setHiddenSalesMetrics({SalesBreakdownMetric::hardcovers});
    show();
    QQuickItem *rows = item(QStringLiteral("salesBreakdownRows"));
    QStringList shownIds;
    QList<qreal> positions;
    for (QQuickItem *child : rows->childItems()) {
        if (child->isVisible() && child->objectName().startsWith(QStringLiteral("breakdownRow_"))) {
            shownIds.append(child->objectName().mid(13));
            positions.append(child->y());
        }
    }
    QCOMPARE(shownIds,
             (QStringList{QStringLiteral("paperbacks"), QStringLiteral("paidEbooks"), QStringLiteral("kenpReads")}));
    QVERIFY(std::is_sorted(positions.begin(), positions.end()));
    QQuickItem *paperbacks = item(QStringLiteral("breakdownRow_paperbacks"));
    QCOMPARE(text(QStringLiteral("title"), paperbacks), QStringLiteral("Paperbacks"));
    QCOMPARE(text(QStringLiteral("units"), paperbacks), QStringLiteral("1,234 units"));
    QCOMPARE(text(QStringLiteral("royalties"), paperbacks), QStringLiteral("$2,500.00"));
    QVERIFY(!shown(QStringLiteral("divider"), paperbacks));
    QQuickItem *ebooks = item(QStringLiteral("breakdownRow_paidEbooks"));
    QCOMPARE(text(QStringLiteral("units"), ebooks), QStringLiteral("1 unit"));
    QVERIFY(shown(QStringLiteral("divider"), ebooks));
    QCOMPARE(text(QStringLiteral("units"), item(QStringLiteral("breakdownRow_kenpReads"))), QStringLiteral("1 pages"));
}

void TestDashboard::preOrdersAndFreeEbooksShowNoRoyalties()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.session().setSummary(sampleSummary());
    show();
    QQuickItem *preOrders = item(QStringLiteral("breakdownRow_currentPreOrders"));
    QCOMPARE(text(QStringLiteral("title"), preOrders), QStringLiteral("Upcoming pre-orders"));
    QCOMPARE(text(QStringLiteral("units"), preOrders),
             QString(QStringLiteral("2 units ") + QChar(0x00B7) + QStringLiteral(" same for all periods")));
    QVERIFY(!shown(QStringLiteral("royalties"), preOrders));
    QQuickItem *free = item(QStringLiteral("breakdownRow_freeEbooks"));
    QCOMPARE(text(QStringLiteral("units"), free), QStringLiteral("7 downloads"));
    QVERIFY(!shown(QStringLiteral("royalties"), free));
}

void TestDashboard::everyMetricHiddenLeavesEmptyCardButHeading()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.settings().setHiddenSalesMetrics(everyMetric());
    show();
    QVERIFY(shown(QStringLiteral("salesBreakdownHeading")));
    QCOMPARE(text(QStringLiteral("salesBreakdownHeading")), QStringLiteral("SALES BREAKDOWN"));
    QVERIFY(item(QStringLiteral("salesBreakdownCard")));
    for (QQuickItem *child : item(QStringLiteral("salesBreakdownRows"))->childItems()) {
        QVERIFY2(!child->objectName().startsWith(QStringLiteral("breakdownRow_")), qPrintable(child->objectName()));
    }
    QCOMPARE(item(QStringLiteral("salesBreakdownCard"))->height(), 0.0);
}

void TestDashboard::firstCustomRowHasNoDividerWithoutVisibleMetrics()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.settings().setHiddenSalesMetrics(everyMetric());
    RoyaltySummary summary;
    summary.customFormats.insert(QStringLiteral("Box set"), FormatSalesSummary{3, 12});
    summary.customFormats.insert(QStringLiteral("Comics"), FormatSalesSummary{1, 2});
    store.session().setSummary(summary);
    show();
    QVERIFY(!shown(QStringLiteral("divider"), item(QStringLiteral("breakdownRow_custom:Box set"))));
    QVERIFY(shown(QStringLiteral("divider"), item(QStringLiteral("breakdownRow_custom:Comics"))));
}

void TestDashboard::firstCustomRowHasDividerBelowAVisibleMetric()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    QSet<SalesBreakdownMetric> hidden = everyMetric();
    hidden.remove(SalesBreakdownMetric::audiobooks);
    store.settings().setHiddenSalesMetrics(hidden);
    RoyaltySummary summary;
    summary.customFormats.insert(QStringLiteral("Box set"), FormatSalesSummary{3, 12});
    store.session().setSummary(summary);
    show();
    QVERIFY(!shown(QStringLiteral("divider"), item(QStringLiteral("breakdownRow_audiobooks"))));
    QVERIFY(shown(QStringLiteral("divider"), item(QStringLiteral("breakdownRow_custom:Box set"))));
}

void TestDashboard::customFormatNamedLikeAMetricIsListedSeparately()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    RoyaltySummary summary = sampleSummary();
    summary.customFormats.insert(QStringLiteral("Paperbacks"), FormatSalesSummary{5, 40});
    store.session().setSummary(summary);
    show();
    QQuickItem *fixed = item(QStringLiteral("breakdownRow_paperbacks"));
    QQuickItem *custom = item(QStringLiteral("breakdownRow_custom:Paperbacks"));
    QVERIFY(ViewHarness::isShown(fixed));
    QVERIFY(ViewHarness::isShown(custom));
    QCOMPARE(text(QStringLiteral("title"), custom), QStringLiteral("Paperbacks"));
    QCOMPARE(text(QStringLiteral("units"), custom), QStringLiteral("5 units"));
    QCOMPARE(text(QStringLiteral("royalties"), custom), QStringLiteral("$40.00"));
    QQuickItem *row = item(QStringLiteral("row"), custom);
    QCOMPARE(row->property("icon").toString(), QStringLiteral("square.grid.2x2"));
    QCOMPARE(row->property("color").toString(), QStringLiteral("pink"));
    QCOMPARE(item(QStringLiteral("row"), fixed)->property("icon").toString(), QStringLiteral("books.vertical"));
}

void TestDashboard::customFormatsAreSortedByNameWithUnitCounts()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.settings().setHiddenSalesMetrics(everyMetric());
    RoyaltySummary summary;
    summary.customFormats.insert(QStringLiteral("Zines"), FormatSalesSummary{0, 0});
    summary.customFormats.insert(QStringLiteral("Box set"), FormatSalesSummary{1, 1.5});
    summary.customFormats.insert(QStringLiteral("Large print"), FormatSalesSummary{1234, 3});
    store.session().setSummary(summary);
    show();
    const QQuickItem *box = item(QStringLiteral("breakdownRow_custom:Box set"));
    const QQuickItem *large = item(QStringLiteral("breakdownRow_custom:Large print"));
    const QQuickItem *zines = item(QStringLiteral("breakdownRow_custom:Zines"));
    QVERIFY(box->y() < large->y() && large->y() < zines->y());
    QCOMPARE(text(QStringLiteral("units"), const_cast<QQuickItem *>(box)), QStringLiteral("1 unit"));
    QCOMPARE(text(QStringLiteral("units"), const_cast<QQuickItem *>(large)), QStringLiteral("1,234 units"));
    QCOMPARE(text(QStringLiteral("units"), const_cast<QQuickItem *>(zines)), QStringLiteral("0 units"));
}

void TestDashboard::errorBannerShowsTheMessageAsPlainText()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    QVERIFY(!shown(QStringLiteral("errorBanner")));
    const QString message = QStringLiteral("<b>Server</b> said <a href=\"x\">no</a>");
    store.status().setErrorMessage(message);
    view->settle();
    QVERIFY(shown(QStringLiteral("errorBanner")));
    QQuickItem *label = item(QStringLiteral("errorMessage"));
    QCOMPARE(ViewHarness::text(label), message);
    QCOMPARE(label->property("textFormat").toInt(), int(Qt::PlainText));
    store.status().setErrorMessage(std::nullopt);
    view->settle();
    QVERIFY(!shown(QStringLiteral("errorBanner")));
}

void TestDashboard::errorBannerIsAnnouncedAsItAppearsAndChangesWhileOpenOnly()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    QQuickItem *announcement = item(QStringLiteral("errorAnnouncement"), item(QStringLiteral("errorBanner")));
    QVERIFY(announcement);
    QCOMPARE(QAccessible::queryAccessibleInterface(announcement)->role(), QAccessible::Notification);
    HeardAnnouncements ears(announcement);

    const QString down = QStringLiteral("The server is having trouble.");
    store.status().setErrorMessage(down);
    view->settle();
    QCOMPARE(ears.heard, QStringList{down});
    // A second error in a row is told too, once the first had its second.
    const QString limited = QStringLiteral("Please wait 3 seconds before requesting royalties again.");
    store.status().setErrorMessage(limited);
    QTRY_COMPARE(ears.heard, (QStringList{down, limited}));
    // Gone, the banner says nothing.
    store.status().setErrorMessage(std::nullopt);
    view->settle();
    QTRY_VERIFY(!announcement->isVisible());
    QCOMPARE(ears.heard, (QStringList{down, limited}));

    // Back, the banner tells its new words, and nothing of what it said before it went.
    store.status().setErrorMessage(down);
    view->settle();
    QVERIFY2(ears.heard == (QStringList{down, limited, down}), qPrintable(ears.heard.join(u'|')));
    // Words waiting their turn are not said once the banner went before it came.
    store.status().setErrorMessage(limited);
    store.status().setErrorMessage(std::nullopt);
    view->settle();
    QTest::qWait(1100);
    QVERIFY2(ears.heard == (QStringList{down, limited, down}), qPrintable(ears.heard.join(u'|')));
    // Nor once the popover closed before it came.
    store.status().setErrorMessage(down);
    store.status().setErrorMessage(limited);
    view->settle();
    view->window()->hide();
    QTest::qWait(1100);
    QVERIFY2(ears.heard == (QStringList{down, limited, down, down}), qPrintable(ears.heard.join(u'|')));
    view->window()->show();
    store.status().setErrorMessage(std::nullopt);
    view->settle();
    QTest::qWait(1100);

    // The popover closed (kept, not given up), an error says nothing.
    view->window()->hide();
    store.status().setErrorMessage(limited);
    view->settle();
    QTest::qWait(1100);
    QVERIFY2(ears.heard == (QStringList{down, limited, down, down}), qPrintable(ears.heard.join(u'|')));
}

void TestDashboard::aRefreshIsAnnouncedAsItBeginsAndWithItsFigure()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.session().setSummary(sampleSummary());
    show();
    QQuickItem *announcement = item(QStringLiteral("announcement"));
    QVERIFY(announcement);
    HeardAnnouncements ears(announcement);

    store.session().setIsLoading(true);
    view->settle();
    QCOMPARE(ears.heard, QStringList{QStringLiteral("Refreshing")});
    store.session().setIsLoading(false);
    store.session().setLastUpdated(fixture->clock.now());
    QTRY_COMPARE(ears.heard,
                 (QStringList{QStringLiteral("Refreshing"), QStringLiteral("Refreshed. Gross royalties: $1,234.50")}));
    // The clock that moves the status lines tells nothing.
    fixture->clock.advance(90s);
    QTest::qWait(1100);
    QCOMPARE(ears.heard.size(), 2);

    // Closed, a refresh tells nothing.
    view->window()->hide();
    store.session().setIsLoading(true);
    store.session().setIsLoading(false);
    store.session().setLastUpdated(fixture->clock.now());
    QTest::qWait(1100);
    QCOMPARE(ears.heard.size(), 2);
}

void TestDashboard::refreshIsDisabledWhileASummaryCannotBeRequested()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    QVERIFY(enabled(QStringLiteral("refreshButton")));
    store.session().setIsLoading(true);
    view->settle();
    // Greyed out, and a click does nothing.
    QVERIFY(!enabled(QStringLiteral("refreshButton")));
    const int requests = fixture->statisticsRequests().size();
    QVERIFY(click(QStringLiteral("refreshButton")));
    QVERIFY(!store.session().refreshWhenAvailable());
    store.session().setIsLoading(false);
    fixture->clock.advance(5s);
    QVERIFY(fixture->waitUntilIdle());
    QCOMPARE(fixture->statisticsRequests().size(), requests);
    QVERIFY(enabled(QStringLiteral("openDashboardButton")));
}

void TestDashboard::refreshButtonCallsRefresh()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    QCOMPARE(text(QStringLiteral("refreshButton")), QStringLiteral("Refresh"));
    QVERIFY(click(QStringLiteral("refreshButton")));
    QVERIFY(fixture->waitUntilIdle());
    QVERIFY(store.lastUpdated().has_value());
    QCOMPARE(fixture->statisticsRequests().size(), 1);
}

void TestDashboard::openMyDashboardCallsOpenDashboard()
{
    fixture->makeConnectedStore();
    show();
    QCOMPARE(text(QStringLiteral("openDashboardButton")), QStringLiteral("Open My Dashboard"));
    QVERIFY(click(QStringLiteral("openDashboardButton")));
    QCOMPARE(fixture->desktop.openedURLs.size(), 1);
    QVERIFY(fixture->desktop.openedURLs.first().path().endsWith(QStringLiteral("/dashboard_lite/")));
}

void TestDashboard::quitButtonQuitsTheApplication()
{
    fixture->makeConnectedStore();
    show();
    QSignalSpy quit(&view->engine(), &QQmlEngine::quit);
    QCOMPARE(text(QStringLiteral("quitButton")), QStringLiteral("Quit"));
    QVERIFY(click(QStringLiteral("quitButton")));
    QCOMPARE(quit.size(), 1);
}

void TestDashboard::updatePromptShowsTitleMessageAndButtons()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    show();
    QObject *prompt = view->find(QStringLiteral("updatePrompt"));
    QVERIFY(prompt);
    QVERIFY(!prompt->property("visible").toBool());
    store.updates().setIsShowingUpdatePrompt(true);
    view->settle();
    QVERIFY(prompt->property("visible").toBool());
    QCOMPARE(prompt->property("title").toString(), QStringLiteral("Inkwarden 1.5.0 is available"));
    QCOMPARE(text(QStringLiteral("updatePromptMessage")),
             QStringLiteral("You are using version 1.4.0. Download the latest version now?"));
    QCOMPARE(text(QStringLiteral("updatePromptDownload")), QStringLiteral("Download Update"));
    QCOMPARE(text(QStringLiteral("updatePromptLater")), QStringLiteral("Later"));
}

void TestDashboard::updatePromptDownloadCallsDownloadLatestUpdate()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    store.updates().setIsShowingUpdatePrompt(true);
    show();
    QTRY_VERIFY(shown(QStringLiteral("updatePromptDownload")));
    QVERIFY(click(QStringLiteral("updatePromptDownload")));
    QTRY_VERIFY(!store.isShowingUpdatePrompt());
    QTRY_COMPARE(fixture->desktop.openedFiles.size(), 1);
}

void TestDashboard::updatePromptLaterDismisses()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    store.updates().setIsShowingUpdatePrompt(true);
    show();
    QTRY_VERIFY(shown(QStringLiteral("updatePromptLater")));
    QVERIFY(click(QStringLiteral("updatePromptLater")));
    QTRY_VERIFY(!store.isShowingUpdatePrompt());
    QVERIFY(!store.isDownloadingUpdate());
}

void TestDashboard::escapeAsksTheShellToClose()
{
    fixture->makeConnectedStore();
    show();
    QObject *content = view->item(QStringLiteral("content"))->childItems().first();
    QSignalSpy close(content, SIGNAL(closeRequested()));
    view->keyChord(QKeySequence(Qt::Key_Escape));
    QCOMPARE(close.size(), 1);
}

void TestDashboard::ctrlRRefreshes()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    view->keyChord(QKeySequence(QStringLiteral("Ctrl+R")));
    QVERIFY(fixture->waitUntilIdle());
    QVERIFY(store.lastUpdated().has_value());
    QCOMPARE(fixture->statisticsRequests().size(), 1);
}

void TestDashboard::ctrlQQuits()
{
    fixture->makeConnectedStore();
    show();
    QSignalSpy quit(&view->engine(), &QQmlEngine::quit);
    view->keyChord(QKeySequence(QStringLiteral("Ctrl+Q")));
    QCOMPARE(quit.size(), 1);
}

void TestDashboard::ctrlCommaOpensSettings()
{
    fixture->makeConnectedStore();
    show();
    view->keyChord(QKeySequence(QStringLiteral("Ctrl+,")));
    QVERIFY(fixture->store().isShowingSettings());
    QVERIFY(shown(QStringLiteral("settingsView")));
}

void TestDashboard::tabMovesThroughTheControls()
{
    fixture->makeConnectedStore();
    show();
    QStringList visited;
    for (int i = 0; i < 12; ++i) {
        QTest::keyClick(view->window(), Qt::Key_Tab);
        view->settle();
        QQuickItem *focused = view->window()->activeFocusItem();
        visited.append(focused ? focused->objectName() : QString());
    }
    const QStringList expected{QStringLiteral("settingsButton"),
                               QStringLiteral("periodPickerSegment0"),
                               QStringLiteral("periodPickerSegment1"),
                               QStringLiteral("periodPickerSegment2"),
                               QStringLiteral("refreshButton"),
                               QStringLiteral("openDashboardButton"),
                               QStringLiteral("quitButton")};
    qsizetype from = 0;
    for (const QString &name : expected) {
        const qsizetype at = visited.indexOf(name, from);
        QVERIFY2(at >= 0, qPrintable(name + QStringLiteral(" not reached in order: ") + visited.join(u',')));
        from = at + 1;
    }
}

void TestDashboard::everyControlHasAnAccessibleName()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    store.updates().setDownloadedUpdateURL(QUrl::fromLocalFile(QStringLiteral("/tmp/Inkwarden-1.5.0.deb")));
    show();
    QAccessible::setActive(true);
    int controls = 0;
    std::function<void(QQuickItem *)> visit = [&](QQuickItem *node) {
        if (node->isVisible() && node->activeFocusOnTab()) {
            ++controls;
            QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(node);
            QVERIFY2(accessible, qPrintable(node->objectName()));
            QVERIFY2(!accessible->text(QAccessible::Name).isEmpty(), qPrintable(node->objectName()));
        }
        for (QQuickItem *child : node->childItems()) {
            visit(child);
        }
    };
    visit(view->window()->contentItem());
    QVERIFY(controls >= 8);
}

QTEST_MAIN(TestDashboard)
#include "tst_ui_dashboard.moc"
