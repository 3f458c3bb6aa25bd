#include "store/OpenAtLogin.h"
#include "store/StoreStatus.h"
#include "support/StoreFixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;
using Status = LoginItemService::Status;

class TestStoreLogin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<StoreFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void statusMapsToTheTwoFlags_data();
    void statusMapsToTheTwoFlags();
    void enablingRegistersAndLooksAgainASecondLater();
    void enablingWhenAlreadyEnabledOrAwaitingApprovalDoesNotRegister_data();
    void enablingWhenAlreadyEnabledOrAwaitingApprovalDoesNotRegister();
    void enablingThatEndsAwaitingApprovalShowsNoError();
    void quietRefusalShowsTheMessageASecondLater();
    void failedRegistrationShowsTheReasonWithoutASecondLook();
    void disablingUnregistersAndClearsBothFlags();
    void disablingWhenNotRegisteredOrNotFoundDoesNotUnregister_data();
    void disablingWhenNotRegisteredOrNotFoundDoesNotUnregister();
    void failedUnregistrationShowsTheReasonAndTheRealState();
    void settingClearsAnEarlierError();
    void secondLookDoesNothingOnceTheStoreIsGone();
    void loginItemsSettingsOpenThroughTheDesktop();

private:
    std::unique_ptr<StoreFixture> m_fixture;
};

void TestStoreLogin::statusMapsToTheTwoFlags_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("opens");
    QTest::addColumn<bool>("approval");
    QTest::newRow("not registered") << int(Status::notRegistered) << false << false;
    QTest::newRow("enabled") << int(Status::enabled) << true << false;
    QTest::newRow("requires approval") << int(Status::requiresApproval) << false << true;
    QTest::newRow("not found") << int(Status::notFound) << false << false;
}

void TestStoreLogin::statusMapsToTheTwoFlags()
{
    QFETCH(int, status);
    m_fixture->loginItems.currentStatus = Status(status);
    RoyaltiesStore &store = m_fixture->makeStore();
    QTEST(store.opensAtLogin(), "opens");
    QTEST(store.launchAtLoginRequiresApproval(), "approval");
}

void TestStoreLogin::enablingRegistersAndLooksAgainASecondLater()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.setOpensAtLogin(true);
    QCOMPARE(m_fixture->loginItems.registrations, 1);
    QVERIFY(store.opensAtLogin());
    // Turned off behind Inkwarden's back within the second: the second look shows it.
    m_fixture->loginItems.currentStatus = Status::requiresApproval;
    m_fixture->clock.advance(999ms);
    QVERIFY(store.opensAtLogin());
    m_fixture->clock.advance(1ms);
    QVERIFY(!store.opensAtLogin());
    QVERIFY(store.launchAtLoginRequiresApproval());
    QVERIFY(!store.errorMessage().has_value());
}

void TestStoreLogin::enablingWhenAlreadyEnabledOrAwaitingApprovalDoesNotRegister_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("enabled") << int(Status::enabled);
    QTest::newRow("requires approval") << int(Status::requiresApproval);
}

void TestStoreLogin::enablingWhenAlreadyEnabledOrAwaitingApprovalDoesNotRegister()
{
    QFETCH(int, status);
    m_fixture->loginItems.currentStatus = Status(status);
    RoyaltiesStore &store = m_fixture->makeStore();
    store.setOpensAtLogin(true);
    m_fixture->clock.advance(1s);
    QCOMPARE(m_fixture->loginItems.registrations, 0);
    QVERIFY(!store.errorMessage().has_value());
}

void TestStoreLogin::enablingThatEndsAwaitingApprovalShowsNoError()
{
    m_fixture->loginItems.statusAfterRegister = Status::requiresApproval;
    RoyaltiesStore &store = m_fixture->makeStore();
    store.setOpensAtLogin(true);
    m_fixture->clock.advance(1s);
    QCOMPARE(m_fixture->loginItems.registrations, 1);
    QVERIFY(!store.opensAtLogin());
    QVERIFY(store.launchAtLoginRequiresApproval());
    QVERIFY(!store.errorMessage().has_value());
}

void TestStoreLogin::quietRefusalShowsTheMessageASecondLater()
{
    m_fixture->loginItems.statusAfterRegister = Status::notRegistered;
    RoyaltiesStore &store = m_fixture->makeStore();
    store.setOpensAtLogin(true);
    QVERIFY(!store.errorMessage().has_value());
    m_fixture->clock.advance(1s);
    QCOMPARE(store.errorMessage(),
             std::optional<QString>(QStringLiteral("The system could not enable Open at Login. Make sure Inkwarden is "
                                                   "installed, then enable it in your system's autostart settings.")));
    QVERIFY(!store.opensAtLogin());
}

void TestStoreLogin::failedRegistrationShowsTheReasonWithoutASecondLook()
{
    m_fixture->loginItems.registerFailure = QStringLiteral("The folder /home/u/.config/autostart is not writable");
    RoyaltiesStore &store = m_fixture->makeStore();
    store.setOpensAtLogin(true);
    const QString expected = QStringLiteral("Could not update Open at Login: The folder /home/u/.config/autostart is "
                                            "not writable. Make sure Inkwarden is installed, then try again.");
    QCOMPARE(store.errorMessage(), std::optional<QString>(expected));
    QVERIFY(!store.opensAtLogin());
    QCOMPARE(m_fixture->clock.activeTimerCount(), 0);
    m_fixture->clock.advance(2s);
    QCOMPARE(store.errorMessage(), std::optional<QString>(expected));
}

void TestStoreLogin::disablingUnregistersAndClearsBothFlags()
{
    m_fixture->loginItems.currentStatus = Status::enabled;
    RoyaltiesStore &store = m_fixture->makeStore();
    QVERIFY(store.opensAtLogin());
    store.setOpensAtLogin(false);
    QCOMPARE(m_fixture->loginItems.unregistrations, 1);
    QVERIFY(!store.opensAtLogin());
    QVERIFY(!store.launchAtLoginRequiresApproval());
    m_fixture->clock.advance(1s);
    QVERIFY(!store.errorMessage().has_value());
}

void TestStoreLogin::disablingWhenNotRegisteredOrNotFoundDoesNotUnregister_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("not registered") << int(Status::notRegistered);
    QTest::newRow("not found") << int(Status::notFound);
}

void TestStoreLogin::disablingWhenNotRegisteredOrNotFoundDoesNotUnregister()
{
    QFETCH(int, status);
    m_fixture->loginItems.currentStatus = Status(status);
    RoyaltiesStore &store = m_fixture->makeStore();
    store.login().setLaunchAtLoginRequiresApproval(true);
    store.setOpensAtLogin(false);
    QCOMPARE(m_fixture->loginItems.unregistrations, 0);
    QVERIFY(!store.opensAtLogin());
    QVERIFY(!store.launchAtLoginRequiresApproval());
}

void TestStoreLogin::failedUnregistrationShowsTheReasonAndTheRealState()
{
    m_fixture->loginItems.currentStatus = Status::enabled;
    m_fixture->loginItems.unregisterFailure = QStringLiteral("Permission denied");
    RoyaltiesStore &store = m_fixture->makeStore();
    store.setOpensAtLogin(false);
    QCOMPARE(store.errorMessage(), std::optional<QString>(QStringLiteral(
                                       "Could not update Open at Login: Permission denied. Make sure Inkwarden is "
                                       "installed, then try again.")));
    QVERIFY(store.opensAtLogin());
}

void TestStoreLogin::settingClearsAnEarlierError()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.status().setErrorMessage(QStringLiteral("old"));
    store.setOpensAtLogin(true);
    QVERIFY(!store.errorMessage().has_value());
}

void TestStoreLogin::secondLookDoesNothingOnceTheStoreIsGone()
{
    m_fixture->loginItems.statusAfterRegister = Status::notRegistered;
    m_fixture->makeStore().setOpensAtLogin(true);
    m_fixture->destroyStore();
    QCOMPARE(m_fixture->clock.activeTimerCount(), 0);
    m_fixture->clock.advance(2s);
}

void TestStoreLogin::loginItemsSettingsOpenThroughTheDesktop()
{
    m_fixture->makeStore().openLoginItemsSettings();
    QCOMPARE(m_fixture->desktop.loginItemsSettingsOpened, 1);
}

QTEST_GUILESS_MAIN(TestStoreLogin)
#include "tst_storelogin.moc"
