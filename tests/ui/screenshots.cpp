// Renders every screen of the popover offscreen, in a light and a dark desktop palette, to PNG
// files, against stores set up in the states a person meets. Prints the path of each file.
// Given a language ("de"), renders the connect view, the dashboard and the settings in that language
// instead, into a folder of the language's name.

#include "SampleFigures.h"
#include "ViewHarness.h"
#include "shell/AppTranslations.h"
#include "store/AppUpdates.h"
#include "store/BrowserSignIn.h"
#include "store/ConnectionSession.h"
#include "store/OpenAtLogin.h"
#include "store/StoreSettings.h"
#include "store/StoreStatus.h"
#include "support/StoreFixture.h"

#include <QDir>
#include <QGuiApplication>
#include <QKeySequence>
#include <QPalette>

#include <cstdio>
#include <functional>

namespace {

QPalette desktopPalette(bool dark)
{
    QPalette palette;
    const QColor window = dark ? QColor(0x24, 0x24, 0x24) : QColor(0xf6, 0xf5, 0xf4);
    const QColor base = dark ? QColor(0x36, 0x36, 0x36) : QColor(0xff, 0xff, 0xff);
    const QColor text = dark ? QColor(0xff, 0xff, 0xff) : QColor(0x1f, 0x1f, 0x1f);
    for (const auto role : {QPalette::Window, QPalette::Button}) {
        palette.setColor(role, dark ? QColor(0x30, 0x30, 0x30) : QColor(0xf0, 0xef, 0xee));
    }
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, dark ? QColor(0x2e, 0x2e, 0x2e) : QColor(0xf6, 0xf5, 0xf4));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, text);
    }
    palette.setColor(QPalette::PlaceholderText, dark ? QColor(0x9a, 0x9a, 0x9a) : QColor(0x8a, 0x8a, 0x8a));
    palette.setColor(QPalette::Highlight, QColor(0x35, 0x84, 0xe4));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Mid, dark ? QColor(0x50, 0x50, 0x50) : QColor(0xc0, 0xbf, 0xbc));
    palette.setColor(QPalette::Dark, dark ? QColor(0x18, 0x18, 0x18) : QColor(0xa0, 0xa0, 0xa0));
    palette.setColor(QPalette::Light, dark ? QColor(0x48, 0x48, 0x48) : Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, dark ? QColor(0x80, 0x80, 0x80) : QColor(0xa0, 0xa0, 0xa0));
    }
    return palette;
}

struct Screen {
    QString name;
    std::function<void(StoreFixture &)> arrange;
    // Runs once the view is shown: opens a fold, scrolls to a part.
    std::function<void(ViewHarness &)> present;
};

void showFigures(StoreFixture &fixture, RoyaltiesStore &store, const RoyaltySummary &summary)
{
    store.session().setSummary(summary);
    store.session().setLastUpdated(fixture.clock.now().addSecs(-134));
    store.session().setNextRefreshAt(fixture.clock.now().addSecs(1800 - 134));
}

void scrollTo(ViewHarness &view, const QString &name)
{
    if (QQuickItem *item = view.item(name)) {
        view.ensureVisible(item);
    }
}

// Presses Tab until the control named so (inside the one named `scope`, when given) has the
// keyboard focus, and shows its focus ring.
void tabTo(ViewHarness &view, const QString &name, const QString &scope = {})
{
    QQuickItem *target = view.item(name, scope.isEmpty() ? nullptr : view.find(scope));
    for (int i = 0; target && i < 80 && view.window()->activeFocusItem() != target; ++i) {
        view.keyChord(QKeySequence(Qt::Key_Tab));
    }
}

QList<Screen> screens()
{
    const auto connected = [](StoreFixture &fixture) -> RoyaltiesStore & { return fixture.makeConnectedStore(); };
    const auto settings = [connected](StoreFixture &fixture) -> RoyaltiesStore & {
        RoyaltiesStore &store = connected(fixture);
        store.status().setIsShowingSettings(true);
        store.settings().setAccountID(QStringLiteral("acct-1"));
        return store;
    };
    const auto accounts = [](int count) {
        QList<PublisherAccount> list{
            {QStringLiteral("acct-1"), QStringLiteral("maria@example.com"), QStringLiteral("Maria Ostrova"),
             QStringLiteral("owner")},
            {QStringLiteral("acct-2"), QStringLiteral("press@example.com"), std::nullopt, QStringLiteral("reader")}};
        return list.mid(0, count);
    };
    const auto expand = [](ViewHarness &view) {
        view.find(QStringLiteral("connectView"))->setProperty("showsManualConnection", true);
    };
    return {
        {QStringLiteral("connect-collapsed"), [](StoreFixture &f) { f.makeStore(); }, {}},
        {QStringLiteral("connect-expanded"),
         [](StoreFixture &f) { f.makeStore().session().setApiKey(QStringLiteral("ink_live_4f9a2c")); }, expand},
        {QStringLiteral("connect-waiting-for-browser"),
         [](StoreFixture &f) { f.makeStore().signIn().setIsAuthenticating(true); },
         {}},
        {QStringLiteral("connect-connecting"),
         [](StoreFixture &f) {
             RoyaltiesStore &store = f.makeStore();
             store.session().setApiKey(QStringLiteral("ink_live_4f9a2c"));
             store.session().setIsLoading(true);
         },
         expand},
        {QStringLiteral("connect-error"),
         [](StoreFixture &f) {
             f.makeStore().status().setErrorMessage(
                 QStringLiteral("The API key was not accepted. Check it in My Account and "
                                "try again."));
         },
         {}},
        {QStringLiteral("dashboard-first-load"),
         [connected](StoreFixture &f) { connected(f).session().setIsLoading(true); },
         {}},
        {QStringLiteral("dashboard-usd"),
         [connected](StoreFixture &f) { showFigures(f, connected(f), sampleFigures()); },
         {}},
        {QStringLiteral("dashboard-eur"),
         [connected](StoreFixture &f) { showFigures(f, connected(f), sampleFigures(QStringLiteral("EUR"))); },
         {}},
        {QStringLiteral("dashboard-loading"),
         [connected](StoreFixture &f) {
             RoyaltiesStore &store = connected(f);
             showFigures(f, store, sampleFigures());
             store.session().setIsLoading(true);
         },
         {}},
        {QStringLiteral("dashboard-error-keeps-figures"),
         [connected](StoreFixture &f) {
             RoyaltiesStore &store = connected(f);
             showFigures(f, store, sampleFigures());
             store.status().setErrorMessage(
                 QStringLiteral("The server is having trouble right now. Please try again in a few "
                                "minutes."));
         },
         [](ViewHarness &view) { scrollTo(view, QStringLiteral("errorBanner")); }},
        {QStringLiteral("dashboard-offline"),
         [connected](StoreFixture &f) {
             RoyaltiesStore &store = connected(f);
             showFigures(f, store, sampleFigures());
             store.session().setIsNetworkAvailable(false);
         },
         {}},
        {QStringLiteral("dashboard-cooldown"),
         [connected](StoreFixture &f) {
             RoyaltiesStore &store = connected(f);
             store.refresh();
             f.waitUntilIdle();
         },
         {}},
        {QStringLiteral("dashboard-update-available"),
         [connected](StoreFixture &f) {
             RoyaltiesStore &store = connected(f);
             showFigures(f, store, sampleFigures());
             store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
         },
         {}},
        {QStringLiteral("dashboard-update-downloaded"),
         [connected](StoreFixture &f) {
             RoyaltiesStore &store = connected(f);
             showFigures(f, store, sampleFigures());
             store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
             store.updates().setDownloadedUpdateURL(
                 QUrl::fromLocalFile(f.cacheFolder() + QStringLiteral("/Inkwarden-1.5.0.deb")));
             store.updates().setUpdateStatusMessage(
                 QStringLiteral("Installer opened. If it is not visible, choose Show in Files."));
         },
         {}},
        {QStringLiteral("dashboard-every-metric-hidden"),
         [connected](StoreFixture &f) {
             RoyaltiesStore &store = connected(f);
             showFigures(f, store, sampleFigures());
             QSet<SalesBreakdownMetric> all;
             for (const SalesBreakdownMetric metric : SalesBreakdownMetric::allCases()) {
                 all.insert(metric);
             }
             store.settings().setHiddenSalesMetrics(all);
         },
         [](ViewHarness &view) { scrollTo(view, QStringLiteral("salesBreakdownCard")); }},
        {QStringLiteral("dashboard-custom-formats"),
         [connected](StoreFixture &f) {
             RoyaltiesStore &store = connected(f);
             RoyaltySummary summary = sampleFigures();
             summary.customFormats.insert(QStringLiteral("Box sets"), FormatSalesSummary{9, 161.91});
             summary.customFormats.insert(QStringLiteral("Large print"), FormatSalesSummary{1, 7.8});
             summary.customFormats.insert(QStringLiteral("Paperbacks"), FormatSalesSummary{4, 22});
             showFigures(f, store, summary);
             store.settings().setHiddenSalesMetrics(
                 {SalesBreakdownMetric::hardcovers, SalesBreakdownMetric::audiobooks,
                  SalesBreakdownMetric::expandedDistribution, SalesBreakdownMetric::kenpReads,
                  SalesBreakdownMetric::currentPreOrders, SalesBreakdownMetric::freeEbooks});
         },
         [](ViewHarness &view) { scrollTo(view, QStringLiteral("salesBreakdownCard")); }},
        {QStringLiteral("dashboard-large-negative-net"),
         [connected](StoreFixture &f) {
             RoyaltiesStore &store = connected(f);
             RoyaltySummary summary = sampleFigures();
             summary.spending = 15840.12;
             summary.net = summary.gross - summary.spending;
             showFigures(f, store, summary);
             store.settings().setDisplayedRoyalty(DisplayedRoyalty::net);
         },
         {}},
        {QStringLiteral("settings-loading-accounts"),
         [settings](StoreFixture &f) { settings(f).session().setIsLoadingAccounts(true); },
         {}},
        {QStringLiteral("settings-no-account"), [settings](StoreFixture &f) { settings(f); }, {}},
        {QStringLiteral("settings-one-account"),
         [settings, accounts](StoreFixture &f) { settings(f).session().setAccounts(accounts(1)); },
         {}},
        {QStringLiteral("settings-two-accounts"),
         [settings, accounts](StoreFixture &f) { settings(f).session().setAccounts(accounts(2)); },
         {}},
        {QStringLiteral("settings-approval-required"),
         [settings, accounts](StoreFixture &f) {
             RoyaltiesStore &store = settings(f);
             store.session().setAccounts(accounts(1));
             store.login().setLaunchAtLoginRequiresApproval(true);
         },
         [](ViewHarness &view) { scrollTo(view, QStringLiteral("approvalNotice")); }},
        {QStringLiteral("settings-notifications"),
         [settings, accounts](StoreFixture &f) {
             RoyaltiesStore &store = settings(f);
             store.session().setAccounts(accounts(1));
             store.alerts().setNotificationSound(true);
             store.alerts().setQuietHoursEnabled(true);
         },
         [](ViewHarness &view) { scrollTo(view, QStringLiteral("privacyField")); }},
        {QStringLiteral("dashboard-amounts-hidden"),
         [connected](StoreFixture &f) {
             RoyaltiesStore &store = connected(f);
             showFigures(f, store, sampleFigures());
             store.setHideAmounts(true);
         },
         {}},
        {QStringLiteral("settings-update-downloading"),
         [settings, accounts](StoreFixture &f) {
             RoyaltiesStore &store = settings(f);
             store.session().setAccounts(accounts(1));
             store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
             store.updates().setIsDownloadingUpdate(true);
             store.updates().setUpdateStatusMessage(QStringLiteral("Downloading update") + QChar(0x2026)
                                                    + QStringLiteral(" You can keep using Inkwarden."));
         },
         [](ViewHarness &view) { scrollTo(view, QStringLiteral("versionField")); }},
        {QStringLiteral("connect-keyboard-focus"), [](StoreFixture &f) { f.makeStore(); },
         [](ViewHarness &view) {
             tabTo(view, QStringLiteral("quitButton"));
             tabTo(view, QStringLiteral("signInButton"));
         }},
        {QStringLiteral("dashboard-keyboard-focus"),
         [connected](StoreFixture &f) { showFigures(f, connected(f), sampleFigures()); },
         [](ViewHarness &view) { view.keyChord(QKeySequence(Qt::Key_Tab)); }},
        {QStringLiteral("settings-keyboard-focus"),
         [settings, accounts](StoreFixture &f) { settings(f).session().setAccounts(accounts(2)); },
         [](ViewHarness &view) { tabTo(view, QStringLiteral("moveDownButton"), QStringLiteral("metricSetting2")); }},
    };
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("screenshots");
    const QString language = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString();
    const AppTranslations translations(language.isEmpty() ? QStringList() : QStringList{language});
    if (translations.language() != language) {
        std::fprintf(stderr, "Inkwarden has no translation for %s\n", qPrintable(language));
        return 1;
    }
    const QStringList translatedScreens{QStringLiteral("connect-collapsed"), QStringLiteral("dashboard-usd"),
                                        QStringLiteral("settings-two-accounts"),
                                        QStringLiteral("settings-notifications")};
    if (!language.isEmpty()) {
        folder = QDir(folder).filePath(language);
    }
    if (!QDir().mkpath(folder)) {
        std::fprintf(stderr, "cannot create %s\n", qPrintable(folder));
        return 1;
    }
    int failures = 0;
    for (const bool dark : {false, true}) {
        QGuiApplication::setPalette(desktopPalette(dark));
        for (const Screen &screen : screens()) {
            if (!language.isEmpty() && !translatedScreens.contains(screen.name)) {
                continue;
            }
            StoreFixture fixture;
            fixture.appInfo = AppInfo{QStringLiteral("1.4.0"), std::nullopt};
            screen.arrange(fixture);
            ViewHarness view(&fixture.store(), ViewHarness::view(QStringLiteral("MenuContentView")));
            if (!view.loaded()) {
                std::fprintf(stderr, "%s: %s\n", qPrintable(screen.name), qPrintable(view.errors()));
                ++failures;
                continue;
            }
            if (screen.present) {
                screen.present(view);
            }
            view.settle();
            const QString path = QDir(folder).absoluteFilePath(
                screen.name + (dark ? QStringLiteral("-dark.png") : QStringLiteral("-light.png")));
            if (view.grab(path)) {
                std::printf("%s\n", qPrintable(path));
            } else {
                std::fprintf(stderr, "could not write %s\n", qPrintable(path));
                ++failures;
            }
        }
    }
    return failures == 0 ? 0 : 1;
}
