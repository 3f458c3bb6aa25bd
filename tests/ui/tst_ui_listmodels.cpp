// The views' list models, read as a view reads them: their rows and roles from the store, rows
// that change in place while their number stays (so delegates and focus are kept), and a reset when
// rows come or go. Qt's model tester checks each against the model rules as it changes.
#include "UiTest.h"
#include "store/ConnectionSession.h"
#include "store/StoreSettings.h"
#include "ui/AccountChoicesModel.h"
#include "ui/DisplayedRoyaltyChoicesModel.h"
#include "ui/FinancialRowsModel.h"
#include "ui/PeriodChoicesModel.h"
#include "ui/SalesBreakdownModel.h"
#include "ui/SalesMetricSettingsModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace {

RoyaltySummary summaryWith(double gross)
{
    RoyaltySummary summary;
    summary.gross = gross;
    summary.spending = 12.5;
    summary.net = gross - 12.5;
    summary.paidEbookUnits = 3;
    summary.paidEbookRoyalties = 9.75;
    return summary;
}

} // namespace

class TestListModels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<StoreFixture>();
        m_fixture->makeStore();
    }
    void cleanup() { m_fixture.reset(); }

    void financialRowsAreTheThreeMoneyFigures()
    {
        RoyaltiesStore &store = m_fixture->store();
        store.session().setSummary(summaryWith(100));
        FinancialRowsModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setStore(&store);
        QCOMPARE(model.count(), 3);
        QCOMPARE(model.roleNames().values().size(), 4);
        QCOMPARE(model.value(0, QStringLiteral("title")), QVariant(QStringLiteral("Gross royalties")));
        QCOMPARE(model.value(0, QStringLiteral("value")), QVariant(store.money(100, false)));
        QCOMPARE(model.value(1, QStringLiteral("title")), QVariant(QStringLiteral("Ad spend & expenses")));
        QCOMPARE(model.value(2, QStringLiteral("title")), QVariant(QStringLiteral("Net royalties")));
        QCOMPARE(model.value(2, QStringLiteral("value")), QVariant(store.money(87.5, false)));
        QCOMPARE(model.value(2, QStringLiteral("color")), QVariant(QStringLiteral("green")));

        // New figures change the rows in place.
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        store.session().setSummary(summaryWith(200));
        QCOMPARE(reset.size(), 0);
        QVERIFY(!changed.isEmpty());
        QCOMPARE(model.value(0, QStringLiteral("value")), QVariant(store.money(200, false)));
    }

    void salesBreakdownFollowsTheOrderAndCustomFormatsComeAndGo()
    {
        RoyaltiesStore &store = m_fixture->store();
        store.session().setSummary(summaryWith(100));
        SalesBreakdownModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setStore(&store);
        const int visible = int(store.visibleSalesMetrics().size());
        QCOMPARE(model.count(), visible);
        QCOMPARE(model.value(0, QStringLiteral("key")), QVariant(store.visibleSalesMetrics().first().rawValue()));
        QCOMPARE(model.value(0, QStringLiteral("showsDivider")), QVariant(false));
        QCOMPARE(model.value(1, QStringLiteral("showsDivider")), QVariant(true));

        QSignalSpy counted(&model, &StoreRowsModel::countChanged);
        RoyaltySummary withCustom = summaryWith(100);
        withCustom.customFormats.insert(QStringLiteral("Large print"), FormatSalesSummary{1, 4.5});
        store.session().setSummary(withCustom);
        QCOMPARE(counted.size(), 1);
        QCOMPARE(model.count(), visible + 1);
        QCOMPARE(model.value(visible, QStringLiteral("key")), QVariant(QStringLiteral("custom:Large print")));
        QCOMPARE(model.value(visible, QStringLiteral("isCustomFormat")), QVariant(true));
        QCOMPARE(model.value(visible, QStringLiteral("units")), QVariant(QStringLiteral("1 unit")));
        QCOMPARE(model.value(visible, QStringLiteral("royalties")), QVariant(store.money(4.5, false)));

        // A hidden format leaves the breakdown.
        store.setSalesMetricHidden(store.visibleSalesMetrics().first().rawValue(), true);
        QCOMPARE(model.count(), visible);
    }

    void metricSettingsMoveAndToggleInPlace()
    {
        RoyaltiesStore &store = m_fixture->store();
        SalesMetricSettingsModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setStore(&store);
        const QList<SalesBreakdownMetric> order = store.salesMetricOrder();
        QCOMPARE(model.count(), int(order.size()));
        QCOMPARE(model.value(0, QStringLiteral("canMoveUp")), QVariant(false));
        QCOMPARE(model.value(0, QStringLiteral("canMoveDown")), QVariant(true));
        QCOMPARE(model.value(int(order.size()) - 1, QStringLiteral("canMoveDown")), QVariant(false));
        QCOMPARE(model.value(0, QStringLiteral("moveDownTitle")),
                 QVariant(QStringLiteral("Move ") + order.first().title() + QStringLiteral(" down")));

        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        store.moveSalesMetric(order.first().rawValue(), 1);
        QCOMPARE(model.value(0, QStringLiteral("key")), QVariant(order.at(1).rawValue()));
        QCOMPARE(model.value(1, QStringLiteral("key")), QVariant(order.first().rawValue()));
        store.setSalesMetricHidden(order.first().rawValue(), true);
        QCOMPARE(model.value(1, QStringLiteral("isShown")), QVariant(false));
        // The rows stay where they are: a keyboard user's focus stays on the button just pressed.
        QCOMPARE(reset.size(), 0);
    }

    void accountChoicesNameEachAccount()
    {
        RoyaltiesStore &store = m_fixture->store();
        AccountChoicesModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setStore(&store);
        QCOMPARE(model.count(), 0);
        store.session().setAccounts({PublisherAccount{QStringLiteral("a1"), QStringLiteral("ann@example.com"),
                                                      QStringLiteral("Ann's Books"), QStringLiteral("owner")},
                                     PublisherAccount{QStringLiteral("b2"), QStringLiteral("bob@example.com"),
                                                      std::nullopt, QStringLiteral("viewer")}});
        QCOMPARE(model.count(), 2);
        QCOMPARE(model.value(0, QStringLiteral("accountID")), QVariant(QStringLiteral("a1")));
        QCOMPARE(model.value(0, QStringLiteral("text")), QVariant(QStringLiteral("Ann's Books")));
        // Without a display name, the e-mail address.
        QCOMPARE(model.value(1, QStringLiteral("text")), QVariant(QStringLiteral("bob@example.com")));
    }

    // The pickers show titles and hand back the stored values: a title may change without touching
    // what the settings keep.
    void periodChoicesShowTitlesAndHandBackStoredValues()
    {
        RoyaltiesStore &store = m_fixture->store();
        PeriodChoicesModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy titleChanged(&model, &PeriodChoicesModel::currentTitleChanged);
        model.setStore(&store);
        QCOMPARE(model.count(), 3);
        for (int row = 0; row < 3; ++row) {
            const RoyaltyPeriod period = RoyaltyPeriod::allCases().at(size_t(row));
            QCOMPARE(model.value(row, QStringLiteral("value")), QVariant(period.rawValue()));
            QCOMPARE(model.value(row, QStringLiteral("title")), QVariant(period.title()));
            QCOMPARE(model.value(row, QStringLiteral("isCurrent")), QVariant(period == store.selectedPeriod()));
        }
        QCOMPARE(model.currentTitle(), store.selectedPeriod().title());

        store.selectPeriod(RoyaltyPeriod(RoyaltyPeriod::thisMonth).rawValue());
        QCOMPARE(model.value(2, QStringLiteral("isCurrent")), QVariant(true));
        QCOMPARE(model.value(0, QStringLiteral("isCurrent")), QVariant(false));
        QCOMPARE(model.currentTitle(), QStringLiteral("This Month"));
        QVERIFY(titleChanged.size() >= 2);
    }

    void displayedRoyaltyChoicesFollowTheStore()
    {
        RoyaltiesStore &store = m_fixture->store();
        DisplayedRoyaltyChoicesModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setStore(&store);
        QCOMPARE(model.count(), 2);
        QCOMPARE(model.value(0, QStringLiteral("value")), QVariant(QStringLiteral("Gross royalties")));
        QCOMPARE(model.value(1, QStringLiteral("title")), QVariant(QStringLiteral("Net royalties")));
        QCOMPARE(model.value(0, QStringLiteral("isCurrent")), QVariant(true));
        store.settings().setDisplayedRoyalty(DisplayedRoyalty::net);
        QCOMPARE(model.value(1, QStringLiteral("isCurrent")), QVariant(true));
        QCOMPARE(model.value(0, QStringLiteral("isCurrent")), QVariant(false));
    }

private:
    std::unique_ptr<StoreFixture> m_fixture;
};

QTEST_MAIN(TestListModels)
#include "tst_ui_listmodels.moc"
