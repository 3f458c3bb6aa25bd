// Inkwarden in the author's language: which translation the desktop's languages choose, and that
// the panel menu and its access keys, the tool tip, the item's name for screen readers, the counted
// texts and the notifications say what the translation files say, while English stays exactly as
// written and the settings file never depends on the language. The truth for each language is its
// translations/inkwarden_<language>.ts.
#include "model/SalesBreakdownMetric.h"
#include "platform/DBusMenu.h"
#include "platform/StatusItem.h"
#include "service/RoyaltiesError.h"
#include "shell/AppTranslations.h"
#include "shell/PanelStatusBuilder.h"
#include "store/ConnectionSession.h"
#include "store/RoyaltiesStore.h"
#include "store/RoyaltyAlerts.h"
#include "store/StoreSettings.h"
#include "support/StoreFixture.h"
#include "support/TranslationCatalog.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace std::chrono_literals;

namespace {

const QStringList languages{QStringLiteral("de"), QStringLiteral("fr"), QStringLiteral("es"), QStringLiteral("it"),
                            QStringLiteral("ja")};

TranslationCatalog catalog(const QString &language)
{
    return TranslationCatalog(QStringLiteral(INKWARDEN_TRANSLATIONS_DIR "/inkwarden_%1.ts").arg(language));
}

const QList<StatusMenuEntry> menuEntries{StatusMenuEntry::Open, StatusMenuEntry::Refresh, StatusMenuEntry::Settings,
                                         StatusMenuEntry::HideAmounts, StatusMenuEntry::Quit};

// "de-DE de" as a list of words.
QStringList words(const char *spaced)
{
    return QString::fromLatin1(spaced).split(u' ', Qt::SkipEmptyParts);
}

// The access key a label marks with "&" ("&Refresh", "更新(&R)"), lower case; empty without one.
QString accessKey(const QString &mnemonicLabel)
{
    for (qsizetype index = 0; index + 1 < mnemonicLabel.size(); ++index) {
        if (mnemonicLabel.at(index) != u'&') {
            continue;
        }
        if (mnemonicLabel.at(index + 1) == u'&') {
            ++index;
            continue;
        }
        return mnemonicLabel.at(index + 1).toLower();
    }
    return {};
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestTranslations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<StoreFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void everyLanguageHasItsTranslation();
    void englishAndUnknownLanguagesLoadNothing_data();
    void englishAndUnknownLanguagesLoadNothing();
    void theFirstLanguageInkwardenSpeaksWins_data();
    void theFirstLanguageInkwardenSpeaksWins();

    void panelMenuAndToolTipSpeakTheLanguage_data() { perLanguage(); }
    void panelMenuAndToolTipSpeakTheLanguage();
    void countedTextsTakeTheLanguagesPluralForms_data() { perLanguage(); }
    void countedTextsTakeTheLanguagesPluralForms();
    void notificationsSpeakTheLanguage_data() { perLanguage(); }
    void notificationsSpeakTheLanguage();
    void englishStaysAsWritten();
    void theSettingsFileReadsBackTheSameInAnotherLanguage();

private:
    static void perLanguage()
    {
        QTest::addColumn<QString>("language");
        for (const QString &language : languages) {
            QTest::newRow(qPrintable(language)) << language;
        }
    }

    std::unique_ptr<StoreFixture> m_fixture;
};

void TestTranslations::everyLanguageHasItsTranslation()
{
    QCOMPARE(QDir(QStringLiteral(":/i18n")).entryList({QStringLiteral("inkwarden_*.qm")}, QDir::Files, QDir::Name),
             words("inkwarden_de.qm inkwarden_es.qm inkwarden_fr.qm inkwarden_it.qm inkwarden_ja.qm"));
    for (const QString &language : languages) {
        QVERIFY2(catalog(language).isValid(), qPrintable(language));
        QVERIFY(catalog(language).size() > 150);
    }
}

void TestTranslations::englishAndUnknownLanguagesLoadNothing_data()
{
    QTest::addColumn<QStringList>("uiLanguages");
    QTest::newRow("C") << words("C");
    QTest::newRow("en-US") << words("en-US en");
    QTest::newRow("en-GB before German") << words("en-GB de-DE de");
    QTest::newRow("Portuguese only") << words("pt-BR pt");
    QTest::newRow("none") << words("");
}

void TestTranslations::englishAndUnknownLanguagesLoadNothing()
{
    QFETCH(QStringList, uiLanguages);
    const AppTranslations translations(uiLanguages);
    QCOMPARE(translations.language(), QString());
    QCOMPARE(StatusItem::withoutMnemonic(StatusItem::menuMnemonicLabel(StatusMenuEntry::Quit)),
             QStringLiteral("Quit Inkwarden"));
    QCOMPARE(RoyaltyPeriod(RoyaltyPeriod::thisMonth).title(), QStringLiteral("This Month"));
}

void TestTranslations::theFirstLanguageInkwardenSpeaksWins_data()
{
    QTest::addColumn<QStringList>("uiLanguages");
    QTest::addColumn<QString>("language");
    QTest::newRow("de-DE") << words("de-DE de") << QStringLiteral("de");
    QTest::newRow("de-AT") << words("de-AT") << QStringLiteral("de");
    QTest::newRow("fr-CA") << words("fr-CA fr") << QStringLiteral("fr");
    QTest::newRow("es-MX") << words("es-MX") << QStringLiteral("es");
    QTest::newRow("it-CH") << words("it-CH") << QStringLiteral("it");
    QTest::newRow("ja-JP") << words("ja-JP ja") << QStringLiteral("ja");
    QTest::newRow("Portuguese, then German") << words("pt-BR de-DE fr") << QStringLiteral("de");
    QTest::newRow("French before German") << words("fr de") << QStringLiteral("fr");
}

void TestTranslations::theFirstLanguageInkwardenSpeaksWins()
{
    QFETCH(QStringList, uiLanguages);
    QFETCH(QString, language);
    const AppTranslations translations(uiLanguages);
    QCOMPARE(translations.language(), language);
    const QString quit = catalog(language).text(QStringLiteral("StatusItem"), QStringLiteral("&Quit Inkwarden"));
    QVERIFY(!quit.isEmpty() && quit != QStringLiteral("&Quit Inkwarden"));
    QCOMPARE(StatusItem::menuMnemonicLabel(StatusMenuEntry::Quit), quit);
    QCOMPARE(StatusItem::withoutMnemonic(StatusItem::menuMnemonicLabel(StatusMenuEntry::Quit)),
             StatusItem::withoutMnemonic(quit));
}

void TestTranslations::panelMenuAndToolTipSpeakTheLanguage()
{
    QFETCH(QString, language);
    const TranslationCatalog texts = catalog(language);
    QStringList english;
    for (const StatusMenuEntry entry : menuEntries) {
        english.append(StatusItem::menuMnemonicLabel(entry));
    }
    const AppTranslations translations({language});
    QCOMPARE(translations.language(), language);
    QStringList keys;
    for (qsizetype i = 0; i < menuEntries.size(); ++i) {
        const QString expected = texts.text(QStringLiteral("StatusItem"), english[i]);
        QVERIFY2(!expected.isEmpty(), qPrintable(english[i]));
        QCOMPARE(StatusItem::menuMnemonicLabel(menuEntries[i]), expected);
        QCOMPARE(StatusItem::withoutMnemonic(StatusItem::menuMnemonicLabel(menuEntries[i])),
                 StatusItem::withoutMnemonic(expected));
        QVERIFY2(!StatusItem::withoutMnemonic(StatusItem::menuMnemonicLabel(menuEntries[i])).contains(u'&'),
                 qPrintable(expected));
        // Every entry has an access key, a letter of its own within the menu, marked "_" for dbusmenu.
        const QString key = accessKey(expected);
        QVERIFY2(key.size() == 1 && key.at(0).isLetter(), qPrintable(expected));
        QVERIFY2(!keys.contains(key), qPrintable(expected));
        keys.append(key);
        QVERIFY2(DBusMenu::accessKeyLabel(expected).contains(u'_' + expected.mid(expected.indexOf(u'&') + 1, 1)),
                 qPrintable(DBusMenu::accessKeyLabel(expected)));
    }

    // The tool tip of a signed-out item and of one with figures.
    RoyaltiesStore &signedOut = m_fixture->makeStore();
    PanelStatus status = PanelStatusBuilder::build(signedOut, MenuBarTitle{signedOut.menuBarTitle(), {}},
                                                   m_fixture->clock.now(), m_fixture->locale);
    QCOMPARE(status.toolTipTitle,
             texts.text(QStringLiteral("PanelStatusBuilder"), QStringLiteral("Inkwarden Royalties")));
    const QString notSignedIn = texts.text(QStringLiteral("PanelStatusBuilder"), QStringLiteral("Not signed in"));
    QCOMPARE(status.toolTipBody, notSignedIn);
    // The item's name in words for screen readers.
    const QString nameWhy = texts.text(QStringLiteral("PanelStatusBuilder"), QStringLiteral("Inkwarden: %1"));
    QVERIFY(!nameWhy.isEmpty());
    QCOMPARE(PanelStatusBuilder::accessibleTitle(signedOut, MenuBarTitle{signedOut.menuBarTitle(), {}}),
             nameWhy.arg(notSignedIn));
    m_fixture->destroyStore();

    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    const MenuBarTitle shown{store.menuBarTitle(), store.menuBarMoneyParts()};
    status = PanelStatusBuilder::build(store, shown, m_fixture->clock.now(), m_fixture->locale);
    const QString refreshedAt =
        texts.text(QStringLiteral("PanelStatusBuilder"), QStringLiteral("Refreshed at %1"))
            .arg(m_fixture->locale.toString(m_fixture->clock.now().toLocalTime().time(), QLocale::ShortFormat));
    const QString today = texts.text(QStringLiteral("RoyaltyPeriod"), QStringLiteral("Today"));
    QVERIFY(!today.isEmpty() && today != QStringLiteral("Today"));
    const QString line = texts.text(QStringLiteral("PanelStatusBuilder"), QStringLiteral("%1: %2 · %3"));
    QVERIFY(!line.isEmpty());
    QVERIFY2(status.toolTipBody.startsWith(line.arg(today, shown.figure(), refreshedAt)),
             qPrintable(status.toolTipBody));
    const QString name = texts.text(QStringLiteral("PanelStatusBuilder"), QStringLiteral("Inkwarden: %1 %2"));
    QVERIFY(!name.isEmpty());
    QCOMPARE(PanelStatusBuilder::accessibleTitle(store, shown), name.arg(today, shown.figure()));
}

void TestTranslations::countedTextsTakeTheLanguagesPluralForms()
{
    QFETCH(QString, language);
    const QStringList forms =
        catalog(language).forms(QStringLiteral("SalesBreakdownMetric"), QStringLiteral("%1 unit(s)"));
    QCOMPARE(forms.size(), language == QStringLiteral("ja") ? 1 : 2);
    const AppTranslations translations({language});
    const QLocale locale(language);
    const QString many = forms.last();
    QCOMPARE(SalesBreakdownMetric::countedUnits(1, locale), forms.first().arg(locale.toString(1)));
    QCOMPARE(SalesBreakdownMetric::countedUnits(7, locale), many.arg(locale.toString(7)));
    QCOMPARE(SalesBreakdownMetric::countedUnits(1234, locale), many.arg(locale.toString(1234)));
    // French counts nothing as one.
    QCOMPARE(SalesBreakdownMetric::countedUnits(0, locale),
             (language == QStringLiteral("fr") ? forms.first() : many).arg(locale.toString(0)));
    if (forms.size() == 2) {
        QVERIFY(forms.first() != forms.last());
    }
}

void TestTranslations::notificationsSpeakTheLanguage()
{
    QFETCH(QString, language);
    const TranslationCatalog texts = catalog(language);
    const AppTranslations translations({language});
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    const double before = store.highlightedRoyalty();
    m_fixture->clock.advance(30min);
    QVERIFY(m_fixture->waitUntilIdle());
    const double after = store.highlightedRoyalty();
    QCOMPARE(m_fixture->notifications.shown.size(), 1);
    const auto &shown = m_fixture->notifications.shown.first();
    const QString title = texts.text(QStringLiteral("RoyaltyAlerts"), QStringLiteral("+%1 in royalties"));
    const QString body = texts.text(QStringLiteral("RoyaltyAlerts"), QStringLiteral("%1: %2"));
    const QString today = texts.text(QStringLiteral("RoyaltyPeriod"), QStringLiteral("Today"));
    QVERIFY(!title.isEmpty() && !body.isEmpty() && !today.isEmpty());
    QVERIFY(today != QStringLiteral("Today"));
    QCOMPARE(shown.title, title.arg(store.money(after - before, false)));
    QCOMPARE(shown.body, body.arg(today, store.money(after, false)));

    // Hidden amounts: the notification says only that royalties came.
    store.setHideAmounts(true);
    m_fixture->clock.advance(30min);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->notifications.shown.size(), 2);
    QCOMPARE(m_fixture->notifications.shown.last().title,
             texts.text(QStringLiteral("RoyaltyAlerts"), QStringLiteral("New royalties")));
    QCOMPARE(m_fixture->notifications.shown.last().body, today);
}

void TestTranslations::englishStaysAsWritten()
{
    const AppTranslations translations({QStringLiteral("C")});
    QCOMPARE(StatusItem::menuMnemonicLabel(StatusMenuEntry::Open), QStringLiteral("&Open Inkwarden"));
    QCOMPARE(StatusItem::menuMnemonicLabel(StatusMenuEntry::Refresh), QStringLiteral("&Refresh"));
    QCOMPARE(StatusItem::menuMnemonicLabel(StatusMenuEntry::Settings), QStringLiteral("&Settings"));
    QCOMPARE(StatusItem::menuMnemonicLabel(StatusMenuEntry::HideAmounts), QStringLiteral("&Hide amounts"));
    QCOMPARE(StatusItem::menuMnemonicLabel(StatusMenuEntry::Quit), QStringLiteral("&Quit Inkwarden"));
    QCOMPARE(StatusItem::withoutMnemonic(StatusItem::menuMnemonicLabel(StatusMenuEntry::Open)),
             QStringLiteral("Open Inkwarden"));
    QCOMPARE(StatusItem::withoutMnemonic(StatusItem::menuMnemonicLabel(StatusMenuEntry::Refresh)),
             QStringLiteral("Refresh"));
    QCOMPARE(StatusItem::withoutMnemonic(StatusItem::menuMnemonicLabel(StatusMenuEntry::Settings)),
             QStringLiteral("Settings"));
    QCOMPARE(StatusItem::withoutMnemonic(StatusItem::menuMnemonicLabel(StatusMenuEntry::HideAmounts)),
             QStringLiteral("Hide amounts"));
    QCOMPARE(StatusItem::withoutMnemonic(StatusItem::menuMnemonicLabel(StatusMenuEntry::Quit)),
             QStringLiteral("Quit Inkwarden"));
    const QLocale c = QLocale::c();
    QCOMPARE(SalesBreakdownMetric::countedUnits(1, c), QStringLiteral("1 unit"));
    QCOMPARE(SalesBreakdownMetric::countedUnits(0, c), QStringLiteral("0 units"));
    QCOMPARE(SalesBreakdownMetric::countedUnits(2, c), QStringLiteral("2 units"));
    QCOMPARE(RoyaltiesError::rateLimited(1).errorDescription(),
             QStringLiteral("Please wait 1 seconds before requesting royalties again."));

    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    const double before = store.highlightedRoyalty();
    m_fixture->clock.advance(30min);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->notifications.shown.size(), 1);
    QCOMPARE(m_fixture->notifications.shown.first().title,
             u'+' + store.money(store.highlightedRoyalty() - before, false) + QStringLiteral(" in royalties"));
    QCOMPARE(m_fixture->notifications.shown.first().body,
             QStringLiteral("Today: ") + store.money(store.highlightedRoyalty(), false));
}

void TestTranslations::theSettingsFileReadsBackTheSameInAnotherLanguage()
{
    QByteArray written;
    {
        const AppTranslations german({QStringLiteral("de")});
        RoyaltiesStore &store = m_fixture->makeRefreshedStore();
        // Once the cooldown after the first figures allows another period.
        m_fixture->clock.advance(3s);
        QVERIFY(m_fixture->waitUntilIdle());
        store.selectPeriod(RoyaltyPeriod::thisMonth);
        QCOMPARE(store.selectedPeriod(), RoyaltyPeriod(RoyaltyPeriod::thisMonth));
        store.settings().setDisplayedRoyalty(DisplayedRoyalty::net);
        store.moveSalesMetric(SalesBreakdownMetric::kenpReads, -2);
        store.setSalesMetricHidden(QStringLiteral("audiobooks"), true);
        store.alerts().setQuietHoursEnabled(true);
        store.alerts().setQuietHoursStartText(QStringLiteral("21:30"));
        store.alerts().setQuietHoursEnd(QTime(6, 0));
        store.setHideAmounts(true);
        store.persistSettings();
        store.persistSalesMetricPreferences();
        m_fixture->destroyStore();
        // On disk, as the next start finds it.
        m_fixture->reopenPreferences();
        written = fileBytes(m_fixture->preferences().filePath());
    }
    QVERIFY(!written.isEmpty());
    // Raw values only (a period's and the displayed royalty's raw value is its English name): none of the German
    // names of what was chosen is in the file.
    for (const char *raw : {"selectedPeriod=This Month", "displayedRoyalty=Net royalties", "kenpReads",
                            "hiddenSalesMetrics=audiobooks", "quietHoursStart=21:30", "quietHoursEnd=06:00"}) {
        QVERIFY2(written.contains(raw), raw);
    }
    const TranslationCatalog german = catalog(QStringLiteral("de"));
    const QStringList shownNames{german.text(QStringLiteral("RoyaltyPeriod"), QStringLiteral("This Month")),
                                 german.text(QStringLiteral("DisplayedRoyalty"), QStringLiteral("Net royalties")),
                                 german.text(QStringLiteral("SalesBreakdownMetric"), QStringLiteral("Audiobooks")),
                                 german.text(QStringLiteral("SalesBreakdownMetric"), QStringLiteral("KENP reads"))};
    for (const QString &name : shownNames) {
        QVERIFY(!name.isEmpty());
        QVERIFY2(!QString::fromUtf8(written).contains(name), qPrintable(name));
    }

    const AppTranslations japanese({QStringLiteral("ja")});
    RoyaltiesStore &again = m_fixture->makeStore();
    QCOMPARE(again.selectedPeriod(), RoyaltyPeriod(RoyaltyPeriod::thisMonth));
    QCOMPARE(again.displayedRoyalty(), DisplayedRoyalty(DisplayedRoyalty::net));
    QVERIFY(again.hiddenSalesMetrics().contains(SalesBreakdownMetric::audiobooks));
    QCOMPARE(again.alerts().quietHoursStart(), QTime(21, 30));
    QCOMPARE(again.alerts().quietHoursEnd(), QTime(6, 0));
    QVERIFY(again.hideAmounts());
    // Saved again under Japanese, the file is the same, byte for byte.
    again.persistSettings();
    again.persistSalesMetricPreferences();
    m_fixture->destroyStore();
    m_fixture->reopenPreferences();
    QCOMPARE(fileBytes(m_fixture->preferences().filePath()), written);
}

QTEST_GUILESS_MAIN(TestTranslations)
#include "tst_translations.moc"
