#include "store/VersionComparison.h"

#include <QTest>

class TestVersionComparison : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ordering_data()
    {
        QTest::addColumn<QString>("lhs");
        QTest::addColumn<QString>("rhs");
        QTest::addColumn<int>("expected");
        QTest::newRow("digit runs are numbers") << QStringLiteral("1.10") << QStringLiteral("1.9") << 1;
        QTest::newRow("older") << QStringLiteral("1.9") << QStringLiteral("1.10") << -1;
        QTest::newRow("equal") << QStringLiteral("2.0") << QStringLiteral("2.0") << 0;
        QTest::newRow("leading zeros are the same number") << QStringLiteral("2.00") << QStringLiteral("2.0") << 0;
        QTest::newRow("more parts") << QStringLiteral("1.4.1") << QStringLiteral("1.4") << 1;
        QTest::newRow("longer than 64 bits")
            << QStringLiteral("100000000000000000000") << QStringLiteral("99999999999999999999") << 1;
        QTest::newRow("letters compare as text") << QStringLiteral("1.0b") << QStringLiteral("1.0a") << 1;
        QTest::newRow("empty") << QString() << QStringLiteral("1") << -1;
        QTest::newRow("both empty") << QString() << QString() << 0;
    }

    void ordering()
    {
        QFETCH(QString, lhs);
        QFETCH(QString, rhs);
        QFETCH(int, expected);
        QCOMPARE(compareVersions(lhs, rhs), expected);
        QCOMPARE(compareVersions(rhs, lhs), -expected);
    }
};

QTEST_GUILESS_MAIN(TestVersionComparison)
#include "tst_versioncomparison.moc"
