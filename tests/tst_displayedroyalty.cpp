#include "model/DisplayedRoyalty.h"

#include <QSet>
#include <QTest>

class TestDisplayedRoyalty : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rawValuesAreTheLabels()
    {
        QCOMPARE(DisplayedRoyalty(DisplayedRoyalty::gross).rawValue(), QStringLiteral("Gross royalties"));
        QCOMPARE(DisplayedRoyalty(DisplayedRoyalty::net).rawValue(), QStringLiteral("Net royalties"));
        QCOMPARE(DisplayedRoyalty(DisplayedRoyalty::net).id(), QStringLiteral("Net royalties"));
    }

    void allCasesAreGrossThenNet()
    {
        constexpr auto cases = DisplayedRoyalty::allCases();
        QCOMPARE(cases.size(), std::size_t(2));
        QVERIFY(cases[0] == DisplayedRoyalty::gross);
        QVERIFY(cases[1] == DisplayedRoyalty::net);
    }

    void rawValueRoundTrips()
    {
        for (const DisplayedRoyalty royalty : DisplayedRoyalty::allCases()) {
            QVERIFY(DisplayedRoyalty::fromRawValue(royalty.rawValue()) == royalty);
        }
    }

    void rawValueThatIsNotExactConstructsNothing()
    {
        QVERIFY(!DisplayedRoyalty::fromRawValue(QStringLiteral("net")).has_value());
        QVERIFY(!DisplayedRoyalty::fromRawValue(QStringLiteral("Net Royalties")).has_value());
        QVERIFY(!DisplayedRoyalty::fromRawValue(QStringLiteral("gross")).has_value());
        QVERIFY(!DisplayedRoyalty::fromRawValue(QString()).has_value());
    }

    void valuesAreHashable()
    {
        const QSet<DisplayedRoyalty> set{DisplayedRoyalty::net, DisplayedRoyalty::net};
        QCOMPARE(set.size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestDisplayedRoyalty)
#include "tst_displayedroyalty.moc"
