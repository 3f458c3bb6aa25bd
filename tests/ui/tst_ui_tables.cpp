#include "UiTest.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPalette>

// The icon, colour and type tables that every view draws with, and the brand mark.
class TestTables : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startTest(); }
    void cleanup()
    {
        endTest();
        QGuiApplication::setPalette(QPalette());
    }

    void everySymbolOfTheViewsAndTheModelHasAGlyph();
    void everyGlyphIsInTheIconFont();
    void everyNamedColourHasALightAndADarkShade();
    void darkDesktopPaletteMeansDarkColours();
    void typeTableHasTheDesignSizes();
    void figureFontHasDigitsOfOneWidth();
    void brandLogoLoadsFromTheModule();
    void brandLogoFallsBackToIndigoSquareWithoutTheImage();

private:
    QObject *singleton(const QString &name)
    {
        fixture->makeStore();
        showBody(QStringLiteral("Item {}"));
        QQmlComponent component(&view->engine());
        component.setData(QStringLiteral("import QtQuick\nimport Inkwarden.Ui\nQtObject { property var table: %1 }")
                              .arg(name)
                              .toUtf8(),
                          QUrl(QStringLiteral("qrc:/inkwarden-tests/Table.qml")));
        QObject *holder = component.create();
        if (!holder) {
            qFatal("%s", qPrintable(component.errorString()));
        }
        holder->setParent(view->window());
        return holder->property("table").value<QObject *>();
    }
    static QString call(QObject *object, const char *method, const QString &argument)
    {
        QVariant result;
        QMetaObject::invokeMethod(object, method, Q_RETURN_ARG(QVariant, result), Q_ARG(QVariant, argument));
        return result.toString();
    }
    static QStringList symbolNames()
    {
        QStringList names{QStringLiteral("gearshape"),
                          QStringLiteral("arrow.down.circle.fill"),
                          QStringLiteral("arrow.clockwise"),
                          QStringLiteral("arrow.up.forward.square"),
                          QStringLiteral("exclamationmark.triangle.fill"),
                          QStringLiteral("square.grid.2x2"),
                          QStringLiteral("person.crop.circle.badge.checkmark"),
                          QStringLiteral("chevron.left"),
                          QStringLiteral("chevron.right"),
                          QStringLiteral("chevron.up"),
                          QStringLiteral("chevron.down"),
                          QStringLiteral("progress.spinner"),
                          QStringLiteral("chart.line.uptrend.xyaxis"),
                          QStringLiteral("megaphone"),
                          QStringLiteral("banknote")};
        for (const SalesBreakdownMetric metric : SalesBreakdownMetric::allCases()) {
            names.append(metric.icon());
        }
        return names;
    }
};

void TestTables::everySymbolOfTheViewsAndTheModelHasAGlyph()
{
    QObject *icons = singleton(QStringLiteral("Icons"));
    QVERIFY(icons);
    for (const QString &name : symbolNames()) {
        QVERIFY2(!call(icons, "glyph", name).isEmpty(), qPrintable(name));
    }
    QVERIFY(call(icons, "glyph", QStringLiteral("no.such.symbol")).isEmpty());
}

void TestTables::everyGlyphIsInTheIconFont()
{
    QObject *icons = singleton(QStringLiteral("Icons"));
    const QFont font(icons->property("family").toString());
    QCOMPARE(QFontInfo(font).family(), QStringLiteral("Material Icons"));
    const QFontMetricsF metrics(font);
    for (const QString &name : symbolNames()) {
        const QString glyph = call(icons, "glyph", name);
        QVERIFY2(metrics.inFontUcs4(glyph.at(0).unicode()), qPrintable(name));
    }
}

void TestTables::everyNamedColourHasALightAndADarkShade()
{
    QObject *theme = singleton(QStringLiteral("Theme"));
    QStringList names{QStringLiteral("blue"),   QStringLiteral("orange"), QStringLiteral("green"),
                      QStringLiteral("indigo"), QStringLiteral("pink"),   QStringLiteral("cyan"),
                      QStringLiteral("teal"),   QStringLiteral("purple"), QStringLiteral("brown"),
                      QStringLiteral("white")};
    for (const SalesBreakdownMetric metric : SalesBreakdownMetric::allCases()) {
        names.append(systemColorName(metric.color()));
    }
    const QVariantMap light = theme->property("lightColors").toMap();
    const QVariantMap dark = theme->property("darkColors").toMap();
    for (const QString &name : std::as_const(names)) {
        QVERIFY2(QColor(light.value(name).toString()).isValid(), qPrintable(name));
        QVERIFY2(QColor(dark.value(name).toString()).isValid(), qPrintable(name));
    }
}

void TestTables::darkDesktopPaletteMeansDarkColours()
{
    QObject *theme = singleton(QStringLiteral("Theme"));
    QVERIFY(!theme->property("dark").toBool());
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(0x24, 0x24, 0x24));
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
    QGuiApplication::setPalette(dark);
    view->settle();
    QVERIFY(theme->property("dark").toBool());
    QCOMPARE(QColor(call(theme, "color", QStringLiteral("blue"))), QColor(QStringLiteral("#0a84ff")));
}

void TestTables::typeTableHasTheDesignSizes()
{
    QObject *type = singleton(QStringLiteral("Typography"));
    const QList<std::pair<const char *, int>> sizes{
        {"largeTitle", 26}, {"title", 22},       {"title2", 17},   {"title3", 15},  {"headline", 13}, {"body", 13},
        {"callout", 12},    {"subheadline", 11}, {"footnote", 10}, {"caption", 10}, {"caption2", 10}};
    for (const auto &[name, size] : sizes) {
        QCOMPARE(type->property(name).value<QFont>().pixelSize(), size);
    }
    QCOMPARE(type->property("headline").value<QFont>().weight(), QFont::DemiBold);
    QCOMPARE(type->property("amount").value<QFont>().pixelSize(), 38);
    QCOMPARE(type->property("amount").value<QFont>().weight(), QFont::Bold);
}

void TestTables::figureFontHasDigitsOfOneWidth()
{
    QObject *type = singleton(QStringLiteral("Typography"));
    const QString family = type->property("figureFamily").toString();
    QCOMPARE(QFontInfo(QFont(family)).family(), family);
    for (const QFont::Weight weight : {QFont::Normal, QFont::DemiBold, QFont::Bold}) {
        QFont font(family);
        font.setPixelSize(38);
        font.setWeight(weight);
        const QFontMetricsF metrics(font);
        const qreal zero = metrics.horizontalAdvance(QLatin1Char('0'));
        for (char digit = '1'; digit <= '9'; ++digit) {
            QCOMPARE(metrics.horizontalAdvance(QLatin1Char(digit)), zero);
        }
    }
}

void TestTables::brandLogoLoadsFromTheModule()
{
    fixture->makeStore();
    showBody(QStringLiteral("BrandLogoView { objectName: \"logo\"; size: 72; cornerRadius: 18 }"));
    QQuickItem *logo = item(QStringLiteral("logo"));
    QTRY_VERIFY(logo->property("showsImage").toBool());
    QVERIFY(shown(QStringLiteral("brandLogoImage")));
    QVERIFY(!shown(QStringLiteral("brandLogoFallback")));
    QCOMPARE(logo->width(), 72.0);
}

void TestTables::brandLogoFallsBackToIndigoSquareWithoutTheImage()
{
    fixture->makeStore();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("missing-logo")));
    showBody(QStringLiteral("BrandLogoView { objectName: \"logo\"; size: 72; cornerRadius: 18; "
                            "source: \"qrc:/no/missing-logo.svg\" }"));
    QQuickItem *logo = item(QStringLiteral("logo"));
    QVERIFY(!logo->property("showsImage").toBool());
    QQuickItem *fallback = item(QStringLiteral("brandLogoFallback"));
    QVERIFY(ViewHarness::isShown(fallback));
    QCOMPARE(fallback->property("radius").toReal(), 18.0);
}

QTEST_MAIN(TestTables)
#include "tst_ui_tables.moc"
