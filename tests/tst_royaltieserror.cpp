#include "service/RoyaltiesError.h"
#include "service/ServiceError.h"

#include <QTest>

class TestRoyaltiesError : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void serverErrorShowsItsMessageUnchanged()
    {
        QCOMPARE(RoyaltiesError::server(QStringLiteral(" Invalid API key. ")).errorDescription(),
                 QStringLiteral(" Invalid API key. "));
    }

    void fixedDescriptions()
    {
        QCOMPARE(RoyaltiesError::invalidServerURL().errorDescription(),
                 QStringLiteral("Enter a valid server URL, including http:// or https://."));
        QCOMPARE(RoyaltiesError::missingAPIKey().errorDescription(), QStringLiteral("Enter your Inkwarden API key."));
        QCOMPARE(RoyaltiesError::invalidResponse().errorDescription(),
                 QStringLiteral("Inkwarden returned an unexpected response."));
    }

    void rateLimitWaitIsRoundedUpToWholeSeconds_data()
    {
        QTest::addColumn<double>("retryAfter");
        QTest::addColumn<QString>("expected");
        QTest::newRow("120") << 120.0 << QStringLiteral("Please wait 120 seconds before requesting royalties again.");
        QTest::newRow("2.2 rounds up") << 2.2
                                       << QStringLiteral("Please wait 3 seconds before requesting royalties again.");
        QTest::newRow("2.0 stays") << 2.0 << QStringLiteral("Please wait 2 seconds before requesting royalties again.");
        QTest::newRow("0 is raised to 1")
            << 0.0 << QStringLiteral("Please wait 1 seconds before requesting royalties again.");
        QTest::newRow("0.01 rounds up to 1")
            << 0.01 << QStringLiteral("Please wait 1 seconds before requesting royalties again.");
        QTest::newRow("negative is raised to 1")
            << -30.0 << QStringLiteral("Please wait 1 seconds before requesting royalties again.");
        QTest::newRow("large") << 86400.5
                               << QStringLiteral("Please wait 86401 seconds before requesting royalties again.");
    }

    void rateLimitWaitIsRoundedUpToWholeSeconds()
    {
        QFETCH(double, retryAfter);
        const RoyaltiesError error = RoyaltiesError::rateLimited(retryAfter);
        QCOMPARE(error.kind(), RoyaltiesError::Kind::rateLimited);
        QCOMPARE(error.retryAfter(), retryAfter);
        QTEST(error.errorDescription(), "expected");
    }

    void serviceErrorDescribesBothKinds()
    {
        const ServiceError royalties(RoyaltiesError::missingAPIKey());
        QVERIFY(royalties.royaltiesError() != nullptr);
        QVERIFY(royalties.transportError() == nullptr);
        QCOMPARE(royalties.localizedDescription(), QStringLiteral("Enter your Inkwarden API key."));

        const ServiceError transport(
            TransportError{QNetworkReply::ConnectionRefusedError, QStringLiteral("Connection refused")});
        QVERIFY(transport.royaltiesError() == nullptr);
        QCOMPARE(transport.transportError()->code, QNetworkReply::ConnectionRefusedError);
        QCOMPARE(transport.localizedDescription(), QStringLiteral("Connection refused"));
    }
};

QTEST_GUILESS_MAIN(TestRoyaltiesError)
#include "tst_royaltieserror.moc"
