// Shows Inkwarden's status item with a figure, without the rest of the app, so that it can be looked
// at in a real panel: tests/statusitem/show-in-xfce-panel.sh runs it under Xvfb with xfce4-panel.
//
//   inkwarden-statusitem-demo [--amount 1,234.56] [--currency $] [--placeholder] [--quit-after SECONDS]
//
// Clicks and menu entries are printed on standard output.
#include "platform/StatusItemSelector.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTextStream>
#include <QTimer>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("inkwarden-statusitem-demo"));
    QApplication::setQuitOnLastWindowClosed(false);

    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption amount(QStringLiteral("amount"), QStringLiteral("The figure."), QStringLiteral("text"),
                                    QStringLiteral("1,234.56"));
    const QCommandLineOption currency(QStringLiteral("currency"), QStringLiteral("The currency symbol."),
                                      QStringLiteral("text"), QStringLiteral("$"));
    const QCommandLineOption placeholder(QStringLiteral("placeholder"),
                                         QStringLiteral("Show the title before the first refresh."));
    const QCommandLineOption quitAfter(QStringLiteral("quit-after"), QStringLiteral("Quit after this many seconds."),
                                       QStringLiteral("seconds"));
    parser.addOptions({amount, currency, placeholder, quitAfter});
    parser.process(app);

    QTextStream out(stdout);
    StatusItemSelector item;
    QObject::connect(&item, &StatusItemSelector::kindChanged, [&out](StatusItemSelector::Kind kind) {
        out << "showing: " << (kind == StatusItemSelector::Kind::TrayIcon ? "XEmbed tray icon" : "StatusNotifierItem")
            << Qt::endl;
    });
    out << "showing: "
        << (item.kind() == StatusItemSelector::Kind::TrayIcon ? "XEmbed tray icon" : "StatusNotifierItem") << Qt::endl;

    MenuBarTitle title{QStringLiteral("◉ —"), std::nullopt};
    if (!parser.isSet(placeholder)) {
        title = MenuBarTitle{parser.value(currency) + parser.value(amount),
                             MenuBarMoneyParts{parser.value(currency), parser.value(amount)}};
    }
    item.setTitle(title);
    item.setToolTip(title.figure(), QStringLiteral("Refreshed just now"));

    QObject::connect(&item, &StatusItem::activated, [&out](QPoint point) {
        out << "activated at " << point.x() << ", " << point.y() << (point.isNull() ? " (unknown)" : "") << Qt::endl;
    });
    QObject::connect(&item, &StatusItem::menuOpenRequested, [&out] { out << "open" << Qt::endl; });
    QObject::connect(&item, &StatusItem::refreshRequested, [&out] { out << "refresh" << Qt::endl; });
    QObject::connect(&item, &StatusItem::settingsRequested, [&out] { out << "settings" << Qt::endl; });
    QObject::connect(&item, &StatusItem::quitRequested, &app, &QApplication::quit);
    if (parser.isSet(quitAfter)) {
        QTimer::singleShot(std::chrono::seconds(parser.value(quitAfter).toInt()), &app, &QApplication::quit);
    }
    return app.exec();
}
