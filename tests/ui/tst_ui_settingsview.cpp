#include "UiTest.h"
#include "store/AppUpdates.h"
#include "store/ConnectionSession.h"
#include "store/OpenAtLogin.h"
#include "store/RoyaltyAlerts.h"
#include "store/StoreSettings.h"
#include "store/StoreStatus.h"

#include <QSignalSpy>

namespace {

PublisherAccount account(const QString &id, const QString &email, std::optional<QString> name)
{
    return PublisherAccount{id, email, std::move(name), QStringLiteral("owner")};
}

QString ellipsis(const char *text)
{
    return QString::fromUtf8(text) + QChar(0x2026);
}

} // namespace

namespace {

// The metrics' order as the settings file holds it.
QStringList rawOrder(const RoyaltiesStore &store)
{
    QStringList order;
    for (const SalesBreakdownMetric metric : store.salesMetricOrder()) {
        order.append(metric.rawValue());
    }
    return order;
}

} // namespace

class TestSettingsView : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startTest(); }
    void cleanup() { endTest(); }

    void rowsAppearInOrderWithTheirTitlesAndHints();
    void backButtonOnlyHidesTheSettings();
    void fieldsWriteIntoTheStoreAtEveryKeystroke();

    void loadingAccountsShowsSpinnerEvenWithAccounts();
    void noAccountsOffersReloadAndNoPicker();
    void reloadAccountsCallsLoadAccounts();
    void oneAccountShowsItsNameAsPlainText();
    void twoAccountsShowAPickerThatSetsTheAccount();

    void displayedRoyaltyPickerWritesTheStore();
    void refreshIntervalPickerOffersTheFourIntervals();

    void metricListShowsEveryMetricInOrder();
    void oneMetricInOrderDisablesBothMoveButtonsAndNoDivider();
    void moveButtonsCallMoveSalesMetric();
    void uncheckingEveryMetricLeavesAllRowsVisibleAndUnchecked();
    void movingWorksOnHiddenRows();

    void loginSwitchCallsSetOpensAtLoginAndShowsTheStoreState();
    void approvalRequiredChangesHintAndShowsNoticeWhateverTheSwitchShows();
    void openAutostartSettingsButtonOpensThem();

    void beforeAnyCheckOnlyVersionLineAndButtons();
    void upToDateShowsGreenLine();
    void checkForUpdatesCallsCheckAndReadsChecking();
    void downloadRunningDisablesCheckAndInstall();
    void updateAvailableNotDownloadedInstallDownloadsAndNoShowInFiles();
    void downloadedUpdateOpensAndShowsInFiles();
    void updateStatusMessageShowsUnderTheRow();

    void errorBannerShowsTheMessage();
    void saveWithUnchangedConfigurationStillCallsConnect();
    void signOutCallsSignOut();
    void notificationSwitchesWriteTheChoices();
    void hideAmountsSwitchMasksTheFigures();
    void quitInkwardenQuits();

private:
    RoyaltiesStore &connectedStore()
    {
        RoyaltiesStore &store = fixture->makeConnectedStore();
        store.status().setIsShowingSettings(true);
        return store;
    }
    QQuickItem *metricRow(int position) { return item(QStringLiteral("metricSetting%1").arg(position)); }
    // The colour the version line is drawn in, by its name in the theme.
    QString versionStatusColorName() const;
};

void TestSettingsView::rowsAppearInOrderWithTheirTitlesAndHints()
{
    connectedStore();
    show();
    QCOMPARE(text(QStringLiteral("settingsTitle")), QStringLiteral("Settings"));
    const QList<std::pair<QString, QString>> rows{
        {QStringLiteral("serverField"), QStringLiteral("Server URL")},
        {QStringLiteral("apiKeyField"), QStringLiteral("API key")},
        {QStringLiteral("accountField"), QStringLiteral("Account")},
        {QStringLiteral("displayedRoyaltyField"), QStringLiteral("Show in menu bar")},
        {QStringLiteral("refreshField"), QStringLiteral("Refresh automatically")},
        {QStringLiteral("salesBreakdownField"), QStringLiteral("Sales breakdown")},
        {QStringLiteral("startAutomaticallyField"), QStringLiteral("Start automatically")},
        {QStringLiteral("versionField"), QStringLiteral("Version")},
        {QStringLiteral("saveSettingsButton"), QStringLiteral("Save settings")},
        {QStringLiteral("signOutButton"), QStringLiteral("Sign out")},
        {QStringLiteral("quitButton"), QStringLiteral("Quit Inkwarden")},
    };
    qreal previous = -1;
    for (const auto &[name, title] : rows) {
        QQuickItem *row = item(name);
        QVERIFY2(ViewHarness::isShown(row), qPrintable(name));
        const QObject *titled = row->property("title").isValid() ? row : nullptr;
        QCOMPARE(titled ? row->property("title").toString() : ViewHarness::text(row), title);
        const qreal y = row->mapToScene({0, 0}).y();
        QVERIFY2(y > previous, qPrintable(name));
        previous = y;
    }
    QCOMPARE(item(QStringLiteral("serverField"))->property("hint").toString(),
             QString(QStringLiteral("Change this to https://") + QChar(0x2026) + QStringLiteral(" for production")));
    QCOMPARE(item(QStringLiteral("displayedRoyaltyField"))->property("hint").toString(),
             QStringLiteral("This also controls the large highlighted amount"));
    QCOMPARE(item(QStringLiteral("refreshField"))->property("hint").toString(),
             QStringLiteral("Inkwarden allows no more than one request every 3 seconds"));
    QCOMPARE(item(QStringLiteral("salesBreakdownField"))->property("hint").toString(),
             QStringLiteral("Choose which formats appear and arrange them in your preferred order"));
    QCOMPARE(item(QStringLiteral("apiKeyInput"))->property("placeholderText").toString(), QStringLiteral("API key"));
    QVERIFY(shown(QStringLiteral("signOutDivider")));
}

void TestSettingsView::backButtonOnlyHidesTheSettings()
{
    RoyaltiesStore &store = connectedStore();
    show();
    store.settings().setServerURL(QStringLiteral("http://edited"));
    QVERIFY(click(QStringLiteral("backButton")));
    QVERIFY(!store.isShowingSettings());
    QVERIFY(shown(QStringLiteral("dashboardView")));
    QCOMPARE(store.serverURL(), QStringLiteral("http://edited"));
    QCOMPARE(fixture->preferences().string(QStringLiteral("serverURL")).value_or(QString()),
             fixture->server->baseUrl().toString());
}

void TestSettingsView::fieldsWriteIntoTheStoreAtEveryKeystroke()
{
    RoyaltiesStore &store = connectedStore();
    store.session().setApiKey(QString());
    show();
    view->typeInto(item(QStringLiteral("apiKeyInput")), QStringLiteral("ab"));
    QCOMPARE(store.apiKey(), QStringLiteral("ab"));
    QCOMPARE(fixture->secrets.saves, 0);
}

void TestSettingsView::loadingAccountsShowsSpinnerEvenWithAccounts()
{
    RoyaltiesStore &store = connectedStore();
    store.session().setAccounts({account(QStringLiteral("a1"), QStringLiteral("a@x"), QStringLiteral("A")),
                                 account(QStringLiteral("a2"), QStringLiteral("b@x"), std::nullopt)});
    store.session().setIsLoadingAccounts(true);
    show();
    QVERIFY(shown(QStringLiteral("accountLoading")));
    QVERIFY(!shown(QStringLiteral("accountPicker")));
    QVERIFY(!shown(QStringLiteral("singleAccountName")));
    QVERIFY(!shown(QStringLiteral("reloadAccountsButton")));
    QCOMPARE(item(QStringLiteral("accountField"))->property("hint").toString(),
             QStringLiteral("Loading accounts authorized by this API key"));
}

void TestSettingsView::noAccountsOffersReloadAndNoPicker()
{
    connectedStore();
    show();
    QVERIFY(shown(QStringLiteral("reloadAccountsButton")));
    QCOMPARE(text(QStringLiteral("reloadAccountsButton")), QStringLiteral("Reload accounts"));
    QVERIFY(!shown(QStringLiteral("accountPicker")));
    QVERIFY(!shown(QStringLiteral("accountLoading")));
    QCOMPARE(item(QStringLiteral("accountField"))->property("hint").toString(),
             QStringLiteral("Account details could not be loaded"));
}

void TestSettingsView::reloadAccountsCallsLoadAccounts()
{
    RoyaltiesStore &store = connectedStore();
    show();
    QVERIFY(click(QStringLiteral("reloadAccountsButton")));
    QVERIFY(fixture->waitUntilIdle());
    QTRY_VERIFY(!store.isLoadingAccounts());
    QVERIFY(!store.accounts().isEmpty());
    QVERIFY(!shown(QStringLiteral("reloadAccountsButton")));
}

void TestSettingsView::oneAccountShowsItsNameAsPlainText()
{
    RoyaltiesStore &store = connectedStore();
    store.session().setAccounts({account(QStringLiteral("a1"), QStringLiteral("<i>a@x</i>"), std::nullopt)});
    show();
    QVERIFY(shown(QStringLiteral("singleAccountName")));
    QCOMPARE(text(QStringLiteral("singleAccountName")), QStringLiteral("<i>a@x</i>"));
    QCOMPARE(item(QStringLiteral("singleAccountName"))->property("textFormat").toInt(), int(Qt::PlainText));
    QVERIFY(!shown(QStringLiteral("accountPicker")));
    QVERIFY(!item(QStringLiteral("accountField"))->property("hint").isValid());
    QVERIFY(!shown(QStringLiteral("fieldHint"), item(QStringLiteral("accountField"))));
}

void TestSettingsView::twoAccountsShowAPickerThatSetsTheAccount()
{
    RoyaltiesStore &store = connectedStore();
    store.session().setAccounts({account(QStringLiteral("a1"), QStringLiteral("a@x"), QStringLiteral("Alpha Press")),
                                 account(QStringLiteral("a2"), QStringLiteral("b@x"), std::nullopt)});
    store.settings().setAccountID(QStringLiteral("a2"));
    show();
    QQuickItem *picker = item(QStringLiteral("accountPicker"));
    QVERIFY(ViewHarness::isShown(picker));
    QCOMPARE(picker->property("currentIndex").toInt(), 1);
    QCOMPARE(picker->property("displayText").toString(), QStringLiteral("b@x"));
    QCOMPARE(picker->property("count").toInt(), 2);
    QMetaObject::invokeMethod(picker, "activated", Q_ARG(int, 0));
    // The combo box emits activated after it changed its index; the same happens here by hand.
    picker->setProperty("currentIndex", 0);
    QMetaObject::invokeMethod(picker, "activated", Q_ARG(int, 0));
    view->settle();
    QCOMPARE(store.accountID(), QStringLiteral("a1"));
    QCOMPARE(picker->property("displayText").toString(), QStringLiteral("Alpha Press"));
}

void TestSettingsView::displayedRoyaltyPickerWritesTheStore()
{
    RoyaltiesStore &store = connectedStore();
    show();
    QCOMPARE(text(QStringLiteral("displayedRoyaltyPickerSegment0")), QStringLiteral("Gross royalties"));
    QCOMPARE(text(QStringLiteral("displayedRoyaltyPickerSegment1")), QStringLiteral("Net royalties"));
    QVERIFY(view->find(QStringLiteral("displayedRoyaltyPickerSegment0"))->property("checked").toBool());
    QVERIFY(click(QStringLiteral("displayedRoyaltyPickerSegment1")));
    QCOMPARE(store.displayedRoyalty().rawValue(), QStringLiteral("Net royalties"));
    QVERIFY(view->find(QStringLiteral("displayedRoyaltyPickerSegment1"))->property("checked").toBool());
}

void TestSettingsView::refreshIntervalPickerOffersTheFourIntervals()
{
    RoyaltiesStore &store = connectedStore();
    store.settings().setRefreshMinutes(120);
    show();
    QQuickItem *picker = item(QStringLiteral("refreshIntervalPicker"));
    QCOMPARE(picker->property("count").toInt(), 4);
    QCOMPARE(picker->property("displayText").toString(), QStringLiteral("Every 2 hours"));
    const QStringList texts{QStringLiteral("Every 30 minutes"), QStringLiteral("Every hour"),
                            QStringLiteral("Every 2 hours"), QStringLiteral("Every 3 hours")};
    for (int i = 0; i < 4; ++i) {
        QString shownText;
        QMetaObject::invokeMethod(picker, "textAt", Q_RETURN_ARG(QString, shownText), Q_ARG(int, i));
        QCOMPARE(shownText, texts.at(i));
    }
    picker->setProperty("currentIndex", 1);
    QMetaObject::invokeMethod(picker, "activated", Q_ARG(int, 1));
    QCOMPARE(store.refreshMinutes(), 60);
}

void TestSettingsView::metricListShowsEveryMetricInOrder()
{
    RoyaltiesStore &store = connectedStore();
    store.settings().setHiddenSalesMetrics({SalesBreakdownMetric::hardcovers});
    show();
    const QStringList titles{QStringLiteral("Paid ebooks"),
                             QStringLiteral("Paperbacks"),
                             QStringLiteral("Hardcovers"),
                             QStringLiteral("Audiobooks"),
                             QStringLiteral("Expanded distribution"),
                             QStringLiteral("KENP reads"),
                             QStringLiteral("Upcoming pre-orders"),
                             QStringLiteral("Free ebooks")};
    for (int i = 0; i < titles.size(); ++i) {
        QQuickItem *row = metricRow(i);
        QVERIFY(ViewHarness::isShown(row));
        QCOMPARE(text(QStringLiteral("metricToggle"), row), titles.at(i));
        QCOMPARE(item(QStringLiteral("metricToggle"), row)->property("checked").toBool(), i != 2);
        QCOMPARE(shown(QStringLiteral("divider"), row), i > 0);
        QCOMPARE(enabled(QStringLiteral("moveUpButton"), row), i > 0);
        QCOMPARE(enabled(QStringLiteral("moveDownButton"), row), i < titles.size() - 1);
        QCOMPARE(item(QStringLiteral("moveUpButton"), row)->property("toolTip").toString(),
                 QStringLiteral("Move ") + titles.at(i) + QStringLiteral(" up"));
        QCOMPARE(item(QStringLiteral("moveDownButton"), row)->property("toolTip").toString(),
                 QStringLiteral("Move ") + titles.at(i) + QStringLiteral(" down"));
    }
}

void TestSettingsView::oneMetricInOrderDisablesBothMoveButtonsAndNoDivider()
{
    RoyaltiesStore &store = connectedStore();
    store.settings().setSalesMetricOrder({SalesBreakdownMetric::audiobooks});
    show();
    QQuickItem *row = metricRow(0);
    QVERIFY(ViewHarness::isShown(row));
    QVERIFY(!metricRow(1));
    QVERIFY(!enabled(QStringLiteral("moveUpButton"), row));
    QVERIFY(!enabled(QStringLiteral("moveDownButton"), row));
    QVERIFY(!shown(QStringLiteral("divider"), row));
}

void TestSettingsView::moveButtonsCallMoveSalesMetric()
{
    RoyaltiesStore &store = connectedStore();
    show();
    QVERIFY(click(QStringLiteral("moveDownButton"), metricRow(0)));
    QCOMPARE(rawOrder(store).mid(0, 2), (QStringList{QStringLiteral("paperbacks"), QStringLiteral("paidEbooks")}));
    QCOMPARE(text(QStringLiteral("metricToggle"), metricRow(0)), QStringLiteral("Paperbacks"));
    QVERIFY(click(QStringLiteral("moveUpButton"), metricRow(2)));
    QCOMPARE(rawOrder(store).mid(1, 2), (QStringList{QStringLiteral("hardcovers"), QStringLiteral("paidEbooks")}));
    QCOMPARE(fixture->preferences().stringList(QStringLiteral("salesMetricOrder")).value_or(QStringList()),
             rawOrder(store));
}

void TestSettingsView::uncheckingEveryMetricLeavesAllRowsVisibleAndUnchecked()
{
    RoyaltiesStore &store = connectedStore();
    show();
    for (int i = 0; i < 8; ++i) {
        QVERIFY(click(QStringLiteral("metricToggle"), metricRow(i)));
    }
    QCOMPARE(store.hiddenSalesMetrics().size(), 8);
    QCOMPARE(fixture->preferences().stringList(QStringLiteral("hiddenSalesMetrics")).value_or(QStringList()).size(), 8);
    for (int i = 0; i < 8; ++i) {
        QVERIFY(ViewHarness::isShown(metricRow(i)));
        QVERIFY(!item(QStringLiteral("metricToggle"), metricRow(i))->property("checked").toBool());
    }
    QVERIFY(click(QStringLiteral("metricToggle"), metricRow(3)));
    QVERIFY(!store.hiddenSalesMetrics().contains(SalesBreakdownMetric::audiobooks));
    QVERIFY(item(QStringLiteral("metricToggle"), metricRow(3))->property("checked").toBool());
}

void TestSettingsView::movingWorksOnHiddenRows()
{
    RoyaltiesStore &store = connectedStore();
    store.settings().setHiddenSalesMetrics({SalesBreakdownMetric::paidEbooks});
    show();
    QVERIFY(click(QStringLiteral("moveDownButton"), metricRow(0)));
    QCOMPARE(rawOrder(store).at(1), QStringLiteral("paidEbooks"));
    QVERIFY(!item(QStringLiteral("metricToggle"), metricRow(1))->property("checked").toBool());
}

void TestSettingsView::loginSwitchCallsSetOpensAtLoginAndShowsTheStoreState()
{
    RoyaltiesStore &store = connectedStore();
    show();
    QQuickItem *toggle = item(QStringLiteral("openAtLoginSwitch"));
    QCOMPARE(ViewHarness::text(toggle), QStringLiteral("Open Inkwarden at login"));
    QVERIFY(!toggle->property("checked").toBool());
    QVERIFY(click(QStringLiteral("openAtLoginSwitch")));
    QCOMPARE(fixture->loginItems.registrations, 1);
    QVERIFY(store.opensAtLogin());
    QVERIFY(toggle->property("checked").toBool());
    // A quiet refusal: the switch goes back to what the system reports.
    fixture->loginItems.currentStatus = LoginItemService::Status::notRegistered;
    fixture->loginItems.statusAfterRegister = LoginItemService::Status::notRegistered;
    QVERIFY(click(QStringLiteral("openAtLoginSwitch")));
    QVERIFY(!store.opensAtLogin());
    QVERIFY(click(QStringLiteral("openAtLoginSwitch")));
    QCOMPARE(fixture->loginItems.registrations, 2);
    QVERIFY(!store.opensAtLogin());
    QVERIFY(!toggle->property("checked").toBool());
}

void TestSettingsView::approvalRequiredChangesHintAndShowsNoticeWhateverTheSwitchShows()
{
    RoyaltiesStore &store = connectedStore();
    show();
    QQuickItem *field = item(QStringLiteral("startAutomaticallyField"));
    QCOMPARE(field->property("hint").toString(),
             QStringLiteral("Launch Inkwarden after you sign in to or restart your computer"));
    QVERIFY(!shown(QStringLiteral("approvalNotice")));
    store.login().setLaunchAtLoginRequiresApproval(true);
    view->settle();
    QCOMPARE(field->property("hint").toString(),
             QStringLiteral("Approval is required in your system's autostart settings"));
    QVERIFY(shown(QStringLiteral("approvalNotice")));
    QVERIFY(!item(QStringLiteral("openAtLoginSwitch"))->property("checked").toBool());
    QCOMPARE(text(QStringLiteral("approvalTitle")), QStringLiteral("Approval required"));
    QCOMPARE(text(QStringLiteral("approvalText")),
             QStringLiteral("Inkwarden is registered, but the system has not approved it. It will not open at login "
                            "until you enable it in your system's autostart settings."));
    QCOMPARE(text(QStringLiteral("openLoginItemsSettingsButton")), QStringLiteral("Open Autostart Settings"));
}

void TestSettingsView::openAutostartSettingsButtonOpensThem()
{
    RoyaltiesStore &store = connectedStore();
    store.login().setLaunchAtLoginRequiresApproval(true);
    show();
    QVERIFY(click(QStringLiteral("openLoginItemsSettingsButton")));
    QCOMPARE(fixture->desktop.loginItemsSettingsOpened, 1);
}

void TestSettingsView::beforeAnyCheckOnlyVersionLineAndButtons()
{
    connectedStore();
    show();
    QCOMPARE(text(QStringLiteral("appVersionTitle")), QStringLiteral("Inkwarden 1.4.0"));
    QVERIFY(!shown(QStringLiteral("versionStatus")));
    QVERIFY(shown(QStringLiteral("checkForUpdatesButton")));
    QCOMPARE(text(QStringLiteral("checkForUpdatesButton")), QStringLiteral("Check for updates"));
    QVERIFY(!shown(QStringLiteral("installUpdateButton")));
    QVERIFY(!shown(QStringLiteral("revealUpdateButton")));
    QVERIFY(!shown(QStringLiteral("updateStatusMessage")));
}

QString TestSettingsView::versionStatusColorName() const
{
    const auto *updates = item(QStringLiteral("settingsView"))->property("updates").value<QObject *>();
    return updates ? updates->property("versionStatusColor").toString() : QString();
}

void TestSettingsView::upToDateShowsGreenLine()
{
    RoyaltiesStore &store = connectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.4.0"));
    show();
    QCOMPARE(text(QStringLiteral("versionStatus")),
             QString(QStringLiteral("You") + QChar(0x2019) + QStringLiteral("re up to date")));
    QCOMPARE(versionStatusColorName(), QStringLiteral("green"));
    QVERIFY(!shown(QStringLiteral("installUpdateButton")));
}

void TestSettingsView::checkForUpdatesCallsCheckAndReadsChecking()
{
    RoyaltiesStore &store = connectedStore();
    show();
    QVERIFY(click(QStringLiteral("checkForUpdatesButton")));
    QVERIFY(fixture->waitUntilIdle());
    QTRY_VERIFY(store.latestAppVersion().has_value());
    QVERIFY(shown(QStringLiteral("versionStatus")));
    QVERIFY(enabled(QStringLiteral("checkForUpdatesButton")));
    store.updates().setIsCheckingForUpdates(true);
    view->settle();
    QCOMPARE(text(QStringLiteral("checkForUpdatesButton")), ellipsis("Checking"));
    QVERIFY(!enabled(QStringLiteral("checkForUpdatesButton")));
}

void TestSettingsView::downloadRunningDisablesCheckAndInstall()
{
    RoyaltiesStore &store = connectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    store.updates().setIsDownloadingUpdate(true);
    show();
    QVERIFY(!enabled(QStringLiteral("checkForUpdatesButton")));
    QVERIFY(!enabled(QStringLiteral("installUpdateButton")));
    QCOMPARE(text(QStringLiteral("installUpdateButton")), ellipsis("Downloading"));
    QCOMPARE(text(QStringLiteral("versionStatus")), QStringLiteral("Version 1.5.0 is available"));
    QCOMPARE(versionStatusColorName(), QStringLiteral("orange"));
}

void TestSettingsView::updateAvailableNotDownloadedInstallDownloadsAndNoShowInFiles()
{
    RoyaltiesStore &store = connectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    show();
    QCOMPARE(text(QStringLiteral("installUpdateButton")), QStringLiteral("Install update"));
    QVERIFY(!shown(QStringLiteral("revealUpdateButton")));
    QVERIFY(click(QStringLiteral("installUpdateButton")));
    // downloadLatestUpdate: fetched first, then opened.
    QTRY_COMPARE(fixture->desktop.openedFiles.size(), 1);
    QVERIFY(!store.isDownloadingUpdate());
    QVERIFY(shown(QStringLiteral("revealUpdateButton")));
}

void TestSettingsView::downloadedUpdateOpensAndShowsInFiles()
{
    RoyaltiesStore &store = connectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    const QString installer = fixture->cacheFolder() + QStringLiteral("/Inkwarden-1.5.0.deb");
    store.updates().setDownloadedUpdateURL(QUrl::fromLocalFile(installer));
    show();
    QVERIFY(shown(QStringLiteral("revealUpdateButton")));
    QCOMPARE(text(QStringLiteral("revealUpdateButton")), QStringLiteral("Show in Files"));
    QVERIFY(click(QStringLiteral("installUpdateButton")));
    QTRY_COMPARE(fixture->desktop.openedFiles, QStringList{installer});
    QVERIFY(click(QStringLiteral("revealUpdateButton")));
    QCOMPARE(fixture->desktop.revealedFiles, QStringList{installer});
}

void TestSettingsView::updateStatusMessageShowsUnderTheRow()
{
    RoyaltiesStore &store = connectedStore();
    store.updates().setUpdateStatusMessage(QStringLiteral("Opening the installer") + QChar(0x2026));
    show();
    QVERIFY(shown(QStringLiteral("updateStatusMessage")));
    QCOMPARE(text(QStringLiteral("updateStatusMessage")), ellipsis("Opening the installer"));
    QVERIFY(item(QStringLiteral("updateStatusMessage"))->mapToScene({0, 0}).y()
            > item(QStringLiteral("checkForUpdatesButton"))->mapToScene({0, 0}).y());
}

void TestSettingsView::errorBannerShowsTheMessage()
{
    RoyaltiesStore &store = connectedStore();
    show();
    QVERIFY(!shown(QStringLiteral("errorBanner")));
    store.status().setErrorMessage(QStringLiteral("Update check failed: nope"));
    view->settle();
    QVERIFY(shown(QStringLiteral("errorBanner")));
    QVERIFY(item(QStringLiteral("errorBanner"))->mapToScene({0, 0}).y()
            < item(QStringLiteral("versionField"))->mapToScene({0, 0}).y());
}

void TestSettingsView::saveWithUnchangedConfigurationStillCallsConnect()
{
    RoyaltiesStore &store = connectedStore();
    show();
    QVERIFY(click(QStringLiteral("saveSettingsButton")));
    QVERIFY(fixture->waitUntilIdle());
    QTRY_VERIFY(!store.isLoading());
    QCOMPARE(fixture->secrets.saves, 1);
}

void TestSettingsView::signOutCallsSignOut()
{
    RoyaltiesStore &store = connectedStore();
    show();
    QVERIFY(click(QStringLiteral("signOutButton")));
    QVERIFY(!store.isConnected());
    QTRY_VERIFY(shown(QStringLiteral("connectView")));
}

void TestSettingsView::quitInkwardenQuits()
{
    connectedStore();
    show();
    QSignalSpy quit(&view->engine(), &QQmlEngine::quit);
    QVERIFY(click(QStringLiteral("quitButton")));
    QCOMPARE(quit.size(), 1);
}

void TestSettingsView::notificationSwitchesWriteTheChoices()
{
    RoyaltiesStore &store = connectedStore();
    show();
    QVERIFY(shown(QStringLiteral("notificationsField")));
    QCOMPARE(text(QStringLiteral("notifySwitch")), QStringLiteral("Notify on new royalties"));
    QVERIFY(item(QStringLiteral("notifySwitch"))->property("checked").toBool());
    QVERIFY(!shown(QStringLiteral("quietHoursTimes")));

    // Switched off, the other choices wait.
    QVERIFY(click(QStringLiteral("notifySwitch")));
    QVERIFY(!store.alerts().notifyOnNewRoyalties());
    QVERIFY(!enabled(QStringLiteral("soundSwitch")));
    QVERIFY(!enabled(QStringLiteral("quietHoursSwitch")));
    QVERIFY(click(QStringLiteral("notifySwitch")));
    QVERIFY(store.alerts().notifyOnNewRoyalties());

    QVERIFY(click(QStringLiteral("soundSwitch")));
    QVERIFY(store.alerts().notificationSound());
    QVERIFY(click(QStringLiteral("quietHoursSwitch")));
    QVERIFY(store.alerts().quietHoursEnabled());
    QVERIFY(shown(QStringLiteral("quietHoursTimes")));
    QVERIFY(shown(QStringLiteral("quietHoursSummarySwitch")));
    QCOMPARE(item(QStringLiteral("quietHoursStartPicker"))->property("currentText").toString(),
             QStringLiteral("22:00"));
    QCOMPARE(item(QStringLiteral("quietHoursEndPicker"))->property("currentText").toString(), QStringLiteral("07:00"));
    store.alerts().setQuietHoursStart(QTime(21, 30));
    view->settle();
    QCOMPARE(item(QStringLiteral("quietHoursStartPicker"))->property("currentText").toString(),
             QStringLiteral("21:30"));
    QCOMPARE(fixture->preferences().string(QStringLiteral("quietHoursStart")), std::optional(QStringLiteral("21:30")));
}

void TestSettingsView::hideAmountsSwitchMasksTheFigures()
{
    RoyaltiesStore &store = connectedStore();
    show();
    QVERIFY(!item(QStringLiteral("hideAmountsSwitch"))->property("checked").toBool());
    QVERIFY(click(QStringLiteral("hideAmountsSwitch")));
    QVERIFY(store.hideAmounts());
    QCOMPARE(fixture->preferences().boolean(QStringLiteral("hideAmounts")), std::optional(true));
    QCOMPARE(store.money(12.5, false), QStringLiteral(u"$\u2022\u2022\u2022"));
    store.setHideAmounts(false);
    view->settle();
    QVERIFY(!item(QStringLiteral("hideAmountsSwitch"))->property("checked").toBool());
}

QTEST_MAIN(TestSettingsView)
#include "tst_ui_settingsview.moc"
