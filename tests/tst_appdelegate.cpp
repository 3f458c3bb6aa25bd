#include "platform/MenuBarTitle.h"
#include "platform/StatusItem.h"
#include "shell/AppDelegate.h"
#include "shell/PanelStatusBuilder.h"
#include "shell/Popover.h"
#include "store/AppUpdates.h"
#include "store/ConnectionSession.h"
#include "store/SettingsKeys.h"
#include "support/StoreFixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace {

// The panel item as the delegate drives it: the titles, the last tool tip and the names in words it
// was given.
class RecordingStatusItem final : public StatusItem
{
public:
    void setTitle(const MenuBarTitle &title) override { titles.append(title); }
    void setToolTip(const QString &title, const QString &body) override { toolTip = {title, body}; }
    void setAccessibleTitle(const QString &title) override
    {
        if (accessibleTitles.isEmpty() || accessibleTitles.last() != title) {
            accessibleTitles.append(title);
        }
    }
    void click(QPoint point = {}) { Q_EMIT activated(point); }
    void choose(StatusMenuEntry entry) { triggerMenuEntry(entry); }

    QList<MenuBarTitle> titles;
    std::pair<QString, QString> toolTip;
    QStringList accessibleTitles;
};

class RecordingPopover final : public Popover
{
public:
    bool isShown() const override { return shown; }
    void show(std::optional<QPoint> anchor) override
    {
        shown = true;
        anchors.append(anchor);
    }
    void close() override
    {
        shown = false;
        ++closes;
    }
    bool closedJustNow() const override { return justClosed; }

    bool shown = false;
    bool justClosed = false;
    int closes = 0;
    QList<std::optional<QPoint>> anchors;
};

} // namespace

class TestAppDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<StoreFixture>(); }
    void cleanup()
    {
        m_delegate.reset();
        m_fixture.reset();
    }

    void firstLaunchOpensThePopoverAfterAMoment();
    void secondLaunchOfTheSameVersionDoesNotOpenIt();
    void newVersionOpensItAgain();
    void missingVersionNeverOpensIt();
    void startSequenceShowsTitleAndStartsTheStore();
    void titleBeforeAnyRefreshIsThePlaceholder();
    void failureWithoutEarlierSuccessShowsTheFailedTitle();
    void lastGoodFigureStaysAfterAFailure();
    void callbackUrlIsHandedToTheStoreAndOpensThePopover();
    void onlyTheFirstOfSeveralUrlsIsProcessed();
    void noUrlsDoNothing();
    void clickOpensAndClickAgainCloses();
    void clickThatClosedThePopoverDoesNotReopenIt();
    void openingCatchesUpAMissedRefreshAndPromptsForUpdate();
    void menuEntriesDoWhatTheySay();
    void panelStatusBeforeSignInSaysSignedOut();
    void panelStatusAfterAFailedSignInSaysWhy();
    void panelStatusGoesFromLoadingToOkWithTheFigure();
    void panelStatusKeepsTheFigureAndCarriesTheErrorAfterAFailure();
    void panelStatusWithoutTheNetworkIsOffline();
    void refreshedTextNamesTheTimeAndTheDateWhenNotToday();
    void hideAmountsFromTheMenuMasksTheItemAndItsStatus();
    void theItemsNameSaysWhyThereIsNoFigure();
    void theItemsNameAndToolTipFollowTheFigureAndThePeriod();
    void aPeriodSwitchedOfflineIsNamedOnlyWithItsOwnFigure();

private:
    AppDelegate &makeDelegate(bool connected = true);

    std::unique_ptr<StoreFixture> m_fixture;
    RecordingStatusItem m_item;
    RecordingPopover m_popover;
    std::unique_ptr<AppDelegate> m_delegate;
};

AppDelegate &TestAppDelegate::makeDelegate(bool connected)
{
    m_item.titles.clear();
    m_item.accessibleTitles.clear();
    m_popover.shown = false;
    m_popover.anchors.clear();
    RoyaltiesStore &store = connected ? m_fixture->makeConnectedStore() : m_fixture->makeStore();
    m_delegate = std::make_unique<AppDelegate>(store, m_item, m_popover, m_fixture->preferences(), m_fixture->clock,
                                               m_fixture->appInfo);
    return *m_delegate;
}

void TestAppDelegate::firstLaunchOpensThePopoverAfterAMoment()
{
    makeDelegate().applicationDidFinishLaunching();
    QCOMPARE(m_fixture->preferences().string(SettingsKeys::lastPresentedAppVersion),
             std::optional<QString>(QStringLiteral("1.4.0")));
    m_fixture->clock.advance(349ms);
    QVERIFY(!m_popover.shown);
    m_fixture->clock.advance(1ms);
    QVERIFY(m_popover.shown);
}

void TestAppDelegate::secondLaunchOfTheSameVersionDoesNotOpenIt()
{
    makeDelegate().applicationDidFinishLaunching();
    m_fixture->clock.advance(1s);
    m_fixture->waitUntilIdle();
    makeDelegate().applicationDidFinishLaunching();
    m_fixture->clock.advance(1s);
    QVERIFY(!m_popover.shown);
}

void TestAppDelegate::newVersionOpensItAgain()
{
    m_fixture->preferences().setString(SettingsKeys::lastPresentedAppVersion, QStringLiteral("1.5.0"));
    makeDelegate().applicationDidFinishLaunching();
    m_fixture->clock.advance(350ms);
    QVERIFY(m_popover.shown);
}

void TestAppDelegate::missingVersionNeverOpensIt()
{
    m_fixture->appInfo.version.reset();
    makeDelegate().applicationDidFinishLaunching();
    m_fixture->clock.advance(1s);
    QVERIFY(!m_popover.shown);
    QVERIFY(!m_fixture->preferences().contains(SettingsKeys::lastPresentedAppVersion));
}

void TestAppDelegate::startSequenceShowsTitleAndStartsTheStore()
{
    makeDelegate().applicationDidFinishLaunching();
    QVERIFY(!m_item.titles.isEmpty());
    QCOMPARE(m_item.titles.first().title, QStringLiteral(u"\u25C9 \u2014"));
    QCOMPARE(m_item.toolTip.first, QStringLiteral("Inkwarden Royalties"));
    QVERIFY(m_fixture->store().isLoading());
    QCOMPARE(m_fixture->reachability.starts, 1);
}

void TestAppDelegate::titleBeforeAnyRefreshIsThePlaceholder()
{
    makeDelegate(false).applicationDidFinishLaunching();
    const QList<MenuBarTitleRun> runs = m_item.titles.last().runs();
    QCOMPARE(runs.size(), 1);
    QCOMPARE(runs.first().text, QStringLiteral(u"\u25C9 \u2014"));
    QCOMPARE(runs.first().pointSize, 12.0);
    QCOMPARE(runs.first().weight, QFont::Medium);
}

void TestAppDelegate::failureWithoutEarlierSuccessShowsTheFailedTitle()
{
    Fault fault;
    fault.status = 500;
    m_fixture->server->faults().set(Route::Stats, fault);
    makeDelegate().applicationDidFinishLaunching();
    QVERIFY(m_fixture->waitUntilIdle());
    // The first answer was for all accounts; loading the accounts chose one, whose figures are
    // asked for when the cooldown ends.
    m_fixture->clock.advance(std::chrono::seconds(3));
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->statisticsRequests().size(), 2);
    QCOMPARE(m_item.titles.last().text(), QStringLiteral(u"\u25C9 !"));
    QVERIFY(!m_item.titles.last().isStyled());
}

void TestAppDelegate::lastGoodFigureStaysAfterAFailure()
{
    makeDelegate().applicationDidFinishLaunching();
    QVERIFY(m_fixture->waitUntilIdle());
    m_fixture->clock.advance(3s);
    QVERIFY(m_fixture->waitUntilIdle());
    const MenuBarTitle good = m_item.titles.last();
    QVERIFY(good.isStyled());
    QCOMPARE(good.runs().size(), 3);
    QCOMPARE(good.runs().at(0).text, QStringLiteral(u"\u00B7 "));

    Fault fault;
    fault.status = 502;
    m_fixture->server->faults().set(Route::Stats, fault);
    m_fixture->clock.advance(5s);
    m_fixture->store().refresh();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->store().menuBarTitle(), QStringLiteral(u"\u25C9 !"));
    QCOMPARE(m_item.titles.last().text(), good.text());
}

void TestAppDelegate::callbackUrlIsHandedToTheStoreAndOpensThePopover()
{
    m_fixture->preferences().setString(SettingsKeys::lastPresentedAppVersion, QStringLiteral("1.4.0"));
    AppDelegate &delegate = makeDelegate(false);
    delegate.openURLs({QStringLiteral("inkwarden://authenticated?code=1")});
    QCOMPARE(m_fixture->store().errorMessage(),
             std::optional<QString>(QStringLiteral("Inkwarden received an invalid sign-in response.")));
    QVERIFY(m_popover.shown);
}

void TestAppDelegate::onlyTheFirstOfSeveralUrlsIsProcessed()
{
    AppDelegate &delegate = makeDelegate(false);
    delegate.openURLs(
        {QStringLiteral("inkwarden://authenticated?code=1&state=S"), QStringLiteral("inkwarden://elsewhere")});
    // The first is a well-formed callback with no sign-in pending; the second, malformed, is never read.
    QCOMPARE(m_fixture->store().errorMessage(),
             std::optional<QString>(
                 QStringLiteral("This sign-in response does not match the current request. Please try again.")));
}

void TestAppDelegate::noUrlsDoNothing()
{
    makeDelegate(false).openURLs({});
    QVERIFY(!m_popover.shown);
    QVERIFY(!m_fixture->store().errorMessage().has_value());
}

void TestAppDelegate::clickOpensAndClickAgainCloses()
{
    makeDelegate();
    m_item.click(QPoint(1500, 12));
    QVERIFY(m_popover.shown);
    QCOMPARE(m_popover.anchors.last(), std::optional<QPoint>(QPoint(1500, 12)));
    m_item.click(QPoint(1500, 12));
    QVERIFY(!m_popover.shown);
    m_item.click();
    QCOMPARE(m_popover.anchors.last(), std::optional<QPoint>());
}

void TestAppDelegate::clickThatClosedThePopoverDoesNotReopenIt()
{
    makeDelegate();
    m_popover.justClosed = true;
    m_item.click(QPoint(10, 10));
    QVERIFY(!m_popover.shown);
    m_popover.justClosed = false;
    m_item.click(QPoint(10, 10));
    QVERIFY(m_popover.shown);
}

void TestAppDelegate::openingCatchesUpAMissedRefreshAndPromptsForUpdate()
{
    AppDelegate &delegate = makeDelegate();
    RoyaltiesStore &store = m_fixture->store();
    store.refresh();
    QVERIFY(m_fixture->waitUntilIdle());
    store.updates().setLatestAppVersion(QStringLiteral("9.0"));
    m_fixture->clock.jumpTo(store.nextRefreshAt()->addSecs(60));
    m_fixture->server->clearRequests();
    delegate.showPopover();
    QVERIFY(store.isLoading());
    QVERIFY(store.isShowingUpdatePrompt());
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->statisticsRequests().size(), 1);
}

void TestAppDelegate::menuEntriesDoWhatTheySay()
{
    AppDelegate &delegate = makeDelegate();
    QSignalSpy quit(&delegate, &AppDelegate::quitRequested);
    m_item.choose(StatusMenuEntry::Open);
    QVERIFY(m_popover.shown);
    m_popover.shown = false;
    m_item.choose(StatusMenuEntry::Settings);
    QVERIFY(m_popover.shown);
    QVERIFY(m_fixture->store().isShowingSettings());
    m_item.choose(StatusMenuEntry::Refresh);
    QVERIFY(m_fixture->store().isLoading() || m_fixture->store().session().refreshWhenAvailable());
    m_item.choose(StatusMenuEntry::Quit);
    QCOMPARE(quit.size(), 1);
    Q_EMIT m_popover.quitRequested();
    QCOMPARE(quit.size(), 2);
}

void TestAppDelegate::panelStatusBeforeSignInSaysSignedOut()
{
    AppDelegate &delegate = makeDelegate(false);
    QSignalSpy changes(&delegate, &AppDelegate::panelStatusChanged);
    delegate.applicationDidFinishLaunching();
    QVERIFY(changes.size() >= 1);
    const PanelStatus &status = delegate.panelStatus();
    QCOMPARE(status.state, PanelState::signedOut);
    QCOMPARE(status.title, QStringLiteral(u"\u25C9 \u2014"));
    QCOMPARE(status.toolTip(), QStringLiteral("Inkwarden Royalties\nNot signed in"));
    QCOMPARE(m_item.toolTip, std::make_pair(status.toolTipTitle, status.toolTipBody));
}

void TestAppDelegate::panelStatusAfterAFailedSignInSaysWhy()
{
    AppDelegate &delegate = makeDelegate(false);
    delegate.applicationDidFinishLaunching();
    m_fixture->store().handleAuthenticationCallback(QStringLiteral("inkwarden://elsewhere?code=1&state=2"));
    const PanelStatus &status = delegate.panelStatus();
    QCOMPARE(status.state, PanelState::signedOut);
    QCOMPARE(status.toolTip(),
             QStringLiteral("Inkwarden Royalties\nNot signed in\nInkwarden received an invalid sign-in response."));
}

void TestAppDelegate::panelStatusGoesFromLoadingToOkWithTheFigure()
{
    AppDelegate &delegate = makeDelegate();
    QSignalSpy changes(&delegate, &AppDelegate::panelStatusChanged);
    delegate.applicationDidFinishLaunching();
    QCOMPARE(delegate.panelStatus().state, PanelState::loading);
    QVERIFY(delegate.panelStatus().toolTipBody.endsWith(QStringLiteral(u"Refreshing now\u2026")));
    QVERIFY(m_fixture->waitUntilIdle());
    m_fixture->clock.advance(3s);
    QVERIFY(m_fixture->waitUntilIdle());

    const PanelStatus &status = delegate.panelStatus();
    QCOMPARE(status.state, PanelState::ok);
    // The status names exactly what the item shows.
    QCOMPARE(status.title, m_item.titles.last().text());
    QVERIFY(status.title.startsWith(QStringLiteral(u"\u00B7 $")));
    const QDateTime refreshed = m_fixture->store().lastUpdated().value();
    // The period first, then the figure and when it came.
    QCOMPARE(status.toolTipBody,
             QStringLiteral("Today: ") + m_item.titles.last().figure() + QStringLiteral(u" \u00B7 ")
                 + PanelStatusBuilder::refreshedText(refreshed, m_fixture->clock.now(), QLocale::system()));
    QVERIFY(status.toolTipBody.startsWith(QStringLiteral("Today: $")));
    QVERIFY(status.toolTipBody.contains(QStringLiteral("Refreshed at ")));
    QCOMPARE(qvariant_cast<PanelStatus>(changes.last().at(0)), status);

    // Time passing alone changes nothing: the tool tip names the time, not the age.
    const qsizetype before = changes.size();
    m_fixture->clock.advance(10min);
    QCOMPARE(changes.size(), before);
}

void TestAppDelegate::panelStatusKeepsTheFigureAndCarriesTheErrorAfterAFailure()
{
    AppDelegate &delegate = makeDelegate();
    delegate.applicationDidFinishLaunching();
    QVERIFY(m_fixture->waitUntilIdle());
    m_fixture->clock.advance(3s);
    QVERIFY(m_fixture->waitUntilIdle());
    const QString good = delegate.panelStatus().title;

    Fault fault;
    fault.status = 502;
    m_fixture->server->faults().set(Route::Stats, fault);
    m_fixture->clock.advance(5s);
    m_fixture->store().refresh();
    QVERIFY(m_fixture->waitUntilIdle());
    const PanelStatus &status = delegate.panelStatus();
    QCOMPARE(status.state, PanelState::error);
    QCOMPARE(status.title, good);
    QVERIFY(status.toolTipBody.endsWith(u'\n' + m_fixture->store().errorMessage().value()));
}

void TestAppDelegate::panelStatusWithoutTheNetworkIsOffline()
{
    AppDelegate &delegate = makeDelegate();
    delegate.applicationDidFinishLaunching();
    QVERIFY(m_fixture->waitUntilIdle());
    m_fixture->reachability.report(false);
    QCOMPARE(delegate.panelStatus().state, PanelState::offline);
    QVERIFY(delegate.panelStatus().toolTipBody.endsWith(QStringLiteral(u"\nWaiting for internet\u2026")));
    m_fixture->reachability.report(true);
    QVERIFY(delegate.panelStatus().state != PanelState::offline);
}

void TestAppDelegate::refreshedTextNamesTheTimeAndTheDateWhenNotToday()
{
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QDateTime refreshed(QDate(2026, 11, 23), QTime(9, 5), Qt::LocalTime);
    QCOMPARE(PanelStatusBuilder::refreshedText(refreshed, refreshed.addSecs(3600), english),
             QStringLiteral("Refreshed at ") + english.toString(QTime(9, 5), QLocale::ShortFormat));
    QVERIFY(PanelStatusBuilder::refreshedText(refreshed, refreshed.addSecs(3600), english)
                .contains(QStringLiteral("9:05")));
    const QString yesterday = PanelStatusBuilder::refreshedText(refreshed, refreshed.addDays(1), english);
    QCOMPARE(yesterday, QStringLiteral("Refreshed ") + english.toString(refreshed, QLocale::ShortFormat));
    QVERIFY(yesterday.contains(QStringLiteral("11/23/26")));
    QCOMPARE(PanelStatusBuilder::refreshedText(std::nullopt, refreshed, english), QStringLiteral("Not refreshed yet"));
}

void TestAppDelegate::hideAmountsFromTheMenuMasksTheItemAndItsStatus()
{
    AppDelegate &delegate = makeDelegate();
    delegate.applicationDidFinishLaunching();
    QVERIFY(m_fixture->waitUntilIdle());
    m_fixture->clock.advance(3s);
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(!m_item.amountsHidden());
    const QString figure = m_item.titles.last().figure();
    QVERIFY(figure.contains(QRegularExpression(QStringLiteral("[0-9]"))));

    m_item.choose(StatusMenuEntry::HideAmounts);
    const QString mask = QStringLiteral(u"$\u2022\u2022\u2022");
    QVERIFY(m_fixture->store().hideAmounts());
    QVERIFY(m_item.amountsHidden());
    QCOMPARE(m_item.titles.last().figure(), mask);
    QVERIFY(!m_item.titles.last().text().contains(QRegularExpression(QStringLiteral("[0-9]"))));
    QVERIFY(delegate.panelStatus().toolTipBody.startsWith(QStringLiteral("Today: ") + mask + u' '));
    QVERIFY(!delegate.panelStatus().title.contains(QRegularExpression(QStringLiteral("[0-9]"))));
    // The name in words says the mask the item shows, never the amount.
    QCOMPARE(m_item.accessibleTitles.last(), QStringLiteral("Inkwarden: Today ") + mask);

    m_item.choose(StatusMenuEntry::HideAmounts);
    QVERIFY(!m_fixture->store().hideAmounts());
    QVERIFY(!m_item.amountsHidden());
    QCOMPARE(m_item.titles.last().figure(), figure);
    QCOMPARE(m_item.accessibleTitles.last(), QStringLiteral("Inkwarden: Today ") + figure);
}

void TestAppDelegate::theItemsNameSaysWhyThereIsNoFigure()
{
    makeDelegate(false).applicationDidFinishLaunching();
    QCOMPARE(m_item.accessibleTitles, QStringList{QStringLiteral("Inkwarden: Not signed in")});

    // Connected, the figures still on their way: no placeholder glyphs to read out.
    makeDelegate().applicationDidFinishLaunching();
    QCOMPARE(m_item.titles.last().text(), QStringLiteral(u"\u25C9 \u2014"));
    QCOMPARE(m_item.accessibleTitles.last(), QStringLiteral("Inkwarden: Not refreshed yet"));
    QCOMPARE(m_item.accessibleTitles.last(),
             PanelStatusBuilder::accessibleTitle(m_fixture->store(), m_item.titles.last()));
    // Nor in the tool tip.
    const PanelStatus status =
        PanelStatusBuilder::build(m_fixture->store(), m_item.titles.last(), m_fixture->clock.now(), m_fixture->locale);
    QCOMPARE(status.toolTipBody.section(u'\n', 0, 0), QStringLiteral("Not refreshed yet"));
    QVERIFY(!status.toolTipBody.contains(QChar(0x25C9)));
}

void TestAppDelegate::theItemsNameAndToolTipFollowTheFigureAndThePeriod()
{
    AppDelegate &delegate = makeDelegate();
    delegate.applicationDidFinishLaunching();
    QVERIFY(m_fixture->waitUntilIdle());
    m_fixture->clock.advance(3s);
    QVERIFY(m_fixture->waitUntilIdle());
    const QString today = m_item.titles.last().figure();
    QVERIFY(today.contains(QRegularExpression(QStringLiteral("^\\$[0-9]"))));
    QCOMPARE(m_item.accessibleTitles.last(), QStringLiteral("Inkwarden: Today ") + today);
    QVERIFY(delegate.panelStatus().toolTipBody.startsWith(QStringLiteral("Today: ") + today + u' '));

    // Once the cooldown allows another period, the name and the tool tip say it with its figure.
    m_fixture->clock.advance(3s);
    QVERIFY(m_fixture->waitUntilIdle());
    m_fixture->store().selectPeriod(RoyaltyPeriod::thisMonth);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->store().selectedPeriod(), RoyaltyPeriod(RoyaltyPeriod::thisMonth));
    const QString month = m_item.titles.last().figure();
    QVERIFY(month.contains(QRegularExpression(QStringLiteral("^\\$[0-9]"))));
    QVERIFY(month != today);
    QCOMPARE(m_item.accessibleTitles.last(), QStringLiteral("Inkwarden: This Month ") + month);
    QVERIFY2(delegate.panelStatus().toolTipBody.startsWith(QStringLiteral("This Month: ") + month + u' '),
             qPrintable(delegate.panelStatus().toolTipBody));
    QVERIFY(m_item.accessibleTitles.contains(QStringLiteral("Inkwarden: Today ") + today));

    // Signed out, it says so.
    m_fixture->store().signOut();
    QCOMPARE(m_item.accessibleTitles.last(), QStringLiteral("Inkwarden: Not signed in"));
}

void TestAppDelegate::aPeriodSwitchedOfflineIsNamedOnlyWithItsOwnFigure()
{
    AppDelegate &delegate = makeDelegate();
    delegate.applicationDidFinishLaunching();
    QVERIFY(m_fixture->waitUntilIdle());
    m_fixture->clock.advance(6s);
    QVERIFY(m_fixture->waitUntilIdle());
    const QString today = m_item.titles.last().figure();
    QVERIFY(today.contains(QRegularExpression(QStringLiteral("^\\$[0-9]"))));

    // Offline, the period switches but no figure of it can come: today's figure is still shown, and
    // still named as today's.
    m_fixture->reachability.report(false);
    m_fixture->store().selectPeriod(RoyaltyPeriod::thisMonth);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->store().selectedPeriod(), RoyaltyPeriod(RoyaltyPeriod::thisMonth));
    QCOMPARE(m_item.titles.last().figure(), today);
    QCOMPARE(m_item.accessibleTitles.last(), QStringLiteral("Inkwarden: Today ") + today);
    QVERIFY2(delegate.panelStatus().toolTipBody.startsWith(QStringLiteral("Today: ") + today + u' '),
             qPrintable(delegate.panelStatus().toolTipBody));
    for (const QString &title : std::as_const(m_item.accessibleTitles)) {
        QVERIFY2(!title.startsWith(QStringLiteral("Inkwarden: This Month")), qPrintable(title));
    }

    // Back online once the server allows another request, the month's figures come, named as the
    // month's.
    m_fixture->clock.advance(6s);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_item.accessibleTitles.last(), QStringLiteral("Inkwarden: Today ") + today);
    m_fixture->reachability.report(true);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->store().figuresPeriod(), RoyaltyPeriod(RoyaltyPeriod::thisMonth));
    const QString month = m_item.titles.last().figure();
    QVERIFY(month != today);
    QCOMPARE(m_item.accessibleTitles.last(), QStringLiteral("Inkwarden: This Month ") + month);
    QVERIFY2(delegate.panelStatus().toolTipBody.startsWith(QStringLiteral("This Month: ") + month + u' '),
             qPrintable(delegate.panelStatus().toolTipBody));

    // Signed out, no figure has a period any more.
    m_fixture->store().signOut();
    QCOMPARE(m_fixture->store().figuresPeriod(), RoyaltyPeriod(RoyaltyPeriod::thisMonth));
    QVERIFY(!m_fixture->store().session().figuresPeriod());
}

QTEST_MAIN(TestAppDelegate)
#include "tst_appdelegate.moc"
