// The status item on a private session bus (tests/desktop/run-with-session-bus.sh starts it) with
// the test watcher of tests/statusitem, read back with the real gdbus as a panel would read it:
// registration, properties, icon, label, tool tip, menu, clicks, a watcher that restarts, and the
// choice between the StatusNotifierItem and the XEmbed fallback.
#include "platform/DBusMenu.h"
#include "platform/StatusItemSelector.h"
#include "platform/StatusNotifierItem.h"
#include "platform/TrayIconStatusItem.h"
#include "support/ScopedEnvironment.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFileInfo>
#include <QImageReader>
#include <QMenu>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

Q_DECLARE_METATYPE(StatusMenuEntry)

namespace {

const QString ItemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString MenuInterface = QStringLiteral("com.canonical.dbusmenu");

struct GdbusResult {
    int exitCode = -1;
    QString output;
    QString error;
};

// Runs gdbus with the event loop turning, so that the objects of this process can answer it.
GdbusResult gdbus(const QStringList &arguments)
{
    QProcess process;
    QSignalSpy finished(&process, &QProcess::finished);
    process.start(QStringLiteral("gdbus"), arguments);
    if (!process.waitForStarted(5000) || (!finished.size() && !finished.wait(15000))) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()).trimmed(),
            QString::fromUtf8(process.readAllStandardError()).trimmed()};
}

GdbusResult call(const QString &service, const QString &path, const QString &method, const QStringList &arguments = {})
{
    return gdbus(QStringList{QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--dest"), service,
                             QStringLiteral("--object-path"), path, QStringLiteral("--method"), method}
                 + arguments);
}

// A property as gdbus prints it, "(<'Inkwarden'>,)" for a string.
QString busProperty(const QString &service, const QString &path, const QString &interface, const QString &name)
{
    return call(service, path, QStringLiteral("org.freedesktop.DBus.Properties.Get"), {interface, name}).output;
}

QString itemProperty(const StatusNotifierItem &item, const QString &name)
{
    return busProperty(item.serviceName(), StatusNotifierItem::objectPath(), ItemInterface, name);
}

QString quoted(const QString &text)
{
    return QStringLiteral("(<'%1'>,)").arg(text);
}

MenuBarTitle figure(const QString &amount)
{
    return MenuBarTitle{QStringLiteral("$") + amount, MenuBarMoneyParts{QStringLiteral("$"), amount}};
}

// `gdbus monitor` on one service: the signals it sends, as text.
class SignalMonitor
{
public:
    explicit SignalMonitor(const QString &service)
    {
        m_process.start(QStringLiteral("gdbus"),
                        {QStringLiteral("monitor"), QStringLiteral("--session"), QStringLiteral("--dest"), service});
    }
    ~SignalMonitor()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    bool waitUntilWatching() { return waitFor(QStringLiteral("is owned by")); }
    bool waitFor(const QString &text)
    {
        QElapsedTimer timer;
        timer.start();
        while (!m_output.contains(text) && timer.elapsed() < 10000) {
            QTest::qWait(20);
            m_output += QString::fromUtf8(m_process.readAllStandardOutput());
        }
        return m_output.contains(text);
    }
    const QString &output() const { return m_output; }

private:
    QProcess m_process;
    QString m_output;
};

// An item of either kind for the selector: counts how many exist at once.
class FakeStatusItem : public StatusItem
{
public:
    explicit FakeStatusItem(StatusItemSelector::Kind itemKind)
        : kind(itemKind)
    {
        mostAlive = std::max(mostAlive, ++alive);
    }
    ~FakeStatusItem() override { --alive; }
    void setTitle(const MenuBarTitle &newTitle) override { title = newTitle; }
    void setToolTip(const QString &tipTitle, const QString &body) override { toolTip = {tipTitle, body}; }
    void setAccessibleTitle(const QString &words) override { accessibleTitle = words; }
    void click(QPoint point) { Q_EMIT activated(point); }

    static inline int alive = 0;
    static inline int mostAlive = 0;
    StatusItemSelector::Kind kind;
    MenuBarTitle title;
    QStringList toolTip;
    QString accessibleTitle;
};

} // namespace

class StatusNotifierItemTest : public QObject
{
    Q_OBJECT

private:
    bool startWatcher()
    {
        m_watcher = std::make_unique<QProcess>();
        m_watcher->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_watcher->start(QStringLiteral(INKWARDEN_TEST_WATCHER));
        if (!m_watcher->waitForStarted(5000)) {
            return false;
        }
        QElapsedTimer timer;
        timer.start();
        QByteArray output;
        while (!output.contains("ready") && timer.elapsed() < 10000) {
            m_watcher->waitForReadyRead(100);
            output += m_watcher->readAllStandardOutput();
        }
        return output.contains("ready");
    }

    void stopWatcher()
    {
        if (m_watcher) {
            m_watcher->kill();
            m_watcher->waitForFinished();
            m_watcher.reset();
        }
    }

    std::unique_ptr<StatusNotifierItem>
    makeItem(StatusNotifierItem::TitleImage titleImage = StatusNotifierItem::TitleImage::Never)
    {
        StatusNotifierItem::Options options;
        options.titleImage = titleImage;
        options.color = QColor(Qt::black);
        options.fileDirectory = m_files->path();
        options.devicePixelRatio = 1;
        return std::make_unique<StatusNotifierItem>(options);
    }

    std::unique_ptr<StatusNotifierItem> makeRegisteredItem()
    {
        auto item = makeItem();
        if (!item->isRegistered()) {
            QSignalSpy registered(item.get(), &StatusNotifierItem::registeredChanged);
            registered.wait(10000);
        }
        return item;
    }

    QStringList registeredWithWatcher()
    {
        const QString text =
            busProperty(StatusNotifierItem::watcherService(), QStringLiteral("/StatusNotifierWatcher"),
                        StatusNotifierItem::watcherService(), QStringLiteral("RegisteredStatusNotifierItems"));
        QStringList items;
        static const QRegularExpression quotedText(QStringLiteral("'([^']*)'"));
        for (const QRegularExpressionMatch &match : quotedText.globalMatch(text)) {
            items.append(match.captured(1));
        }
        return items;
    }

    // The watcher forgets `item` as a host that gave up on it does.
    GdbusResult dropFromWatcher(const QString &item)
    {
        return call(StatusNotifierItem::watcherService(), QStringLiteral("/StatusNotifierWatcher"),
                    StatusNotifierItem::watcherService() + QStringLiteral(".DropItem"),
                    {QStringLiteral("'%1'").arg(item)});
    }

    std::unique_ptr<QProcess> m_watcher;
    std::unique_ptr<QTemporaryDir> m_files;

private Q_SLOTS:
    void initTestCase()
    {
        if (qEnvironmentVariable("INKWARDEN_PRIVATE_SESSION_BUS") != QLatin1String("1")) {
            QSKIP("runs only on the private session bus of tests/desktop/run-with-session-bus.sh");
        }
        QVERIFY(QDBusConnection::sessionBus().isConnected());
        QVERIFY2(!QStandardPaths::findExecutable(QStringLiteral("gdbus")).isEmpty(),
                 "gdbus (libglib2.0-bin) is missing");
    }

    void init()
    {
        m_files = std::make_unique<QTemporaryDir>();
        QVERIFY(m_files->isValid());
        QVERIFY(startWatcher());
    }

    void cleanup()
    {
        stopWatcher();
        m_files.reset();
    }

    void theItemRegistersWithTheWatcher()
    {
        auto item = makeRegisteredItem();
        QVERIFY(item->isRegistered());
        QVERIFY(item->serviceName().startsWith(
            QStringLiteral("org.kde.StatusNotifierItem-%1-").arg(QCoreApplication::applicationPid())));
        QCOMPARE(registeredWithWatcher(), QStringList{item->serviceName() + StatusNotifierItem::objectPath()});
    }

    void theItemNamesItselfAndItsMenu()
    {
        auto item = makeRegisteredItem();
        QCOMPARE(itemProperty(*item, QStringLiteral("Category")), quoted(QStringLiteral("ApplicationStatus")));
        QCOMPARE(itemProperty(*item, QStringLiteral("Id")), quoted(QStringLiteral("com.inkwarden.menubar")));
        // The name alone until the app says the figure in words.
        QCOMPARE(itemProperty(*item, QStringLiteral("Title")), quoted(QStringLiteral("Inkwarden")));
        QCOMPARE(itemProperty(*item, QStringLiteral("Status")), quoted(QStringLiteral("Active")));
        QCOMPARE(itemProperty(*item, QStringLiteral("ItemIsMenu")), QStringLiteral("(<false>,)"));
        QCOMPARE(itemProperty(*item, QStringLiteral("Menu")), QStringLiteral("(<objectpath '/MenuBar'>,)"));
    }

    void theIconNameFindsAPngInTheIconThemePath()
    {
        auto item = makeRegisteredItem();
        QCOMPARE(itemProperty(*item, QStringLiteral("IconName")), quoted(QStringLiteral("inkwarden-status")));
        QCOMPARE(itemProperty(*item, QStringLiteral("IconThemePath")), quoted(m_files->path()));
        QImageReader reader(m_files->filePath(QStringLiteral("inkwarden-status.png")));
        QCOMPARE(reader.format(), QByteArray("png"));
        const QSize size = reader.size();
        QVERIFY(size.width() >= 32);
        QCOMPARE(size.width(), size.height());
    }

    void theIconPixmapsAreSquareAndDrawn()
    {
        auto item = makeRegisteredItem();
        const QString text = itemProperty(*item, QStringLiteral("IconPixmap"));
        // Each pixmap prints as "(W, H, [0x00, ...])", the first one's bytes typed as "[byte 0x00, ...".
        static const QRegularExpression header(QStringLiteral("\\((\\d+), (\\d+), \\[(?:byte )?"));
        int count = 0;
        for (const QRegularExpressionMatch &match : header.globalMatch(text)) {
            ++count;
            const int width = match.captured(1).toInt();
            const int height = match.captured(2).toInt();
            QCOMPARE(width, height);
            QVERIFY(width >= 16);
            const qsizetype bytesStart = match.capturedEnd();
            const qsizetype end = text.indexOf(QLatin1Char(']'), bytesStart);
            QVERIFY(end > 0);
            const QStringList bytes = text.mid(bytesStart, end - bytesStart).split(QStringLiteral(", "));
            QCOMPARE(bytes.size(), width * height * 4);
            // ARGB in network order: every fourth byte is an alpha; some are opaque.
            int opaque = 0;
            for (int index = 0; index < bytes.size(); index += 4) {
                opaque += bytes[index] == QLatin1String("0xff") ? 1 : 0;
            }
            QVERIFY2(opaque > width * height / 10, qPrintable(QString::number(opaque)));
        }
        QVERIFY2(count >= 3, qPrintable(text.left(200)));
    }

    void aNewTitleChangesTheLabelAndSaysSo()
    {
        auto item = makeRegisteredItem();
        SignalMonitor monitor(item->serviceName());
        QVERIFY(monitor.waitUntilWatching());

        item->setTitle(MenuBarTitle{QStringLiteral("◉ —"), std::nullopt});
        QVERIFY2(monitor.waitFor(QStringLiteral("org.kde.StatusNotifierItem.XAyatanaNewLabel ('◉ —', '◉ —')")),
                 qPrintable(monitor.output()));
        QCOMPARE(itemProperty(*item, QStringLiteral("XAyatanaLabel")), quoted(QStringLiteral("◉ —")));

        item->setTitle(figure(QStringLiteral("1,234.56")));
        QVERIFY2(monitor.waitFor(
                     QStringLiteral("org.kde.StatusNotifierItem.XAyatanaNewLabel ('· $1,234.56', '· $8,888.88')")),
                 qPrintable(monitor.output()));
        QCOMPARE(itemProperty(*item, QStringLiteral("XAyatanaLabel")), quoted(QStringLiteral("· $1,234.56")));
        QCOMPARE(itemProperty(*item, QStringLiteral("XAyatanaLabelGuide")), quoted(QStringLiteral("· $8,888.88")));
    }

    void theTitleSaysTheFigureInWordsAndSaysSo()
    {
        auto item = makeRegisteredItem();
        SignalMonitor monitor(item->serviceName());
        QVERIFY(monitor.waitUntilWatching());
        QSignalSpy changed(item.get(), &StatusNotifierItem::accessibleTitleChanged);

        item->setAccessibleTitle(QStringLiteral("Inkwarden: Not signed in"));
        QVERIFY2(monitor.waitFor(QStringLiteral("org.kde.StatusNotifierItem.NewTitle ()")),
                 qPrintable(monitor.output()));
        QCOMPARE(itemProperty(*item, QStringLiteral("Title")), quoted(QStringLiteral("Inkwarden: Not signed in")));

        item->setTitle(figure(QStringLiteral("1,235")));
        item->setAccessibleTitle(QStringLiteral("Inkwarden: Today $1,235"));
        QCOMPARE(changed.size(), 2);
        QCOMPARE(itemProperty(*item, QStringLiteral("Title")), quoted(QStringLiteral("Inkwarden: Today $1,235")));
        // The same words again are no news for the host.
        item->setAccessibleTitle(QStringLiteral("Inkwarden: Today $1,235"));
        QCOMPARE(changed.size(), 2);

        // Hidden amounts: the Title holds the mask the label shows, and no digit.
        item->setTitle(figure(QStringLiteral(u"\u2022\u2022\u2022")));
        item->setAccessibleTitle(QStringLiteral(u"Inkwarden: Today $\u2022\u2022\u2022"));
        QCOMPARE(changed.size(), 3);
        const QString masked = itemProperty(*item, QStringLiteral("Title"));
        QCOMPARE(masked, quoted(QStringLiteral(u"Inkwarden: Today $\u2022\u2022\u2022")));
        QVERIFY(!masked.contains(QRegularExpression(QStringLiteral("[0-9]"))));
        QCOMPARE(itemProperty(*item, QStringLiteral("XAyatanaLabel")),
                 quoted(QStringLiteral(u"\u00B7 $\u2022\u2022\u2022")));
        // The Id, which hosts remember the item by, never follows the title.
        QCOMPARE(itemProperty(*item, QStringLiteral("Id")), quoted(QStringLiteral("com.inkwarden.menubar")));
    }

    void aFailedRefreshAfterASuccessKeepsTheFigureOnTheLabel()
    {
        auto item = makeRegisteredItem();
        item->setTitle(figure(QStringLiteral("12.50")));
        QSignalSpy labels(item.get(), &StatusNotifierItem::labelChanged);
        item->setTitle(
            MenuBarTitle{QStringLiteral("◉ !"), MenuBarMoneyParts{QStringLiteral("$"), QStringLiteral("12.50")}});
        QCOMPARE(labels.size(), 0);
        QCOMPARE(itemProperty(*item, QStringLiteral("XAyatanaLabel")), quoted(QStringLiteral("· $12.50")));
    }

    void theToolTipCarriesTheFigureAndTheLastRefresh()
    {
        auto item = makeRegisteredItem();
        QCOMPARE(itemProperty(*item, QStringLiteral("ToolTip")),
                 QStringLiteral("(<('', @a(iiay) [], 'Inkwarden Royalties', '')>,)"));
        SignalMonitor monitor(item->serviceName());
        QVERIFY(monitor.waitUntilWatching());
        item->setToolTip(QStringLiteral("$1,234.56"), QStringLiteral("Refreshed 10:42"));
        QVERIFY2(monitor.waitFor(QStringLiteral("org.kde.StatusNotifierItem.NewToolTip ()")),
                 qPrintable(monitor.output()));
        QCOMPARE(itemProperty(*item, QStringLiteral("ToolTip")),
                 QStringLiteral("(<('', @a(iiay) [], '$1,234.56', 'Refreshed 10:42')>,)"));
    }

    void theMenuListsItsEntriesInOrder()
    {
        auto item = makeRegisteredItem();
        const GdbusResult layout =
            call(item->serviceName(), DBusMenu::objectPath(), MenuInterface + QStringLiteral(".GetLayout"),
                 {QStringLiteral("--"), QStringLiteral("0"), QStringLiteral("-1"), QStringLiteral("[]")});
        QCOMPARE(layout.exitCode, 0);
        static const QRegularExpression entry(
            QStringLiteral("\\((\\d+), \\{[^}]*?(?:'label': <'([^']*)'>|'type': <'(separator)'>)"));
        QStringList shown;
        for (const QRegularExpressionMatch &match : entry.globalMatch(layout.output)) {
            shown.append(match.captured(1) + QLatin1Char(' ')
                         + (match.captured(3).isEmpty() ? match.captured(2) : QStringLiteral("---")));
        }
        // Each label with its access key, as dbusmenu marks it.
        QCOMPARE(shown, (QStringList{QStringLiteral("1 _Open Inkwarden"), QStringLiteral("2 _Refresh"),
                                     QStringLiteral("3 _Settings"), QStringLiteral("6 _Hide amounts"),
                                     QStringLiteral("4 ---"), QStringLiteral("5 _Quit Inkwarden")}));
        QCOMPARE(busProperty(item->serviceName(), DBusMenu::objectPath(), MenuInterface, QStringLiteral("Version")),
                 QStringLiteral("(<uint32 3>,)"));
        QCOMPARE(
            busProperty(item->serviceName(), DBusMenu::objectPath(), MenuInterface, QStringLiteral("TextDirection")),
            quoted(QStringLiteral("ltr")));
        QCOMPARE(busProperty(item->serviceName(), DBusMenu::objectPath(), MenuInterface, QStringLiteral("Status")),
                 quoted(QStringLiteral("normal")));
        const GdbusResult label =
            call(item->serviceName(), DBusMenu::objectPath(), MenuInterface + QStringLiteral(".GetProperty"),
                 {QStringLiteral("5"), QStringLiteral("label")});
        QCOMPARE(label.output, QStringLiteral("(<'_Quit Inkwarden'>,)"));
    }

    void hideAmountsIsACheckBoxThatFollowsTheSetting()
    {
        auto item = makeRegisteredItem();
        const QString id = QString::number(DBusMenu::idOf(StatusMenuEntry::HideAmounts));
        const auto property = [&](const QString &name) {
            return call(item->serviceName(), DBusMenu::objectPath(), MenuInterface + QStringLiteral(".GetProperty"),
                        {id, name})
                .output;
        };
        QCOMPARE(property(QStringLiteral("toggle-type")), QStringLiteral("(<'checkmark'>,)"));
        QCOMPARE(property(QStringLiteral("toggle-state")), QStringLiteral("(<0>,)"));
        item->setAmountsHidden(true);
        QCOMPARE(property(QStringLiteral("toggle-state")), QStringLiteral("(<1>,)"));

        QSignalSpy toggled(item.get(), &StatusItem::hideAmountsToggled);
        const GdbusResult result =
            call(item->serviceName(), DBusMenu::objectPath(), MenuInterface + QStringLiteral(".Event"),
                 {id, QStringLiteral("clicked"), QStringLiteral("<0>"), QStringLiteral("0")});
        QCOMPARE(result.exitCode, 0);
        QTRY_COMPARE(toggled.size(), 1);
    }

    void clickingAMenuEntryEmitsItsSignal_data()
    {
        QTest::addColumn<StatusMenuEntry>("entry");
        QTest::newRow("Open Inkwarden") << StatusMenuEntry::Open;
        QTest::newRow("Refresh") << StatusMenuEntry::Refresh;
        QTest::newRow("Settings") << StatusMenuEntry::Settings;
        QTest::newRow("Quit Inkwarden") << StatusMenuEntry::Quit;
    }

    void clickingAMenuEntryEmitsItsSignal()
    {
        QFETCH(StatusMenuEntry, entry);
        auto item = makeRegisteredItem();
        QSignalSpy open(item.get(), &StatusItem::menuOpenRequested);
        QSignalSpy refresh(item.get(), &StatusItem::refreshRequested);
        QSignalSpy settings(item.get(), &StatusItem::settingsRequested);
        QSignalSpy quit(item.get(), &StatusItem::quitRequested);
        QSignalSpy activated(item.get(), &StatusItem::activated);
        const GdbusResult result =
            call(item->serviceName(), DBusMenu::objectPath(), MenuInterface + QStringLiteral(".Event"),
                 {QString::number(DBusMenu::idOf(entry)), QStringLiteral("clicked"), QStringLiteral("<0>"),
                  QStringLiteral("0")});
        QCOMPARE(result.exitCode, 0);
        QTRY_COMPARE(open.size() + refresh.size() + settings.size() + quit.size(), 1);
        QCOMPARE(open.size(), entry == StatusMenuEntry::Open ? 1 : 0);
        QCOMPARE(refresh.size(), entry == StatusMenuEntry::Refresh ? 1 : 0);
        QCOMPARE(settings.size(), entry == StatusMenuEntry::Settings ? 1 : 0);
        QCOMPARE(quit.size(), entry == StatusMenuEntry::Quit ? 1 : 0);
        QCOMPARE(activated.size(), 0);
    }

    void anEventForAnUnknownEntryIsAnError()
    {
        auto item = makeRegisteredItem();
        const GdbusResult result =
            call(item->serviceName(), DBusMenu::objectPath(), MenuInterface + QStringLiteral(".Event"),
                 {QStringLiteral("42"), QStringLiteral("clicked"), QStringLiteral("<0>"), QStringLiteral("0")});
        QVERIFY(result.exitCode != 0);
        QVERIFY2(result.error.contains(QStringLiteral("InvalidArgs")), qPrintable(result.error));
    }

    void activateReportsWhereTheClickWas()
    {
        auto item = makeRegisteredItem();
        QSignalSpy activated(item.get(), &StatusItem::activated);
        QCOMPARE(call(item->serviceName(), StatusNotifierItem::objectPath(),
                      ItemInterface + QStringLiteral(".Activate"), {QStringLiteral("120"), QStringLiteral("5")})
                     .exitCode,
                 0);
        QTRY_COMPARE(activated.size(), 1);
        QCOMPARE(activated.at(0).at(0).toPoint(), QPoint(120, 5));
    }

    void activateWithoutAPlaceGivesANullPoint()
    {
        auto item = makeRegisteredItem();
        QSignalSpy activated(item.get(), &StatusItem::activated);
        call(item->serviceName(), StatusNotifierItem::objectPath(), ItemInterface + QStringLiteral(".Activate"),
             {QStringLiteral("0"), QStringLiteral("0")});
        QTRY_COMPARE(activated.size(), 1);
        QVERIFY(activated.at(0).at(0).toPoint().isNull());
    }

    void theItemRegistersAgainWhenTheWatcherComesBack()
    {
        auto item = makeRegisteredItem();
        QSignalSpy registered(item.get(), &StatusNotifierItem::registeredChanged);
        stopWatcher();
        QTRY_VERIFY(!item->isRegistered());
        QVERIFY(startWatcher());
        QTRY_VERIFY_WITH_TIMEOUT(item->isRegistered(), 10000);
        QCOMPARE(registered.size(), 2);
        QCOMPARE(registeredWithWatcher(), QStringList{item->serviceName() + StatusNotifierItem::objectPath()});
    }

    void anItemTheWatcherDropsRegistersAgain()
    {
        auto item = makeRegisteredItem();
        const QString registeredItem = item->serviceName() + StatusNotifierItem::objectPath();
        QSignalSpy registered(item.get(), &StatusNotifierItem::registeredChanged);
        QCOMPARE(dropFromWatcher(registeredItem).exitCode, 0);
        QTRY_VERIFY(!item->isRegistered());
        QVERIFY(registeredWithWatcher().isEmpty());
        QTRY_VERIFY_WITH_TIMEOUT(item->isRegistered(), 10000);
        QCOMPARE(registered.size(), 2);
        QCOMPARE(registeredWithWatcher(), QStringList{registeredItem});
    }

    void anotherItemDroppedByTheWatcherLeavesThisOneAlone()
    {
        auto item = makeRegisteredItem();
        QSignalSpy registered(item.get(), &StatusNotifierItem::registeredChanged);
        // Another app's item, as the watcher knows it.
        const QString otherService = QStringLiteral("org.kde.StatusNotifierItem-1-1");
        QVERIFY(QDBusConnection::sessionBus().registerService(otherService));
        QCOMPARE(call(StatusNotifierItem::watcherService(), QStringLiteral("/StatusNotifierWatcher"),
                      StatusNotifierItem::watcherService() + QStringLiteral(".RegisterStatusNotifierItem"),
                      {QStringLiteral("'%1'").arg(otherService)})
                     .exitCode,
                 0);
        QCOMPARE(dropFromWatcher(otherService + StatusNotifierItem::objectPath()).exitCode, 0);
        QTest::qWait(StatusNotifierItem::registerAgainMilliseconds + 500);
        QVERIFY(QDBusConnection::sessionBus().unregisterService(otherService));
        QVERIFY(item->isRegistered());
        QVERIFY(registered.isEmpty());
        QCOMPARE(registeredWithWatcher(), QStringList{item->serviceName() + StatusNotifierItem::objectPath()});
    }

    void anItemStartedBeforeTheWatcherRegistersWhenItComes()
    {
        stopWatcher();
        auto item = makeItem();
        QTest::qWait(200);
        QVERIFY(!item->isRegistered());
        QVERIFY(startWatcher());
        QTRY_VERIFY_WITH_TIMEOUT(item->isRegistered(), 10000);
    }

    void aDestroyedItemLeavesTheBusAndTheWatcher()
    {
        auto item = makeRegisteredItem();
        const QString service = item->serviceName();
        item.reset();
        QVERIFY(!QDBusConnection::sessionBus().interface()->isServiceRegistered(service));
        QTRY_VERIFY(registeredWithWatcher().isEmpty());
    }

    void theLabelIsTheDefaultOnEveryDesktop_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("desktop");
        QTest::addColumn<QString>("override");
        QTest::addColumn<bool>("drawn");
        const int automatic = int(StatusNotifierItem::TitleImage::Auto);
        QTest::newRow("GNOME") << automatic << QStringLiteral("GNOME") << QString() << false;
        QTest::newRow("ubuntu:GNOME") << automatic << QStringLiteral("ubuntu:GNOME") << QString() << false;
        QTest::newRow("KDE") << automatic << QStringLiteral("KDE") << QString() << false;
        QTest::newRow("XFCE") << automatic << QStringLiteral("XFCE") << QString() << false;
        QTest::newRow("unset") << automatic << QString() << QString() << false;
        QTest::newRow("GNOME, turned off") << automatic << QStringLiteral("GNOME") << QStringLiteral("0") << false;
        QTest::newRow("KDE, turned on") << automatic << QStringLiteral("KDE") << QStringLiteral("1") << true;
        QTest::newRow("GNOME, turned on") << automatic << QStringLiteral("GNOME") << QStringLiteral("1") << true;
        QTest::newRow("always") << int(StatusNotifierItem::TitleImage::Always) << QStringLiteral("KDE")
                                << QStringLiteral("0") << true;
        QTest::newRow("never") << int(StatusNotifierItem::TitleImage::Never) << QStringLiteral("GNOME")
                               << QStringLiteral("1") << false;
    }

    void theLabelIsTheDefaultOnEveryDesktop()
    {
        QFETCH(int, mode);
        QFETCH(QString, desktop);
        QFETCH(QString, override);
        QFETCH(bool, drawn);
        const ScopedEnvironment currentDesktop("XDG_CURRENT_DESKTOP", desktop);
        const ScopedEnvironment titleImage("INKWARDEN_STATUS_TITLE_IMAGE",
                                           override.isEmpty() ? std::nullopt : std::optional(override));
        auto item = makeItem(StatusNotifierItem::TitleImage(mode));
        QTRY_VERIFY_WITH_TIMEOUT(item->isRegistered(), 10000);
        QCOMPARE(item->drawsTitleImage(), drawn);
        item->setTitle(figure(QStringLiteral("1,235")));
        if (drawn) {
            QVERIFY(QFileInfo(item->iconName()).isAbsolute());
            QCOMPARE(itemProperty(*item, QStringLiteral("XAyatanaLabel")), quoted(QString()));
        } else {
            // The square icon by name and the figure as text: what the AppIndicator extension shows.
            QCOMPARE(itemProperty(*item, QStringLiteral("IconName")), quoted(QStringLiteral("inkwarden-status")));
            QCOMPARE(itemProperty(*item, QStringLiteral("XAyatanaLabel")), quoted(QStringLiteral("· $1,235")));
            QCOMPARE(itemProperty(*item, QStringLiteral("XAyatanaLabelGuide")), quoted(QStringLiteral("· $8,888")));
        }
    }

    void aDrawnTitleIsAWidePngNamedByIconName()
    {
        auto item = makeItem(StatusNotifierItem::TitleImage::Always);
        QTRY_VERIFY_WITH_TIMEOUT(item->isRegistered(), 10000);
        SignalMonitor monitor(item->serviceName());
        QVERIFY(monitor.waitUntilWatching());
        item->setTitle(figure(QStringLiteral("1,234")));
        QVERIFY2(monitor.waitFor(QStringLiteral("org.kde.StatusNotifierItem.NewIcon ()")),
                 qPrintable(monitor.output()));

        const QString first = item->iconName();
        QVERIFY(QFileInfo(first).isAbsolute());
        QVERIFY(first.startsWith(m_files->path()));
        QCOMPARE(itemProperty(*item, QStringLiteral("IconName")), quoted(first));
        QCOMPARE(itemProperty(*item, QStringLiteral("XAyatanaLabel")), quoted(QString()));
        QImageReader reader(first);
        QCOMPARE(reader.format(), QByteArray("png"));
        QCOMPARE(reader.size().height(), 16);
        QVERIFY(reader.size().width() >= 1.5 * reader.size().height());

        // Each new picture gets a new name; the one before stays for a host still reading it.
        item->setTitle(figure(QStringLiteral("2,345")));
        const QString second = item->iconName();
        QVERIFY(second != first);
        QVERIFY(QFileInfo::exists(first));
        item->setTitle(figure(QStringLiteral("3,456")));
        QVERIFY(!QFileInfo::exists(first));
        QVERIFY(QFileInfo::exists(second));
        QVERIFY(QFileInfo::exists(item->iconName()));
        // The square icon is still published for hosts that read the pixmaps.
        QVERIFY(itemProperty(*item, QStringLiteral("IconPixmap")).contains(QStringLiteral("(16, 16, [byte")));
    }

    void theSelectorChoosesByWatcherWaitAndTray()
    {
        using Kind = StatusItemSelector::Kind;
        QCOMPARE(StatusItemSelector::choose(true, false, true), Kind::StatusNotifier);
        QCOMPARE(StatusItemSelector::choose(true, true, true), Kind::StatusNotifier);
        QCOMPARE(StatusItemSelector::choose(false, false, true), Kind::StatusNotifier);
        QCOMPARE(StatusItemSelector::choose(false, true, true), Kind::TrayIcon);
        QCOMPARE(StatusItemSelector::choose(false, true, false), Kind::StatusNotifier);
    }

    void withAWatcherTheSelectorShowsTheStatusNotifierItem()
    {
        StatusItemSelector selector;
        QCOMPARE(selector.kind(), StatusItemSelector::Kind::StatusNotifier);
        auto *item = qobject_cast<StatusNotifierItem *>(selector.current());
        QVERIFY(item);
        QTRY_VERIFY(item->isRegistered());
        QSignalSpy activated(&selector, &StatusItem::activated);
        call(item->serviceName(), StatusNotifierItem::objectPath(), ItemInterface + QStringLiteral(".Activate"),
             {QStringLiteral("7"), QStringLiteral("8")});
        QTRY_COMPARE(activated.size(), 1);
        QCOMPARE(activated.at(0).at(0).toPoint(), QPoint(7, 8));
    }

    void withoutAWatcherTheSelectorFallsBackToTheTrayAndNeverShowsBoth()
    {
        stopWatcher();
        FakeStatusItem::alive = 0;
        FakeStatusItem::mostAlive = 0;
        StatusItemSelector::Options options;
        options.watcherPatience = std::chrono::milliseconds(300);
        options.trayAvailable = [] { return true; };
        options.create = [](StatusItemSelector::Kind kind) { return std::make_unique<FakeStatusItem>(kind); };
        StatusItemSelector selector(options);
        selector.setTitle(figure(QStringLiteral("9.99")));
        selector.setToolTip(QStringLiteral("$9.99"), QStringLiteral("Refreshed 09:00"));
        selector.setAccessibleTitle(QStringLiteral("Inkwarden: Today $9.99"));
        QCOMPARE(selector.kind(), StatusItemSelector::Kind::StatusNotifier);

        QTRY_COMPARE(selector.kind(), StatusItemSelector::Kind::TrayIcon);
        auto *tray = static_cast<FakeStatusItem *>(selector.current());
        QCOMPARE(tray->kind, StatusItemSelector::Kind::TrayIcon);
        QCOMPARE(tray->title, figure(QStringLiteral("9.99")));
        QCOMPARE(tray->toolTip, (QStringList{QStringLiteral("$9.99"), QStringLiteral("Refreshed 09:00")}));
        QCOMPARE(tray->accessibleTitle, QStringLiteral("Inkwarden: Today $9.99"));
        QSignalSpy activated(&selector, &StatusItem::activated);
        tray->click(QPoint(3, 4));
        QCOMPARE(activated.size(), 1);

        // A watcher that comes later takes over from the tray icon.
        QVERIFY(startWatcher());
        QTRY_COMPARE(selector.kind(), StatusItemSelector::Kind::StatusNotifier);
        QCOMPARE(static_cast<FakeStatusItem *>(selector.current())->title, figure(QStringLiteral("9.99")));
        QCOMPARE(static_cast<FakeStatusItem *>(selector.current())->accessibleTitle,
                 QStringLiteral("Inkwarden: Today $9.99"));
        selector.setAccessibleTitle(QStringLiteral("Inkwarden: Today $10.49"));
        QCOMPARE(static_cast<FakeStatusItem *>(selector.current())->accessibleTitle,
                 QStringLiteral("Inkwarden: Today $10.49"));
        // And when it goes, the item waits for it before the tray takes over again.
        stopWatcher();
        QTest::qWait(100);
        QCOMPARE(selector.kind(), StatusItemSelector::Kind::StatusNotifier);
        QTRY_COMPARE(selector.kind(), StatusItemSelector::Kind::TrayIcon);
        QCOMPARE(FakeStatusItem::mostAlive, 1);
        QCOMPARE(FakeStatusItem::alive, 1);
    }

    void withoutATrayTheSelectorKeepsWaitingForAWatcher()
    {
        stopWatcher();
        StatusItemSelector::Options options;
        options.watcherPatience = std::chrono::milliseconds(100);
        options.trayAvailable = [] { return false; };
        options.create = [](StatusItemSelector::Kind kind) { return std::make_unique<FakeStatusItem>(kind); };
        StatusItemSelector selector(options);
        QTest::qWait(300);
        QCOMPARE(selector.kind(), StatusItemSelector::Kind::StatusNotifier);
    }

    void theTrayIconHasTheSameMenuAndTheTitleInItsToolTip()
    {
        TrayIconStatusItem tray;
        QStringList shown;
        for (const QAction *action : tray.menu()->actions()) {
            shown.append(action->isSeparator() ? QStringLiteral("---") : action->text());
        }
        // QMenu's own access key marks: the open menu underlines the letters and takes each alone.
        QCOMPARE(shown, (QStringList{QStringLiteral("&Open Inkwarden"), QStringLiteral("&Refresh"),
                                     QStringLiteral("&Settings"), QStringLiteral("&Hide amounts"),
                                     QStringLiteral("---"), QStringLiteral("&Quit Inkwarden")}));
        QStringList keys;
        for (const QAction *action : tray.menu()->actions()) {
            if (!action->isSeparator()) {
                keys.append(QKeySequence::mnemonic(action->text()).toString());
            }
        }
        QCOMPARE(keys, (QStringList{QStringLiteral("Alt+O"), QStringLiteral("Alt+R"), QStringLiteral("Alt+S"),
                                    QStringLiteral("Alt+H"), QStringLiteral("Alt+Q")}));
        QAction *hide = tray.menu()->actions().at(3);
        QVERIFY(hide->isCheckable());
        QVERIFY(!hide->isChecked());
        tray.setAmountsHidden(true);
        QVERIFY(hide->isChecked());
        QSignalSpy open(&tray, &StatusItem::menuOpenRequested);
        QSignalSpy refresh(&tray, &StatusItem::refreshRequested);
        QSignalSpy settings(&tray, &StatusItem::settingsRequested);
        QSignalSpy quit(&tray, &StatusItem::quitRequested);
        for (QAction *action : tray.menu()->actions()) {
            action->trigger();
        }
        QCOMPARE(open.size(), 1);
        QCOMPARE(refresh.size(), 1);
        QCOMPARE(settings.size(), 1);
        QCOMPARE(quit.size(), 1);

        tray.setTitle(figure(QStringLiteral("1,234.56")));
        tray.setToolTip(QStringLiteral("$1,234.56"), QStringLiteral("Refreshed 10:42"));
        QCOMPARE(tray.toolTipText(), QStringLiteral("$1,234.56\nRefreshed 10:42"));
        tray.setTitle(MenuBarTitle{QStringLiteral("◉ —"), std::nullopt});
        tray.setToolTip(QString(), QString());
        QCOMPARE(tray.toolTipText(), QStringLiteral("◉ —"));
    }
};

QTEST_MAIN(StatusNotifierItemTest)
#include "tst_statusnotifieritem.moc"
