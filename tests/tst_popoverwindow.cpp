// The popover's window over its life: not made before the first opening, kept while closed for a
// moment so that reopening is instant, given up once it has stayed closed for the release delay,
// and made anew on the next opening. Offscreen, with the software renderer Inkwarden uses.
#include "shell/PopoverWindow.h"
#include "support/StoreFixture.h"

#include <QPointer>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSGRendererInterface>
#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

class TestPopoverWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<StoreFixture>();
        m_fixture->makeStore();
    }
    void cleanup() { m_fixture.reset(); }

    void nothingOfTheViewsIsMadeBeforeTheFirstOpening()
    {
        PopoverWindow popover(m_fixture->store(), nullptr, 200ms);
        QCOMPARE(popover.view(), nullptr);
        QVERIFY(!popover.isShown());
        popover.show(QPoint(100, 10));
        QVERIFY(popover.view());
        QVERIFY(popover.isShown());
        QVERIFY(QTest::qWaitForWindowExposed(popover.view()));
        QCOMPARE(popover.view()->size(), QSize(PopoverWindow::width, PopoverWindow::height));
        QVERIFY(popover.view()->rootObject());
    }

    void itDrawsWithTheSoftwareRenderer()
    {
        PopoverWindow popover(m_fixture->store(), nullptr, 200ms);
        popover.show(std::nullopt);
        QVERIFY(QTest::qWaitForWindowExposed(popover.view()));
        QTRY_VERIFY(popover.view()->rendererInterface());
        QCOMPARE(popover.view()->rendererInterface()->graphicsApi(), QSGRendererInterface::Software);
    }

    void reopeningWithinTheDelayKeepsTheSameWindow()
    {
        PopoverWindow popover(m_fixture->store(), nullptr, 400ms);
        QSignalSpy released(&popover, &PopoverWindow::viewReleased);
        popover.show(std::nullopt);
        QPointer<QQuickView> first = popover.view();
        popover.close();
        QVERIFY(!popover.isShown());
        QTest::qWait(150);
        popover.show(std::nullopt);
        QCOMPARE(popover.view(), first.data());
        popover.close();
        // The delay starts again at each close.
        QTest::qWait(250);
        QVERIFY(first);
        QCOMPARE(released.size(), 0);
    }

    void aPopoverClosedForTheDelayGivesUpItsWindowAndMakesItAgain()
    {
        PopoverWindow popover(m_fixture->store(), nullptr, 100ms);
        QSignalSpy released(&popover, &PopoverWindow::viewReleased);
        popover.show(std::nullopt);
        QPointer<QQuickView> first = popover.view();
        QPointer<QQmlEngine> engine = first->engine();
        popover.close();
        QVERIFY(released.wait(5000));
        QCOMPARE(popover.view(), nullptr);
        QVERIFY(!first);
        QVERIFY(!engine);

        popover.show(std::nullopt);
        QVERIFY(popover.view());
        QVERIFY(QTest::qWaitForWindowExposed(popover.view()));
        QVERIFY(popover.view()->rootObject());
        QVERIFY(popover.isShown());
    }

    void anOpenPopoverIsNeverReleased()
    {
        PopoverWindow popover(m_fixture->store(), nullptr, 50ms);
        QSignalSpy released(&popover, &PopoverWindow::viewReleased);
        popover.show(std::nullopt);
        QTest::qWait(300);
        QCOMPARE(released.size(), 0);
        QVERIFY(popover.isShown());
    }

private:
    std::unique_ptr<StoreFixture> m_fixture;
};

QTEST_MAIN(TestPopoverWindow)
#include "tst_popoverwindow.moc"
