// The lines `inkwarden --status` prints: plain text for i3blocks, polybar and genmon, JSON for
// waybar's custom modules.
#include "platform/StatusLine.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

class TestStatusLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formatsAreNamedTextAndWaybar()
    {
        QCOMPARE(StatusLine::formatFromName(QStringLiteral("text")), std::optional(StatusLine::Format::text));
        QCOMPARE(StatusLine::formatFromName(QStringLiteral("waybar")), std::optional(StatusLine::Format::waybar));
        QCOMPARE(StatusLine::formatFromName(QStringLiteral("genmon")), std::optional(StatusLine::Format::genmon));
        QCOMPARE(StatusLine::formatFromName(QStringLiteral("json")), std::nullopt);
        QCOMPARE(StatusLine::formatFromName(QString()), std::nullopt);
    }

    void textIsTheTitleAlone()
    {
        QCOMPARE(StatusLine::format(StatusLine::Format::text, QStringLiteral(u"\u00B7 $1,235"),
                                    QStringLiteral("Inkwarden Royalties\n$1,235"), QStringLiteral("ok")),
                 QStringLiteral(u"\u00B7 $1,235"));
    }

    void textIsAlwaysOneLine()
    {
        QCOMPARE(StatusLine::format(StatusLine::Format::text, QStringLiteral("a\nb"), QString(), QStringLiteral("ok")),
                 QStringLiteral("a b"));
    }

    void waybarGetsOneJsonObjectOnOneLine()
    {
        const QString line = StatusLine::format(
            StatusLine::Format::waybar, QStringLiteral(u"\u00B7 \u20AC1,235"),
            QStringLiteral("Inkwarden Royalties\n\u20AC1,235 \u00B7 Refreshed at 9:05"), QStringLiteral("ok"));
        QVERIFY(!line.contains(u'\n'));
        QJsonParseError error{};
        const QJsonObject object = QJsonDocument::fromJson(line.toUtf8(), &error).object();
        QCOMPARE(error.error, QJsonParseError::NoError);
        QCOMPARE(object.value(QStringLiteral("text")).toString(), QStringLiteral(u"\u00B7 \u20AC1,235"));
        QCOMPARE(object.value(QStringLiteral("tooltip")).toString(),
                 QStringLiteral("Inkwarden Royalties\n\u20AC1,235 \u00B7 Refreshed at 9:05"));
        QCOMPARE(object.value(QStringLiteral("class")).toString(), QStringLiteral("ok"));
        QCOMPARE(object.value(QStringLiteral("alt")).toString(), QStringLiteral("ok"));
        QCOMPARE(object.size(), 4);
    }

    void waybarTextIsEscapedForPangoMarkup()
    {
        // An error message from a server can hold anything; waybar would take "<" for markup.
        const QString line =
            StatusLine::format(StatusLine::Format::waybar, QStringLiteral(u"\u25C9 !"),
                               QStringLiteral("Server returned <b>502</b> & more"), QStringLiteral("error"));
        const QJsonObject object = QJsonDocument::fromJson(line.toUtf8()).object();
        QCOMPARE(object.value(QStringLiteral("tooltip")).toString(),
                 QStringLiteral("Server returned &lt;b&gt;502&lt;/b&gt; &amp; more"));
        QCOMPARE(object.value(QStringLiteral("text")).toString(), QStringLiteral(u"\u25C9 !"));
    }

    void genmonGetsItsTagsOnOneLineWithAClickThatOpensInkwarden()
    {
        QCOMPARE(StatusLine::format(StatusLine::Format::genmon, QStringLiteral(u"\u00B7 $1,235"),
                                    QStringLiteral("Inkwarden Royalties\n$1,235 & more"), QStringLiteral("ok"),
                                    QStringLiteral("/opt/my apps/inkwarden")),
                 QStringLiteral(u"<txt>\u00B7 $1,235</txt><tool>Inkwarden Royalties&#10;$1,235 &amp; more</tool>"
                                u"<txtclick>'/opt/my apps/inkwarden'</txtclick>"));
        QCOMPARE(StatusLine::format(StatusLine::Format::genmon, QStringLiteral("<b>"), QString(), QStringLiteral("ok")),
                 QStringLiteral("<txt>&lt;b&gt;</txt><tool></tool>"));
    }

    void notRunningShowsNothingAndSaysWhyInTheToolTip()
    {
        QCOMPARE(StatusLine::notRunning(StatusLine::Format::text), QString());
        const QJsonObject object =
            QJsonDocument::fromJson(StatusLine::notRunning(StatusLine::Format::waybar).toUtf8()).object();
        QCOMPARE(object.value(QStringLiteral("text")).toString(), QString());
        QCOMPARE(object.value(QStringLiteral("tooltip")).toString(), QStringLiteral("Inkwarden is not running."));
        QCOMPARE(object.value(QStringLiteral("class")).toString(), QStringLiteral("notRunning"));
    }
};

QTEST_GUILESS_MAIN(TestStatusLine)
#include "tst_statusline.moc"
