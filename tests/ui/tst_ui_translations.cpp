// The popover's views in each of Inkwarden's languages, rendered offscreen at the popover's width:
// every text that English shows from a translated text shows its translation instead, nothing is
// left in English, and no text runs out of its place (cut short, wider than its box, or past the
// popover's edge). The same screens in English are the reference, and are held to the same layout
// rules. The truth for each language is its translations/inkwarden_<language>.ts.
#include "SampleFigures.h"
#include "UiTest.h"
#include "service/RoyaltiesError.h"
#include "shell/AppTranslations.h"
#include "store/AppUpdates.h"
#include "store/ConnectionSession.h"
#include "store/OpenAtLogin.h"
#include "store/RoyaltyAlerts.h"
#include "store/StoreSettings.h"
#include "store/StoreStatus.h"
#include "support/TranslationCatalog.h"

#include <QQuickItem>

#include <functional>

namespace {

// One text the view shows, where it is, and whether it fits its place.
struct ShownText {
    QString text;
    QString where;
    QString overflow; // empty when it fits
};

QString describe(const QQuickItem *item)
{
    QStringList path;
    for (const QQuickItem *at = item; at; at = at->parentItem()) {
        if (!at->objectName().isEmpty()) {
            path.prepend(at->objectName());
        }
    }
    return path.join(u'/') + u' ' + QString::fromLatin1(item->metaObject()->className());
}

// How the text in `item` runs out of its place in a popover `width` wide, or empty when it fits.
QString overflowOf(const QQuickItem *item, qreal width)
{
    if (item->property("truncated").toBool()) {
        return QStringLiteral("cut short");
    }
    const qreal contentWidth = item->property("contentWidth").toReal();
    if (item->property("wrapMode").toInt() == 0 && item->width() > 0 && contentWidth > item->width() + 0.5) {
        return QStringLiteral("%1 px of text in a box %2 px wide").arg(contentWidth).arg(item->width());
    }
    const QRectF box = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    if (box.left() < -0.5 || box.right() > width + 0.5) {
        return QStringLiteral("spans x %1 to %2 of %3").arg(box.left()).arg(box.right()).arg(width);
    }
    return {};
}

// Every text the window shows, in the order of its items.
void collect(QQuickItem *item, qreal width, QList<ShownText> &texts)
{
    if (!item->isVisible() || item->opacity() <= 0) {
        return;
    }
    if (item->inherits("QQuickText")) {
        const QString text = item->property("text").toString();
        if (!text.trimmed().isEmpty()) {
            texts.append({text, describe(item), overflowOf(item, width)});
        }
    }
    for (QQuickItem *child : item->childItems()) {
        collect(child, width, texts);
    }
}

RoyaltySummary figures()
{
    // Both plural forms where a language has them: one paperback, two expanded distribution units.
    RoyaltySummary summary = sampleFigures();
    summary.paperbackUnits = 1;
    summary.paperbackRoyalties = 4.5;
    summary.expandedDistributionUnits = 2;
    return summary;
}

const QStringList languages{QStringLiteral("de"), QStringLiteral("fr"), QStringLiteral("es"), QStringLiteral("it"),
                            QStringLiteral("ja")};

} // namespace

class TestTranslatedViews : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startTest(); }
    void cleanup() { endTest(); }

    void viewsSpeakTheLanguageAndFit_data();
    void viewsSpeakTheLanguageAndFit();

private:
    // The screen `name` as a person meets it, for the store of a fresh fixture.
    void arrange(const QString &name);
    // Shows the screen and reads its texts.
    QList<ShownText> render(const QString &name);
};

void TestTranslatedViews::arrange(const QString &name)
{
    StoreFixture &f = *fixture;
    if (name.startsWith(QStringLiteral("connect"))) {
        RoyaltiesStore &store = f.makeStore();
        store.status().setErrorMessage(RoyaltiesError::invalidResponse().message());
        return;
    }
    RoyaltiesStore &store = f.makeConnectedStore();
    store.session().setSummary(figures());
    store.session().setLastUpdated(f.clock.now().addSecs(-134));
    store.session().setNextRefreshAt(f.clock.now().addSecs(1800 - 134));
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    if (name == QStringLiteral("settings")) {
        store.status().setIsShowingSettings(true);
        store.settings().setAccountID(QStringLiteral("acct-1"));
        store.session().setAccounts(
            {{QStringLiteral("acct-1"), QStringLiteral("maria@example.com"), QStringLiteral("Maria Ostrova"),
              QStringLiteral("owner")},
             {QStringLiteral("acct-2"), QStringLiteral("press@example.com"), std::nullopt, QStringLiteral("reader")}});
        store.login().setLaunchAtLoginRequiresApproval(true);
        store.alerts().setQuietHoursEnabled(true);
    }
}

QList<ShownText> TestTranslatedViews::render(const QString &name)
{
    view.reset();
    fixture = std::make_unique<StoreFixture>();
    arrange(name);
    ViewHarness &shown = show();
    if (name == QStringLiteral("connect-expanded")) {
        shown.find(QStringLiteral("connectView"))->setProperty("showsManualConnection", true);
    }
    shown.settle();
    QList<ShownText> texts;
    collect(shown.window()->contentItem(), shown.window()->width(), texts);
    return texts;
}

void TestTranslatedViews::viewsSpeakTheLanguageAndFit_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("screen");
    for (const QString &language : languages) {
        for (const char *screen : {"connect", "connect-expanded", "dashboard", "settings"}) {
            QTest::addRow("%s %s", qPrintable(language), screen) << language << QString::fromLatin1(screen);
        }
    }
}

void TestTranslatedViews::viewsSpeakTheLanguageAndFit()
{
    QFETCH(QString, language);
    QFETCH(QString, screen);
    const TranslationCatalog catalog(QStringLiteral(INKWARDEN_TRANSLATIONS_DIR "/inkwarden_%1.ts").arg(language));
    QVERIFY(catalog.isValid());
    // The English texts that this language words differently.
    const QStringList englishWithOtherWords = catalog.changedSources();

    const QList<ShownText> english = render(screen);
    QVERIFY(english.size() > 5);
    for (const ShownText &text : english) {
        QVERIFY2(text.overflow.isEmpty(),
                 qPrintable(u"English: "_qs + text.where + u": \""_qs + text.text + u"\" "_qs + text.overflow));
    }

    const AppTranslations translations({language});
    QCOMPARE(translations.language(), language);
    const QList<ShownText> translated = render(screen);
    QCOMPARE(translated.size(), english.size());
    int translatedTexts = 0;
    for (qsizetype i = 0; i < translated.size(); ++i) {
        const ShownText &text = translated[i];
        const QString where = text.where + u": \""_qs + text.text + u'"';
        QVERIFY2(text.overflow.isEmpty(), qPrintable(where + u' ' + text.overflow));
        // Where English showed a translated text as it stands, this language shows its translation.
        const QString source = english[i].text;
        if (englishWithOtherWords.contains(source)) {
            QVERIFY2(text.text != source, qPrintable(where + u" is still English"_qs));
            QVERIFY2(catalog.translationsOf(source).contains(text.text),
                     qPrintable(where + u", expected one of: "_qs + catalog.translationsOf(source).join(u" | ")));
            ++translatedTexts;
        } else {
            QVERIFY2(!englishWithOtherWords.contains(text.text), qPrintable(where + u" is still English"_qs));
        }
    }
    qInfo("%d texts, %d translated", int(translated.size()), translatedTexts);
    QVERIFY2(translatedTexts >= 4, qPrintable(QString::number(translatedTexts)));
}

QTEST_MAIN(TestTranslatedViews)
#include "tst_ui_translations.moc"
