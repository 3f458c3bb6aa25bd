// The popover without a mouse: where the focus starts on each screen, Tab and Shift+Tab through every
// control in reading order with a ring drawn around each, the arrows in the pickers and the list of
// sales formats, Space and Enter, Escape, and whole changes made by key presses alone.
#include "UiTest.h"
#include "store/AppUpdates.h"
#include "store/ConnectionSession.h"
#include "store/RoyaltyAlerts.h"
#include "store/StoreSettings.h"
#include "store/StoreStatus.h"

#include <QImage>
#include <QSignalSpy>

#include <cmath>

using namespace std::chrono_literals;

namespace {

PublisherAccount account(const QString &id, const QString &email)
{
    return PublisherAccount{id, email, std::nullopt, QStringLiteral("owner")};
}

QStringList rawOrder(const RoyaltiesStore &store)
{
    QStringList order;
    for (const SalesBreakdownMetric metric : store.salesMetricOrder()) {
        order.append(metric.rawValue());
    }
    return order;
}

// The share of the points along the middle of a 2 px frame around `frame` (in the image's
// coordinates) that have the colour `colour`; the rounded corners are left out.
double shareOfFrameIn(const QImage &image, const QRectF &frame, qreal radius, const QColor &colour)
{
    QList<QPoint> points;
    const int top = int(std::floor(frame.top() + 1));
    const int bottom = int(std::ceil(frame.bottom() - 2));
    const int left = int(std::ceil(frame.left()));
    const int right = int(std::ceil(frame.right() - 2));
    for (int x = int(frame.left() + radius + 1); x < int(frame.right() - radius - 1); ++x) {
        points << QPoint(x, top) << QPoint(x, bottom);
    }
    for (int y = int(frame.top() + radius + 1); y < int(frame.bottom() - radius - 1); ++y) {
        points << QPoint(left, y) << QPoint(right, y);
    }
    if (points.isEmpty()) {
        return 0;
    }
    int matching = 0;
    for (const QPoint point : points) {
        if (!image.rect().contains(point)) {
            continue;
        }
        const QColor pixel = image.pixelColor(point);
        if (std::abs(pixel.red() - colour.red()) < 24 && std::abs(pixel.green() - colour.green()) < 24
            && std::abs(pixel.blue() - colour.blue()) < 24) {
            ++matching;
        }
    }
    return double(matching) / double(points.size());
}

} // namespace

class TestKeyboard : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startTest(); }
    void cleanup() { endTest(); }

    // Where the focus starts.
    void dashboardStartsOnTheSelectedPeriod();
    void connectViewStartsOnSignIn();
    void settingsStartOnBack();
    void eachScreenStartsOnItsFirstControlWhenItAppears();
    void reopenedPopoverStartsOnTheFirstControlAgain();

    // Tab, Shift+Tab and the rings.
    void dashboardTabsThroughEveryControlInReadingOrder();
    void connectViewTabsThroughEveryControlInReadingOrder();
    void settingsTabThroughEveryControlInReadingOrder();
    void noRingAfterAClickOrWhereTheFocusStarts();
    void aFocusedControlOutOfSightIsScrolledIntoView();

    // The pickers.
    void periodChangesWithTheArrowsAlone();
    void periodChangesWithSpaceAndEnter();
    void refreshKeepsItsRingThroughTheCooldown();
    void aClickEndsTheRingOfAControlGreyedOutWithTheFocus();

    // The list of sales formats.
    void upAndDownMoveBetweenTheFormats();
    void movedFormatKeepsTheFocus();
    void altUpAndAltDownMoveTheFocusedFormat();

    // Other keys.
    void enterPressesButtonsAndTogglesSwitches();
    void comboBoxesChangeWithTheArrowsAndEscapeClosesOnlyTheirList();
    void updatePromptTakesTheFocusAndEnterDownloads();
    void updatePromptKeepsTheFocusWhenThePopoverOpensAgain();
    void updatePromptShownAsTheDashboardAppearsGivesTheFocusToThePeriod();
    void aControlGreyedOutWithTheFocusPassesItOn();
    void connectKeepsTheFocusWhileItConnects();
    void theBannersUpdateKeepsTheFocusWhileItDownloads();

    // Whole changes.
    void settingsChangedByKeysAlone();

private:
    QQuickItem *focused() const { return view->window()->activeFocusItem(); }
    // The focused control's object name, after its format row's ("metricSetting2/moveUpButton").
    QString focusedName() const { return describe(focused()); }
    // Closes the popover's window and opens it again, active, as the panel item does.
    bool reopen()
    {
        view->window()->hide();
        view->settle();
        view->window()->show();
        view->window()->requestActivate();
        const bool active = QTest::qWaitForWindowActive(view->window());
        view->settle();
        return active;
    }
    static QString describe(const QQuickItem *item)
    {
        if (!item) {
            return QStringLiteral("(none)");
        }
        for (const QQuickItem *ancestor = item->parentItem(); ancestor; ancestor = ancestor->parentItem()) {
            if (ancestor->objectName().startsWith(u"metricSetting")) {
                return ancestor->objectName() + u'/' + item->objectName();
            }
        }
        return item->objectName();
    }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(view->window(), Qt::Key(key), modifiers);
        view->settle();
    }
    // Whether the update prompt shows (waiting for it a while) with the focus on its Download.
    bool updatePromptHasTheFocus()
    {
        if (!QTest::qWaitFor([this] { return shown(QStringLiteral("updatePromptDownload")); })) {
            return false;
        }
        view->settle();
        return focusedName() == u"updatePromptDownload";
    }
    // Presses Tab until the control named so has the focus; false after `limit` presses.
    bool tabTo(const QString &name, int limit = 60)
    {
        for (int i = 0; i < limit && focusedName() != name; ++i) {
            press(Qt::Key_Tab);
        }
        return focusedName() == name;
    }
    static QQuickItem *ringOf(const QQuickItem *control)
    {
        if (!control) {
            return nullptr;
        }
        for (QQuickItem *child : control->childItems()) {
            if (child->objectName() == u"focusRing") {
                return child;
            }
        }
        return nullptr;
    }
    // Empty when the focused control shows its ring, drawn in the window; else what is wrong.
    QString ringProblem() const;
    // Tabs (or Shift+Tabs) from the focused control until it has the focus again, checking the ring
    // of each control on the way; the names of the controls in the order they took the focus.
    QStringList cycle(int key, QStringList &problems);
    void checkCycle(const QStringList &expected);
    RoyaltiesStore &settingsStore();
};

QString TestKeyboard::ringProblem() const
{
    QQuickItem *control = focused();
    QQuickItem *ring = ringOf(control);
    if (!ring) {
        return describe(control) + QStringLiteral(": no focus ring");
    }
    if (!ring->isVisible() || ring->opacity() < 1) {
        return describe(control) + QStringLiteral(": ring not shown");
    }
    const QColor colour = ring->property("border").value<QObject *>()->property("color").value<QColor>();
    const QRectF frame = ring->mapRectToScene(QRectF(0, 0, ring->width(), ring->height()));
    const qreal radius = ring->property("radius").toReal();
    const double drawn = shareOfFrameIn(view->window()->grabWindow(), frame, radius, colour);
    ring->setOpacity(0);
    const double without = shareOfFrameIn(view->window()->grabWindow(), frame, radius, colour);
    ring->setOpacity(1);
    if (drawn < 0.9 || without > 0.3) {
        return describe(control)
               + QStringLiteral(": ring drawn on %1% of its frame, %2% without it")
                     .arg(qRound(drawn * 100))
                     .arg(qRound(without * 100));
    }
    return {};
}

QStringList TestKeyboard::cycle(int key, QStringList &problems)
{
    const QQuickItem *start = focused();
    QStringList names;
    for (int i = 0; i < 80; ++i) {
        const QQuickItem *before = focused();
        press(key);
        QQuickItem *now = focused();
        names.append(describe(now));
        if (const QString problem = ringProblem(); !problem.isEmpty()) {
            problems.append(problem);
        }
        if (QQuickItem *left = ringOf(before); left && left != ringOf(now) && left->isVisible()) {
            problems.append(describe(before) + QStringLiteral(": ring still shown after the focus left"));
        }
        if (now == start) {
            break;
        }
    }
    return names;
}

// From the focused control, Tab goes through `expected` (ending where it started), and Shift+Tab
// goes the same way back; each control shows its ring as it has the focus.
void TestKeyboard::checkCycle(const QStringList &expected)
{
    QStringList problems;
    const QStringList forward = cycle(Qt::Key_Tab, problems);
    QCOMPARE(forward, expected);
    QStringList backward = cycle(Qt::Key_Backtab, problems);
    QStringList reversed(expected.crbegin(), expected.crend());
    // Backwards from the start: every control but the start in reverse, then the start.
    reversed.removeFirst();
    reversed.append(expected.last());
    QCOMPARE(backward, reversed);
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(u'\n')));
}

RoyaltiesStore &TestKeyboard::settingsStore()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.session().setAccounts(
        {account(QStringLiteral("a1"), QStringLiteral("a@x")), account(QStringLiteral("a2"), QStringLiteral("b@x"))});
    store.settings().setAccountID(QStringLiteral("a1"));
    store.status().setIsShowingSettings(true);
    return store;
}

void TestKeyboard::dashboardStartsOnTheSelectedPeriod()
{
    fixture->preferences().setString(QStringLiteral("selectedPeriod"), QStringLiteral("This Month"));
    fixture->makeConnectedStore();
    show();
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment2"));
    // Where the focus starts, no ring shows until the keyboard moves it, and nothing scrolls.
    QVERIFY(!ringOf(focused())->isVisible());
    QCOMPARE(
        item(QStringLiteral("dashboardScroll"))->property("contentItem").value<QQuickItem *>()->property("contentY"),
        0);
}

void TestKeyboard::connectViewStartsOnSignIn()
{
    fixture->makeStore();
    show();
    QCOMPARE(focusedName(), QStringLiteral("signInButton"));
    QVERIFY(!ringOf(focused())->isVisible());
}

void TestKeyboard::settingsStartOnBack()
{
    settingsStore();
    show();
    QCOMPARE(focusedName(), QStringLiteral("backButton"));
    QVERIFY(!ringOf(focused())->isVisible());
}

void TestKeyboard::eachScreenStartsOnItsFirstControlWhenItAppears()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    view->keyChord(QKeySequence(QStringLiteral("Ctrl+,")));
    QVERIFY(store.isShowingSettings());
    QCOMPARE(focusedName(), QStringLiteral("backButton"));
    press(Qt::Key_Tab);
    QCOMPARE(focusedName(), QStringLiteral("serverURLInput"));
    press(Qt::Key_Backtab);
    press(Qt::Key_Space);
    QVERIFY(!store.isShowingSettings());
    // The settings loaded the accounts: the period picker is greyed out for the cooldown, and takes
    // the focus as it ends.
    QVERIFY(fixture->waitUntilIdle());
    fixture->clock.advance(3s);
    view->settle();
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment0"));
    store.signOut();
    view->settle();
    QVERIFY(shown(QStringLiteral("connectView")));
    QCOMPARE(focusedName(), QStringLiteral("signInButton"));
}

void TestKeyboard::reopenedPopoverStartsOnTheFirstControlAgain()
{
    fixture->makeConnectedStore();
    show();
    QVERIFY(tabTo(QStringLiteral("openDashboardButton")));
    QVERIFY(reopen());
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment0"));
    QVERIFY(!ringOf(focused())->isVisible());
}

void TestKeyboard::dashboardTabsThroughEveryControlInReadingOrder()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    store.updates().setDownloadedUpdateURL(QUrl::fromLocalFile(fixture->cacheFolder() + u"/Inkwarden-1.5.0.deb"));
    show();
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment0"));
    checkCycle({QStringLiteral("periodPickerSegment1"), QStringLiteral("periodPickerSegment2"),
                QStringLiteral("updateActionButton"), QStringLiteral("revealUpdateButton"),
                QStringLiteral("refreshButton"), QStringLiteral("openDashboardButton"), QStringLiteral("quitButton"),
                QStringLiteral("settingsButton"), QStringLiteral("periodPickerSegment0")});
}

void TestKeyboard::connectViewTabsThroughEveryControlInReadingOrder()
{
    fixture->makeStore();
    show();
    checkCycle(
        {QStringLiteral("manualConnectionToggle"), QStringLiteral("quitButton"), QStringLiteral("signInButton")});
    // Unfolded, the form's fields and its button come between the toggle and Quit.
    QVERIFY(tabTo(QStringLiteral("manualConnectionToggle")));
    press(Qt::Key_Space);
    QVERIFY(shown(QStringLiteral("manualConnection")));
    QCOMPARE(focusedName(), QStringLiteral("manualConnectionToggle"));
    checkCycle({QStringLiteral("serverURLInput"), QStringLiteral("apiKeyInput"), QStringLiteral("connectButton"),
                QStringLiteral("quitButton"), QStringLiteral("signInButton"),
                QStringLiteral("manualConnectionToggle")});
}

void TestKeyboard::settingsTabThroughEveryControlInReadingOrder()
{
    settingsStore();
    show();
    QStringList expected{QStringLiteral("serverURLInput"),
                         QStringLiteral("apiKeyInput"),
                         QStringLiteral("accountPicker"),
                         QStringLiteral("displayedRoyaltyPickerSegment0"),
                         QStringLiteral("displayedRoyaltyPickerSegment1"),
                         QStringLiteral("refreshIntervalPicker")};
    for (int row = 0; row < 8; ++row) {
        const QString prefix = QStringLiteral("metricSetting%1/").arg(row);
        expected.append(prefix + u"metricToggle");
        // A button that cannot move its format is greyed out, and no stop.
        if (row > 0) {
            expected.append(prefix + u"moveUpButton");
        }
        if (row < 7) {
            expected.append(prefix + u"moveDownButton");
        }
    }
    expected << QStringLiteral("openAtLoginSwitch") << QStringLiteral("notifySwitch") << QStringLiteral("soundSwitch")
             << QStringLiteral("quietHoursSwitch") << QStringLiteral("hideAmountsSwitch")
             << QStringLiteral("checkForUpdatesButton") << QStringLiteral("saveSettingsButton")
             << QStringLiteral("signOutButton") << QStringLiteral("quitButton") << QStringLiteral("backButton");
    checkCycle(expected);
}

void TestKeyboard::noRingAfterAClickOrWhereTheFocusStarts()
{
    fixture->makeConnectedStore();
    show();
    QVERIFY(!ringOf(focused())->isVisible());
    QVERIFY(click(QStringLiteral("openDashboardButton")));
    QCOMPARE(focusedName(), QStringLiteral("openDashboardButton"));
    QVERIFY(!ringOf(focused())->isVisible());
    press(Qt::Key_Tab);
    QCOMPARE(focusedName(), QStringLiteral("quitButton"));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
}

void TestKeyboard::aFocusedControlOutOfSightIsScrolledIntoView()
{
    settingsStore();
    show();
    QQuickItem *scroll = item(QStringLiteral("settingsScroll"));
    QCOMPARE(scroll->property("contentItem").value<QQuickItem *>()->property("contentY").toReal(), 0);
    // Backwards from Back: Quit Inkwarden, at the foot of the page.
    press(Qt::Key_Backtab);
    QCOMPARE(focusedName(), QStringLiteral("quitButton"));
    const auto inSight = [scroll](QQuickItem *control) {
        const QRectF area = control->mapRectToItem(scroll, QRectF(0, 0, control->width(), control->height()));
        return area.top() >= 0 && area.bottom() <= scroll->height();
    };
    QVERIFY(inSight(focused()));
    QVERIFY(scroll->property("contentItem").value<QQuickItem *>()->property("contentY").toReal() > 0);
    // And forwards again from the top: the server field comes back into sight.
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    QCOMPARE(focusedName(), QStringLiteral("serverURLInput"));
    QVERIFY(inSight(focused()));
    QVERIFY(tabTo(QStringLiteral("metricSetting7/metricToggle")));
    QVERIFY(inSight(focused()));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
}

void TestKeyboard::periodChangesWithTheArrowsAlone()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment0"));
    // Left of the first segment there is nothing: nothing changes.
    press(Qt::Key_Left);
    QCOMPARE(store.selectedPeriod().rawValue(), QStringLiteral("Today"));
    QVERIFY(fixture->statisticsRequests().isEmpty());

    press(Qt::Key_Right);
    QCOMPARE(store.selectedPeriod().rawValue(), QStringLiteral("Yesterday"));
    QVERIFY(view->find(QStringLiteral("periodPickerSegment1"))->property("checked").toBool());
    QVERIFY(fixture->waitUntilIdle());
    view->settle();
    // Greyed out during the cooldown, the picker keeps the focus on the chosen segment (a screen
    // reader stays there), and the arrows choose nothing.
    QVERIFY(!enabled(QStringLiteral("periodPicker")));
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment1"));
    press(Qt::Key_Right);
    press(Qt::Key_Left);
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment1"));
    QCOMPARE(store.selectedPeriod().rawValue(), QStringLiteral("Yesterday"));
    fixture->clock.advance(3s);
    view->settle();
    QVERIFY(enabled(QStringLiteral("periodPicker")));
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment1"));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));

    press(Qt::Key_Right);
    QCOMPARE(store.selectedPeriod().rawValue(), QStringLiteral("This Month"));
    QVERIFY(fixture->waitUntilIdle());
    fixture->clock.advance(3s);
    view->settle();
    press(Qt::Key_Right);
    QCOMPARE(store.selectedPeriod().rawValue(), QStringLiteral("This Month"));
    press(Qt::Key_Left);
    QCOMPARE(store.selectedPeriod().rawValue(), QStringLiteral("Yesterday"));
    QVERIFY(fixture->waitUntilIdle());
    QCOMPARE(fixture->statisticsRequests().size(), 3);
    QCOMPARE(fixture->preferences().string(QStringLiteral("selectedPeriod")),
             std::optional(QStringLiteral("Yesterday")));
}

void TestKeyboard::periodChangesWithSpaceAndEnter()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment2"));
    QCOMPARE(store.selectedPeriod().rawValue(), QStringLiteral("Today"));
    press(Qt::Key_Return);
    QCOMPARE(store.selectedPeriod().rawValue(), QStringLiteral("This Month"));
    QVERIFY(fixture->waitUntilIdle());
    fixture->clock.advance(3s);
    view->settle();
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment2"));
    press(Qt::Key_Backtab);
    press(Qt::Key_Space);
    QCOMPARE(store.selectedPeriod().rawValue(), QStringLiteral("Yesterday"));
    QVERIFY(fixture->waitUntilIdle());
    fixture->clock.advance(3s);
    view->settle();

    // On the first segment, not the chosen one, Left has nowhere to go: the focus and the period stay.
    press(Qt::Key_Backtab);
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment0"));
    press(Qt::Key_Left);
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment0"));
    QCOMPARE(store.selectedPeriod().rawValue(), QStringLiteral("Yesterday"));
}

void TestKeyboard::refreshKeepsItsRingThroughTheCooldown()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    QVERIFY(tabTo(QStringLiteral("refreshButton")));
    press(Qt::Key_Space);
    QVERIFY(fixture->waitUntilIdle());
    QVERIFY(store.lastUpdated().has_value());
    view->settle();
    // Greyed out through the cooldown, it keeps the focus (a screen reader stays on it).
    QVERIFY(!view->find(QStringLiteral("refreshButton"))->property("available").toBool());
    QCOMPARE(focusedName(), QStringLiteral("refreshButton"));
    fixture->clock.advance(3s);
    view->settle();
    QCOMPARE(focusedName(), QStringLiteral("refreshButton"));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
    press(Qt::Key_Tab);
    QCOMPARE(focusedName(), QStringLiteral("openDashboardButton"));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
}

void TestKeyboard::aClickEndsTheRingOfAControlGreyedOutWithTheFocus()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();
    press(Qt::Key_Tab);
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment1"));
    press(Qt::Key_Space);
    QCOMPARE(store.selectedPeriod().rawValue(), QStringLiteral("Yesterday"));
    QVERIFY(fixture->waitUntilIdle());
    view->settle();
    // While the picker is greyed out, the pointer takes the focus elsewhere...
    QVERIFY(click(QStringLiteral("openDashboardButton")));
    fixture->clock.advance(3s);
    view->settle();
    QCOMPARE(focusedName(), QStringLiteral("openDashboardButton"));
    // ...and a click on the segment gives it the focus without a ring.
    QVERIFY(click(QStringLiteral("periodPickerSegment0")));
    QVERIFY(fixture->waitUntilIdle());
    fixture->clock.advance(3s);
    view->settle();
    QVERIFY(click(QStringLiteral("periodPickerSegment1")));
    QCOMPARE(store.selectedPeriod().rawValue(), QStringLiteral("Yesterday"));
    QVERIFY(fixture->waitUntilIdle());
    fixture->clock.advance(3s);
    view->settle();
    QCOMPARE(focusedName(), QStringLiteral("periodPickerSegment1"));
    QVERIFY(!ringOf(focused())->isVisible());
}

void TestKeyboard::upAndDownMoveBetweenTheFormats()
{
    settingsStore();
    show();
    QVERIFY(tabTo(QStringLiteral("metricSetting0/metricToggle")));
    press(Qt::Key_Up);
    QCOMPARE(focusedName(), QStringLiteral("metricSetting0/metricToggle"));
    press(Qt::Key_Down);
    QCOMPARE(focusedName(), QStringLiteral("metricSetting1/metricToggle"));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
    press(Qt::Key_Tab);
    QCOMPARE(focusedName(), QStringLiteral("metricSetting1/moveUpButton"));
    // The same control in the next row; the first row cannot move up, so its down button.
    press(Qt::Key_Down);
    QCOMPARE(focusedName(), QStringLiteral("metricSetting2/moveUpButton"));
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    QCOMPARE(focusedName(), QStringLiteral("metricSetting0/moveDownButton"));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
}

void TestKeyboard::movedFormatKeepsTheFocus()
{
    RoyaltiesStore &store = settingsStore();
    show();
    QVERIFY(tabTo(QStringLiteral("metricSetting0/moveDownButton")));
    press(Qt::Key_Space);
    QCOMPARE(rawOrder(store).mid(0, 2), (QStringList{QStringLiteral("paperbacks"), QStringLiteral("paidEbooks")}));
    QCOMPARE(focusedName(), QStringLiteral("metricSetting1/moveDownButton"));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
    for (int i = 0; i < 6; ++i) {
        press(Qt::Key_Space);
    }
    QCOMPARE(rawOrder(store).last(), QStringLiteral("paidEbooks"));
    // At the foot its down button is greyed out: the up button has the focus.
    QCOMPARE(focusedName(), QStringLiteral("metricSetting7/moveUpButton"));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
    press(Qt::Key_Return);
    QCOMPARE(rawOrder(store).at(6), QStringLiteral("paidEbooks"));
    QCOMPARE(focusedName(), QStringLiteral("metricSetting6/moveUpButton"));
    QCOMPARE(fixture->preferences().stringList(QStringLiteral("salesMetricOrder")).value_or(QStringList()),
             rawOrder(store));
}

void TestKeyboard::altUpAndAltDownMoveTheFocusedFormat()
{
    RoyaltiesStore &store = settingsStore();
    show();
    QVERIFY(tabTo(QStringLiteral("metricSetting0/metricToggle")));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    QCOMPARE(focusedName(), QStringLiteral("metricSetting2/metricToggle"));
    QCOMPARE(rawOrder(store).at(2), QStringLiteral("hardcovers"));
    press(Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(rawOrder(store).mid(0, 3),
             (QStringList{QStringLiteral("paidEbooks"), QStringLiteral("hardcovers"), QStringLiteral("paperbacks")}));
    QCOMPARE(focusedName(), QStringLiteral("metricSetting1/metricToggle"));
    press(Qt::Key_Up, Qt::AltModifier);
    press(Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(rawOrder(store).first(), QStringLiteral("hardcovers"));
    QCOMPARE(focusedName(), QStringLiteral("metricSetting0/metricToggle"));
    press(Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(rawOrder(store).mid(0, 2), (QStringList{QStringLiteral("paidEbooks"), QStringLiteral("hardcovers")}));
    QCOMPARE(focusedName(), QStringLiteral("metricSetting1/metricToggle"));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
    // Space hides the focused format and shows it again; the focus stays.
    press(Qt::Key_Space);
    QVERIFY(store.hiddenSalesMetrics().contains(SalesBreakdownMetric::hardcovers));
    press(Qt::Key_Space);
    QVERIFY(!store.hiddenSalesMetrics().contains(SalesBreakdownMetric::hardcovers));
    QCOMPARE(focusedName(), QStringLiteral("metricSetting1/metricToggle"));
}

void TestKeyboard::enterPressesButtonsAndTogglesSwitches()
{
    RoyaltiesStore &store = settingsStore();
    show();
    QVERIFY(tabTo(QStringLiteral("hideAmountsSwitch")));
    press(Qt::Key_Return);
    QVERIFY(store.hideAmounts());
    press(Qt::Key_Enter);
    QVERIFY(!store.hideAmounts());
    press(Qt::Key_Space);
    QVERIFY(store.hideAmounts());
    QVERIFY(tabTo(QStringLiteral("metricSetting3/metricToggle")));
    press(Qt::Key_Return);
    QVERIFY(store.hiddenSalesMetrics().contains(SalesBreakdownMetric::audiobooks));
    QVERIFY(
        !item(QStringLiteral("metricToggle"), item(QStringLiteral("metricSetting3")))->property("checked").toBool());
    // Enter in a text field presses nothing.
    QVERIFY(tabTo(QStringLiteral("serverURLInput")));
    press(Qt::Key_Return);
    QVERIFY(store.isShowingSettings());
    press(Qt::Key_Backtab);
    press(Qt::Key_Return);
    QVERIFY(!store.isShowingSettings());
}

void TestKeyboard::comboBoxesChangeWithTheArrowsAndEscapeClosesOnlyTheirList()
{
    RoyaltiesStore &store = settingsStore();
    store.settings().setRefreshMinutes(30);
    show();
    QObject *content = view->item(QStringLiteral("content"))->childItems().first();
    QSignalSpy close(content, SIGNAL(closeRequested()));
    QVERIFY(tabTo(QStringLiteral("refreshIntervalPicker")));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
    press(Qt::Key_Down);
    QCOMPARE(store.refreshMinutes(), 60);
    press(Qt::Key_Space);
    QObject *popup = item(QStringLiteral("refreshIntervalPicker"))->property("popup").value<QObject *>();
    QTRY_VERIFY(popup->property("opened").toBool());
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    QTRY_VERIFY(!popup->property("visible").toBool());
    QCOMPARE(store.refreshMinutes(), 120);
    press(Qt::Key_Space);
    QTRY_VERIFY(popup->property("opened").toBool());
    press(Qt::Key_Escape);
    QTRY_VERIFY(!popup->property("visible").toBool());
    QCOMPARE(close.size(), 0);
    QCOMPARE(store.refreshMinutes(), 120);
    QCOMPARE(focusedName(), QStringLiteral("refreshIntervalPicker"));
    // With the list closed, Escape closes the popover.
    press(Qt::Key_Escape);
    QCOMPARE(close.size(), 1);
    QVERIFY(tabTo(QStringLiteral("accountPicker")));
    press(Qt::Key_Down);
    QCOMPARE(store.accountID(), QStringLiteral("a2"));
}

void TestKeyboard::updatePromptTakesTheFocusAndEnterDownloads()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    show();
    QObject *content = view->item(QStringLiteral("content"))->childItems().first();
    QSignalSpy close(content, SIGNAL(closeRequested()));
    store.updates().setIsShowingUpdatePrompt(true);
    QVERIFY(updatePromptHasTheFocus());
    press(Qt::Key_Backtab);
    QCOMPARE(focusedName(), QStringLiteral("updatePromptLater"));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
    press(Qt::Key_Tab);
    QCOMPARE(focusedName(), QStringLiteral("updatePromptDownload"));
    // Escape dismisses the prompt, not the popover.
    press(Qt::Key_Escape);
    QTRY_VERIFY(!store.isShowingUpdatePrompt());
    QCOMPARE(close.size(), 0);
    QVERIFY(!store.isDownloadingUpdate());
    // The focus is back where it was.
    QTRY_COMPARE(focusedName(), QStringLiteral("periodPickerSegment0"));
    store.updates().setIsShowingUpdatePrompt(true);
    QVERIFY(updatePromptHasTheFocus());
    press(Qt::Key_Return);
    QTRY_VERIFY(!store.isShowingUpdatePrompt());
    QTRY_COMPARE(fixture->desktop.openedFiles.size(), 1);
}

void TestKeyboard::updatePromptKeepsTheFocusWhenThePopoverOpensAgain()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    store.updates().setIsShowingUpdatePrompt(true);
    show();
    QVERIFY(updatePromptHasTheFocus());
    QVERIFY(reopen());
    QCOMPARE(focusedName(), QStringLiteral("updatePromptDownload"));
    // Dismissed, it gives the focus to the screen's first control.
    press(Qt::Key_Escape);
    QTRY_VERIFY(!store.isShowingUpdatePrompt());
    QTRY_COMPARE(focusedName(), QStringLiteral("periodPickerSegment0"));
}

void TestKeyboard::updatePromptShownAsTheDashboardAppearsGivesTheFocusToThePeriod()
{
    // Signed in from the connect screen, the dashboard appears with the prompt over it.
    RoyaltiesStore &store = fixture->makeStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    show();
    QCOMPARE(focusedName(), QStringLiteral("signInButton"));
    store.session().setIsConnected(true);
    store.updates().setIsShowingUpdatePrompt(true);
    QVERIFY(updatePromptHasTheFocus());
    press(Qt::Key_Escape);
    QTRY_VERIFY(!store.isShowingUpdatePrompt());
    QTRY_COMPARE(focusedName(), QStringLiteral("periodPickerSegment0"));
}

void TestKeyboard::aControlGreyedOutWithTheFocusPassesItOn()
{
    RoyaltiesStore &store = fixture->makeStore();
    show();
    QCOMPARE(focusedName(), QStringLiteral("signInButton"));
    // Connecting greys out the sign-in: the focus goes on to the manual connection, not to the
    // popover itself.
    store.session().setIsLoading(true);
    view->settle();
    QVERIFY(!enabled(QStringLiteral("signInButton")));
    QTRY_COMPARE(focusedName(), QStringLiteral("manualConnectionToggle"));
    press(Qt::Key_Space);
    QVERIFY(shown(QStringLiteral("serverURLInput")));
    // The screen appearing while connecting starts there too.
    QVERIFY(reopen());
    QCOMPARE(focusedName(), QStringLiteral("manualConnectionToggle"));
}

void TestKeyboard::connectKeepsTheFocusWhileItConnects()
{
    RoyaltiesStore &store = fixture->makeStore();
    show();
    QVERIFY(click(QStringLiteral("manualConnectionToggle")));
    QVERIFY(tabTo(QStringLiteral("connectButton")));
    // Greyed out while it connects, it keeps the focus (a screen reader stays on it), and a press
    // does nothing more.
    store.session().setIsLoading(true);
    view->settle();
    QVERIFY(!enabled(QStringLiteral("connectButton")));
    QTest::qWait(50);
    QCOMPARE(focusedName(), QStringLiteral("connectButton"));
    // (Pressed, it would find no API key typed, and say so.)
    press(Qt::Key_Return);
    press(Qt::Key_Space);
    view->settle();
    QCOMPARE(store.errorMessage(), std::nullopt);
    store.session().setIsLoading(false);
    view->settle();
    QCOMPARE(focusedName(), QStringLiteral("connectButton"));
}

void TestKeyboard::theBannersUpdateKeepsTheFocusWhileItDownloads()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    show();
    QVERIFY(tabTo(QStringLiteral("updateActionButton")));
    // Greyed out while the update downloads, the link keeps the focus, and a press does nothing
    // (pressed, it would open the installer an earlier download left).
    store.updates().setDownloadedUpdateURL(QUrl::fromLocalFile(fixture->cacheFolder() + u"/Inkwarden-1.4.9.deb"));
    store.updates().setIsDownloadingUpdate(true);
    view->settle();
    QVERIFY(!enabled(QStringLiteral("updateActionButton")));
    QTest::qWait(50);
    QCOMPARE(focusedName(), QStringLiteral("updateActionButton"));
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    view->settle();
    QVERIFY(!store.isShowingUpdatePrompt());
    QCOMPARE(fixture->desktop.openedFiles.size(), 0);
    store.updates().setIsDownloadingUpdate(false);
    view->settle();
    QCOMPARE(focusedName(), QStringLiteral("updateActionButton"));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
}

void TestKeyboard::settingsChangedByKeysAlone()
{
    RoyaltiesStore &store = fixture->makeConnectedStore();
    show();

    // Tab and Space on the gear open the settings.
    QVERIFY(tabTo(QStringLiteral("settingsButton")));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
    press(Qt::Key_Space);
    QVERIFY(store.isShowingSettings());
    QCOMPARE(focusedName(), QStringLiteral("backButton"));

    // The other account, with the arrows (the settings have loaded the server's).
    QVERIFY(fixture->waitUntilIdle());
    view->settle();
    QVERIFY(tabTo(QStringLiteral("accountPicker")));
    QQuickItem *accounts = item(QStringLiteral("accountPicker"));
    QVERIFY(accounts->property("count").toInt() >= 2);
    QCOMPARE(accounts->property("currentIndex").toInt(), 0);
    press(Qt::Key_Down);
    QCOMPARE(accounts->property("currentIndex").toInt(), 1);
    const QString chosenAccount = accounts->property("currentValue").toString();
    QVERIFY(!chosenAccount.isEmpty());
    QCOMPARE(store.accountID(), chosenAccount);

    // Net royalties in the menu bar, with the arrows.
    press(Qt::Key_Tab);
    QCOMPARE(focusedName(), QStringLiteral("displayedRoyaltyPickerSegment0"));
    press(Qt::Key_Right);
    QCOMPARE(store.displayedRoyalty().rawValue(), QStringLiteral("Net royalties"));
    QCOMPARE(focusedName(), QStringLiteral("displayedRoyaltyPickerSegment1"));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));

    // Paid ebooks hidden, then paperbacks moved below hardcovers.
    QVERIFY(tabTo(QStringLiteral("metricSetting0/metricToggle")));
    press(Qt::Key_Space);
    QVERIFY(store.hiddenSalesMetrics().contains(SalesBreakdownMetric::paidEbooks));
    press(Qt::Key_Down);
    QCOMPARE(focusedName(), QStringLiteral("metricSetting1/metricToggle"));
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    QCOMPARE(focusedName(), QStringLiteral("metricSetting1/moveDownButton"));
    press(Qt::Key_Space);
    QCOMPARE(rawOrder(store).mid(0, 3),
             (QStringList{QStringLiteral("paidEbooks"), QStringLiteral("hardcovers"), QStringLiteral("paperbacks")}));
    QCOMPARE(focusedName(), QStringLiteral("metricSetting2/moveDownButton"));

    // Quiet hours on, then amounts hidden.
    QVERIFY(tabTo(QStringLiteral("quietHoursSwitch")));
    press(Qt::Key_Space);
    QVERIFY(store.alerts().quietHoursEnabled());
    press(Qt::Key_Tab);
    QCOMPARE(focusedName(), QStringLiteral("quietHoursStartPicker"));
    QVERIFY(tabTo(QStringLiteral("hideAmountsSwitch")));
    press(Qt::Key_Space);
    QVERIFY(store.hideAmounts());

    // Saved with Enter.
    QVERIFY(tabTo(QStringLiteral("saveSettingsButton")));
    QVERIFY2(ringProblem().isEmpty(), qPrintable(ringProblem()));
    press(Qt::Key_Return);
    QVERIFY(fixture->waitUntilIdle());
    QTRY_VERIFY(!store.isLoading());
    QCOMPARE(fixture->secrets.saves, 1);

    QCOMPARE(store.accountID(), chosenAccount);
    QCOMPARE(store.displayedRoyalty().rawValue(), QStringLiteral("Net royalties"));
    QCOMPARE(store.hiddenSalesMetrics(), QSet<SalesBreakdownMetric>{SalesBreakdownMetric::paidEbooks});
    QCOMPARE(rawOrder(store).mid(0, 3),
             (QStringList{QStringLiteral("paidEbooks"), QStringLiteral("hardcovers"), QStringLiteral("paperbacks")}));
    QVERIFY(store.alerts().quietHoursEnabled());
    QVERIFY(store.hideAmounts());
    QCOMPARE(fixture->preferences().string(QStringLiteral("displayedRoyalty")),
             std::optional(QStringLiteral("Net royalties")));
    QCOMPARE(fixture->preferences().boolean(QStringLiteral("hideAmounts")), std::optional(true));
}

QTEST_MAIN(TestKeyboard)
#include "tst_ui_keyboard.moc"
