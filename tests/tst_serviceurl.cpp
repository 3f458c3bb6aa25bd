#include "service/RoyaltiesService.h"

#include <QTest>

namespace {

const QString statsPath = QStringLiteral("/api/v1/mac/bookStatsAPI/");

} // namespace

class TestServiceURL : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void blanksAndTrailingSlashesGiveExactlyOneSlash()
    {
        const auto url =
            RoyaltiesService::makeURL(QStringLiteral("  \t https://royalties.example.com/// \n"), statsPath,
                                      {{QStringLiteral("start_date"), QStringLiteral("2026-11-21")}});
        QVERIFY(url.hasValue());
        QCOMPARE(url.value().toString(),
                 QStringLiteral("https://royalties.example.com/api/v1/mac/bookStatsAPI/?start_date=2026-11-21"));
    }

    void basePathIsKept()
    {
        const auto url = RoyaltiesService::makeURL(QStringLiteral("http://localhost:8000/inkwarden/"), statsPath, {});
        QVERIFY(url.hasValue());
        QCOMPARE(url.value().path(), QStringLiteral("/inkwarden/api/v1/mac/bookStatsAPI/"));
        QCOMPARE(url.value().port(), 8000);
    }

    void unusableAddressFailsWithInvalidServerURL_data()
    {
        QTest::addColumn<QString>("address");
        QTest::newRow("no scheme") << QStringLiteral("royalties.example.com");
        QTest::newRow("host and port only") << QStringLiteral("localhost:8000");
        QTest::newRow("ftp") << QStringLiteral("ftp://royalties.example.com");
        QTest::newRow("file") << QStringLiteral("file:///etc/passwd");
        QTest::newRow("upper-case scheme") << QStringLiteral("HTTPS://royalties.example.com");
        QTest::newRow("httpx") << QStringLiteral("httpx://royalties.example.com");
        QTest::newRow("empty") << QString();
        QTest::newRow("blanks") << QStringLiteral("   ");
        QTest::newRow("space in host") << QStringLiteral("http://royal ties.example.com");
        QTest::newRow("bad port") << QStringLiteral("http://localhost:80a0");
    }

    void unusableAddressFailsWithInvalidServerURL()
    {
        QFETCH(QString, address);
        const auto url = RoyaltiesService::makeURL(address, statsPath, {});
        QVERIFY(!url.hasValue());
        QVERIFY(url.error().royaltiesError() != nullptr);
        QCOMPARE(url.error().royaltiesError()->kind(), RoyaltiesError::Kind::invalidServerURL);
        QCOMPARE(url.error().localizedDescription(),
                 QStringLiteral("Enter a valid server URL, including http:// or https://."));
    }

    void queryItemsKeepTheirOrder()
    {
        const auto url = RoyaltiesService::makeURL(QStringLiteral("http://h"), statsPath,
                                                   {{QStringLiteral("start_date"), QStringLiteral("2026-11-01")},
                                                    {QStringLiteral("end_date"), QStringLiteral("2026-11-22")},
                                                    {QStringLiteral("account_id"), QStringLiteral("acc 1&2")}});
        QVERIFY(url.hasValue());
        QCOMPARE(url.value().query(QUrl::FullyEncoded),
                 QStringLiteral("start_date=2026-11-01&end_date=2026-11-22&account_id=acc%201%262"));
    }

    void emptyQueryListStillSetsAQuery()
    {
        const auto url = RoyaltiesService::makeURL(QStringLiteral("http://h/"), statsPath, {});
        QVERIFY(url.hasValue());
        QVERIFY(url.value().hasQuery());
        QCOMPARE(url.value().query(), QString());
    }

    void retryAfterValues_data()
    {
        QTest::addColumn<QByteArray>("header");
        QTest::addColumn<double>("seconds");
        QTest::newRow("integer") << QByteArray("120") << 120.0;
        QTest::newRow("fraction") << QByteArray("2.2") << 2.2;
        QTest::newRow("zero") << QByteArray("0") << 0.0;
        QTest::newRow("missing") << QByteArray() << 3.0;
        QTest::newRow("http date") << QByteArray("Wed, 21 Oct 2026 07:28:00 GMT") << 3.0;
        QTest::newRow("trailing text") << QByteArray("5 seconds") << 3.0;
        QTest::newRow("infinite") << QByteArray("inf") << 3.0;
        QTest::newRow("huge overflows to infinity") << QByteArray("1e999") << 3.0;
        QTest::newRow("not a number") << QByteArray("nan") << 3.0;
    }

    void retryAfterValues()
    {
        QFETCH(QByteArray, header);
        QTEST(RoyaltiesService::retryAfterSeconds(header), "seconds");
    }
};

QTEST_GUILESS_MAIN(TestServiceURL)
#include "tst_serviceurl.moc"
