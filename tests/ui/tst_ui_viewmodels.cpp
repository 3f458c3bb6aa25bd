// The views' models, read as a view reads them: what they say follows the store, each change of
// what they read says so once through `changed`, and without a store they give empty values.
#include "UiTest.h"
#include "store/AppUpdates.h"
#include "store/ConnectionSession.h"
#include "store/OpenAtLogin.h"
#include "store/PlatformTexts.h"
#include "store/RoyaltyAlerts.h"
#include "store/StoreStatus.h"
#include "ui/ConnectViewModel.h"
#include "ui/DashboardViewModel.h"
#include "ui/SettingsViewModel.h"
#include "ui/UpdateViewModel.h"

#include <QSignalSpy>

using namespace std::chrono_literals;

class TestViewModels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<StoreFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void withoutAStoreEverythingIsEmpty()
    {
        const UpdateViewModel updates;
        QCOMPARE(updates.bannerTitle(), QString());
        QVERIFY(!updates.versionStatusText().isValid());
        QVERIFY(!updates.canCheckForUpdates());
        const SettingsViewModel settings;
        QCOMPARE(settings.selectedAccountIndex(), -1);
        QCOMPARE(settings.accountRowForm(), QString());
        const DashboardViewModel dashboard;
        QCOMPARE(dashboard.highlightedRoyaltyText(), QString());
        QVERIFY(!dashboard.showsUpdateBanner());
    }

    void updateTextsFollowTheOfferAndTheDownload()
    {
        RoyaltiesStore &store = m_fixture->makeStore();
        UpdateViewModel model;
        model.setStore(&store);
        QSignalSpy changed(&model, &StoreViewModel::changed);
        QVERIFY(!model.versionStatusText().isValid());
        QCOMPARE(model.versionStatusColor(), QStringLiteral("green"));

        store.updates().offerVersion(QStringLiteral("1.10.0"));
        QVERIFY(changed.count() >= 1);
        QCOMPARE(model.bannerTitle(), QStringLiteral("Inkwarden 1.10.0 is available"));
        QCOMPARE(model.bannerSubtitle(), QStringLiteral("You have version 1.4.0"));
        QCOMPARE(model.versionStatusText(), QVariant(QStringLiteral("Version 1.10.0 is available")));
        QCOMPARE(model.versionStatusColor(), QStringLiteral("orange"));
        QVERIFY(model.isUpdateAvailable());
        QCOMPARE(model.updateActionTitle(), QStringLiteral("Update"));

        changed.clear();
        store.updates().setIsDownloadingUpdate(true);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(model.installUpdateTitle(), QStringLiteral(u"Downloading\u2026"));
        QVERIFY(!model.canCheckForUpdates());
        QVERIFY(!model.canStartUpdateAction());

        store.updates().offerVersion(QStringLiteral("1.4.0"));
        QCOMPARE(model.versionStatusText(), QVariant(QStringLiteral(u"You\u2019re up to date")));
    }

    void theUpdateActionDownloadsThenOpens()
    {
        RoyaltiesStore &store = m_fixture->makeConnectedStore();
        store.updates().offerVersion(QStringLiteral("1.5.0"));
        UpdateViewModel model;
        model.setStore(&store);
        model.performUpdateAction();
        QVERIFY(store.isDownloadingUpdate());
        QTRY_VERIFY(!store.isDownloadingUpdate());
        QVERIFY(model.hasDownloadedUpdate());
        QCOMPARE(m_fixture->desktop.openedFiles.size(), 1);

        model.performUpdateAction();
        QTRY_COMPARE(m_fixture->desktop.openedFiles.size(), 2);
        QVERIFY(!store.isDownloadingUpdate());
    }

    void settingsFollowTheAccountsAndTheInterval()
    {
        RoyaltiesStore &store = m_fixture->makeConnectedStore();
        SettingsViewModel model;
        model.setStore(&store);
        QCOMPARE(model.accountRowForm(), QStringLiteral("none"));
        QCOMPARE(model.accountHint(), QVariant(QStringLiteral("Account details could not be loaded")));

        store.loadAccounts();
        QCOMPARE(model.accountRowForm(), QStringLiteral("loading"));
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(store.accounts().size() >= 2);
        QCOMPARE(model.accountRowForm(), QStringLiteral("picker"));
        QVERIFY(!model.accountHint().isValid());
        QCOMPARE(model.selectedAccountIndex(), 0);

        QCOMPARE(model.refreshIntervalIndex(), 0);
        QVERIFY(store.setProperty("refreshMinutes", 120));
        QCOMPARE(model.refreshIntervalIndex(), 2);
        QCOMPARE(SettingsViewModel::refreshIntervalChoices().at(2).toMap().value(QStringLiteral("text")),
                 QVariant(QStringLiteral("Every 2 hours")));

        QCOMPARE(model.startAutomaticallyHint(), PlatformTexts::launchAtLoginExplanation());
        store.login().setLaunchAtLoginRequiresApproval(true);
        QCOMPARE(model.startAutomaticallyHint(), PlatformTexts::loginApprovalRequired());
    }

    void settingsListenToTheAlertsOfTheirStoreOnly()
    {
        StoreFixture otherFixture;
        RoyaltiesStore &first = m_fixture->makeStore();
        RoyaltiesStore &second = otherFixture.makeStore();
        SettingsViewModel model;
        QSignalSpy changed(&model, &StoreViewModel::changed);
        model.setStore(&first);
        changed.clear();
        first.alerts().setNotificationSound(true);
        QVERIFY(!changed.isEmpty());

        // Given another store, the first one's choices are nothing to the view any more.
        model.setStore(&second);
        changed.clear();
        first.alerts().setNotificationSound(false);
        QVERIFY(changed.isEmpty());
        second.alerts().setNotificationSound(true);
        QVERIFY(!changed.isEmpty());

        model.setStore(nullptr);
        changed.clear();
        second.alerts().setNotificationSound(false);
        QVERIFY(changed.isEmpty());
    }

    void dashboardFollowsTheFiguresAndTheCooldown()
    {
        RoyaltiesStore &store = m_fixture->makeConnectedStore();
        DashboardViewModel model;
        model.setStore(&store);
        QSignalSpy changed(&model, &StoreViewModel::changed);
        QVERIFY(!model.periodCooldownCaption().isValid());
        QCOMPARE(model.displayedRoyaltyCaption(), QStringLiteral("GROSS ROYALTIES"));

        store.start();
        QCOMPARE(model.periodCooldownCaption(), QVariant(QStringLiteral("Period selection available in 3s")));
        QVERIFY(m_fixture->waitUntilIdle());
        // The accounts have chosen the first one meanwhile: its figures come after the cooldown.
        m_fixture->clock.advance(3s);
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(store.lastUpdated().has_value());
        QCOMPARE(model.highlightedRoyaltyText(), store.money(store.highlightedRoyalty(), false));
        QCOMPARE(model.highlightedRoyalty(), store.highlightedRoyalty());
        QCOMPARE(model.statusIndicatorColor(), QStringLiteral("green"));
        QVERIFY(changed.count() > 0);

        m_fixture->clock.advance(3s);
        QVERIFY(!model.periodCooldownCaption().isValid());
        m_fixture->reachability.report(false);
        QCOMPARE(model.statusIndicatorColor(), QStringLiteral("orange"));
    }

    void connectTitlesFollowTheFlows()
    {
        RoyaltiesStore &store = m_fixture->makeStore();
        ConnectViewModel model;
        model.setStore(&store);
        QCOMPARE(model.signInButtonTitle(), QStringLiteral("Sign in with Inkwarden"));
        QCOMPARE(model.connectButtonTitle(), QStringLiteral("Connect with API key"));
        QCOMPARE(model.versionLine(), QStringLiteral("Version 1.4.0"));
        store.beginBrowserAuthentication();
        QCOMPARE(model.signInButtonTitle(), QStringLiteral(u"Waiting for browser sign-in\u2026"));
        QVERIFY(store.setProperty("apiKey", QStringLiteral("key")));
        store.connect();
        QCOMPARE(model.connectButtonTitle(), QStringLiteral(u"Connecting\u2026"));
    }

private:
    std::unique_ptr<StoreFixture> m_fixture;
};

QTEST_MAIN(TestViewModels)
#include "tst_ui_viewmodels.moc"
