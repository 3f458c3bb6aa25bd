// A popover that nobody sees must not tick: in every state that turns a spinner (waiting for the
// browser, loading figures, loading accounts, downloading an update), hiding the window stops every
// animation and timer of the views, and showing it again starts them where they belong.
#include "UiTest.h"
#include "store/AppUpdates.h"
#include "store/BrowserSignIn.h"
#include "store/ConnectionSession.h"
#include "store/StoreStatus.h"

#include <QElapsedTimer>

namespace {

// Counts what wakes the main thread on behalf of the views: timer events and frame requests.
class WakeUpCounter : public QObject
{
public:
    WakeUpCounter() { QCoreApplication::instance()->installEventFilter(this); }
    ~WakeUpCounter() override { QCoreApplication::instance()->removeEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Timer || event->type() == QEvent::UpdateRequest) {
            ++count;
        }
        return QObject::eventFilter(watched, event);
    }
};

// The wake-ups within `milliseconds` of real time: what a person's machine would see meanwhile.
int wakeUpsDuring(int milliseconds)
{
    WakeUpCounter counter;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QTest::qSleep(5);
    }
    return counter.count;
}

} // namespace

class TestHiddenPopover : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startTest(); }
    void cleanup() { endTest(); }

    void aHiddenPopoverDoesNotTick_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QString>("spinner");
        QTest::newRow("waiting for the browser")
            << QStringLiteral("authenticating") << QStringLiteral("signInButtonSpinner");
        QTest::newRow("loading figures") << QStringLiteral("loading") << QStringLiteral("loadingIndicator");
        QTest::newRow("loading accounts") << QStringLiteral("loadingAccounts") << QStringLiteral("accountLoading");
        // The update banner shows its progress in words: nothing turns, and nothing may tick.
        QTest::newRow("downloading an update") << QStringLiteral("downloading") << QString();
    }

    void aHiddenPopoverDoesNotTick()
    {
        QFETCH(QString, state);
        QFETCH(QString, spinner);
        if (state == QLatin1String("authenticating")) {
            fixture->makeStore().signIn().setIsAuthenticating(true);
        } else {
            RoyaltiesStore &store = fixture->makeConnectedStore();
            if (state == QLatin1String("loading")) {
                store.session().setIsLoading(true);
            } else if (state == QLatin1String("loadingAccounts")) {
                store.status().setIsShowingSettings(true);
                store.session().setIsLoadingAccounts(true);
            } else {
                store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
                store.updates().setIsDownloadingUpdate(true);
            }
        }
        show();
        if (!spinner.isEmpty()) {
            QVERIFY2(shown(spinner), qPrintable(spinner));
            // Shown, the spinner turns: the counter sees it.
            QVERIFY(wakeUpsDuring(300) > 0);
        }

        view->window()->hide();
        // The animation timer may still fire the tick it had queued; after that, nothing.
        wakeUpsDuring(100);
        QCOMPARE(wakeUpsDuring(600), 0);

        if (!spinner.isEmpty()) {
            view->window()->show();
            QVERIFY(QTest::qWaitForWindowExposed(view->window()));
            QVERIFY(wakeUpsDuring(300) > 0);
        }
    }
};

QTEST_MAIN(TestHiddenPopover)
#include "tst_ui_hiddenpopover.moc"
