#include "FaultSwitches.h"

#include <QJsonDocument>
#include <QTest>

class TestFaultSwitches : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void specSetsEachKind()
    {
        FaultSwitches faults;
        QString error;
        QVERIFY2(faults.applySpec(QStringLiteral("stats=status:500"), &error), qPrintable(error));
        QCOMPARE(faults.fault(Route::Stats).status, 500);
        QVERIFY(faults.applySpec(QStringLiteral("accounts=malformed"), &error));
        QVERIFY(faults.fault(Route::Accounts).malformedBody);
        QVERIFY(faults.applySpec(QStringLiteral("exchange=empty"), &error));
        QVERIFY(faults.fault(Route::Exchange).emptyBody);
        QVERIFY(faults.applySpec(QStringLiteral("download=delay:250"), &error));
        QCOMPARE(faults.fault(Route::Download).delayMs, 250);
        QVERIFY(faults.applySpec(QStringLiteral("dashboard=hang"), &error));
        QVERIFY(faults.fault(Route::Dashboard).hang);
        QVERIFY(faults.applySpec(QStringLiteral("connect=reset"), &error));
        QVERIFY(faults.fault(Route::Connect).reset);
        QVERIFY(faults.applySpec(QStringLiteral("stats=retry-after:2.2"), &error));
        QCOMPARE(faults.fault(Route::Stats).retryAfter, QByteArray("2.2"));
    }

    void specCombinesKinds()
    {
        FaultSwitches faults;
        QVERIFY(faults.applySpec(QStringLiteral(" Stats = status:503 , delay:100,times:2"), nullptr));
        const Fault fault = faults.fault(Route::Stats);
        QCOMPARE(fault.status, 503);
        QCOMPARE(fault.delayMs, 100);
        QCOMPARE(fault.remainingUses, 2);
    }

    void retryAfterKeepsTheRestOfTheSpecIncludingCommas()
    {
        FaultSwitches faults;
        QVERIFY(faults.applySpec(QStringLiteral("stats=delay:5,retry-after:Wed, 21 Oct 2015 07:28:00 GMT"), nullptr));
        QCOMPARE(faults.fault(Route::Stats).retryAfter, QByteArray("Wed, 21 Oct 2015 07:28:00 GMT"));
        QCOMPARE(faults.fault(Route::Stats).delayMs, 5);
    }

    void offClearsARoute()
    {
        FaultSwitches faults;
        QVERIFY(faults.applySpec(QStringLiteral("stats=status:500"), nullptr));
        QVERIFY(faults.applySpec(QStringLiteral("stats=off"), nullptr));
        QVERIFY(!faults.fault(Route::Stats).isActive());
        QVERIFY(faults.toJson().isEmpty());
    }

    void badSpecsAreRefusedAndChangeNothing_data()
    {
        QTest::addColumn<QString>("spec");
        QTest::newRow("no route") << QStringLiteral("status:500");
        QTest::newRow("unknown route") << QStringLiteral("royalties=status:500");
        QTest::newRow("unknown kind") << QStringLiteral("stats=explode");
        QTest::newRow("informational status") << QStringLiteral("stats=status:100");
        QTest::newRow("status out of range") << QStringLiteral("stats=status:700");
        QTest::newRow("status without a name") << QStringLiteral("stats=status:299");
        QTest::newRow("status not a number") << QStringLiteral("stats=status:abc");
        QTest::newRow("status without value") << QStringLiteral("stats=status");
        QTest::newRow("negative delay") << QStringLiteral("stats=delay:-1");
        QTest::newRow("value for a flag") << QStringLiteral("stats=hang:yes");
        QTest::newRow("zero times") << QStringLiteral("stats=status:500,times:0");
        QTest::newRow("empty retry-after") << QStringLiteral("stats=retry-after:");
    }

    void badSpecsAreRefusedAndChangeNothing()
    {
        QFETCH(QString, spec);
        FaultSwitches faults;
        QString error;
        QVERIFY(!faults.applySpec(spec, &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(faults.toJson().isEmpty());
    }

    void jsonSetsAndClearsRoutes()
    {
        FaultSwitches faults;
        QString error;
        const QJsonObject set = QJsonDocument::fromJson(R"({"stats": {"status": 502, "delay_ms": 40, "times": 1},
            "accounts": {"malformed": true}, "exchange": {"retry_after": 2.5}})")
                                    .object();
        QVERIFY2(faults.applyJson(set, &error), qPrintable(error));
        QCOMPARE(faults.fault(Route::Stats).status, 502);
        QCOMPARE(faults.fault(Route::Stats).delayMs, 40);
        QVERIFY(faults.fault(Route::Accounts).malformedBody);
        QCOMPARE(faults.fault(Route::Exchange).retryAfter, QByteArray("2.5"));

        QVERIFY(faults.applyJson(QJsonDocument::fromJson(R"({"stats": null, "accounts": {}})").object(), &error));
        QVERIFY(!faults.fault(Route::Stats).isActive());
        QVERIFY(!faults.fault(Route::Accounts).isActive());
        QVERIFY(faults.fault(Route::Exchange).isActive());
    }

    void badJsonChangesNothing()
    {
        FaultSwitches faults;
        QString error;
        const QJsonObject bad =
            QJsonDocument::fromJson(R"({"stats": {"status": 500}, "accounts": {"status": "soon"}})").object();
        QVERIFY(!faults.applyJson(bad, &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(!faults.fault(Route::Stats).isActive());
        QVERIFY(!faults.applyJson(QJsonDocument::fromJson(R"({"stats": {"explode": true}})").object(), &error));
        QVERIFY(!faults.applyJson(QJsonDocument::fromJson(R"({"nowhere": {"hang": true}})").object(), &error));
        QVERIFY(!faults.applyJson(QJsonDocument::fromJson(R"({"stats": 500})").object(), &error));
    }

    void htmlAndBodyFaults()
    {
        FaultSwitches switches;
        QString error;
        QVERIFY(switches.applySpec(QStringLiteral("stats=status:500,html"), &error));
        const HttpReply html = switches.fault(Route::Stats).reply();
        QCOMPARE(html.status, 500);
        QVERIFY(html.contentType.startsWith("text/html"));
        QVERIFY(html.body.startsWith("<!DOCTYPE html>"));

        QVERIFY(
            switches.applySpec(QStringLiteral("stats=body:{\"table_data\": [{\"net_royalty\": 9.99}, {}]}"), &error));
        const HttpReply body = switches.fault(Route::Stats).reply();
        QCOMPARE(body.status, 200);
        QCOMPARE(body.body, QByteArray("{\"table_data\": [{\"net_royalty\": 9.99}, {}]}"));

        QVERIFY(switches.applyJson(
            QJsonObject{{QStringLiteral("accounts"),
                         QJsonObject{{QStringLiteral("body"), QStringLiteral("{}")}, {QStringLiteral("status"), 201}}}},
            &error));
        QCOMPARE(switches.fault(Route::Accounts).reply().body, QByteArray("{}"));
        QCOMPARE(switches.fault(Route::Accounts).reply().status, 201);
        QCOMPARE(Fault::fromText(switches.fault(Route::Accounts).toText(), &error),
                 std::optional(switches.fault(Route::Accounts)));
    }

    void jsonAndTextRoundTrip()
    {
        FaultSwitches faults;
        QVERIFY(faults.applySpec(QStringLiteral("stats=status:429,malformed,delay:7,times:3,retry-after:9"), nullptr));
        const Fault fault = faults.fault(Route::Stats);
        QCOMPARE(Fault::fromJson(fault.toJson(), nullptr), std::optional(fault));
        QCOMPARE(Fault::fromText(fault.toText(), nullptr), std::optional(fault));
    }

    void takeCountsDownALimitedFault()
    {
        FaultSwitches faults;
        QVERIFY(faults.applySpec(QStringLiteral("stats=status:500,times:2"), nullptr));
        QCOMPARE(faults.take(Route::Stats).status, 500);
        QCOMPARE(faults.fault(Route::Stats).remainingUses, 1);
        QCOMPARE(faults.take(Route::Stats).status, 500);
        QVERIFY(!faults.take(Route::Stats).isActive());
    }

    void takeLeavesAnUnlimitedFaultInPlace()
    {
        FaultSwitches faults;
        QVERIFY(faults.applySpec(QStringLiteral("stats=hang"), nullptr));
        for (int i = 0; i < 3; ++i) {
            QVERIFY(faults.take(Route::Stats).hang);
        }
        QVERIFY(!faults.take(Route::Accounts).isActive());
    }

    void replyOfEachFault()
    {
        Fault status;
        status.status = 503;
        QCOMPARE(status.reply().status, 503);
        QCOMPARE(status.reply().body, QByteArray(R"({"error":"Injected failure: HTTP 503."})"));

        Fault retry;
        retry.retryAfter = "120";
        QCOMPARE(retry.reply().status, 429);
        QCOMPARE(retry.reply().header("Retry-After"), QByteArray("120"));

        Fault malformed;
        malformed.malformedBody = true;
        QCOMPARE(malformed.reply().status, 200);
        QCOMPARE(malformed.reply().body, Fault::malformedBodyBytes());

        Fault empty;
        empty.emptyBody = true;
        QCOMPARE(empty.reply().status, 200);
        QVERIFY(empty.reply().body.isEmpty());

        Fault noContent;
        noContent.status = 204;
        QVERIFY(noContent.reply().body.isEmpty());

        Fault delay;
        delay.delayMs = 10;
        QVERIFY(delay.isActive());
        QVERIFY(!delay.replacesReply());
    }
};

QTEST_GUILESS_MAIN(TestFaultSwitches)
#include "tst_devserver_faultswitches.moc"
