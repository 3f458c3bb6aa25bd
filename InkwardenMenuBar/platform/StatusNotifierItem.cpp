#include "StatusNotifierItem.h"

#include "DBusMenuAdaptor.h"
#include "StatusNotifierItemAdaptor.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QPalette>
#include <QSaveFile>
#include <QScreen>
#include <QStandardPaths>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cmath>

Q_LOGGING_CATEGORY(lcStatusItem, "inkwarden.statusitem", QtCriticalMsg)

namespace {

constexpr int IconFileSize = 64;
const QList<int> &pixmapSizes()
{
    static const QList<int> sizes{16, 22, 24, 32, 48, 64};
    return sizes;
}

QString nextServiceName()
{
    static std::atomic<int> counter{0};
    return QStringLiteral("org.kde.StatusNotifierItem-%1-%2").arg(QCoreApplication::applicationPid()).arg(++counter);
}

// "· $1,234.56" as "· $8,888.88": wide enough for the figure's digits to change without the host
// resizing the item.
QString guideFor(const QString &label)
{
    QString guide = label;
    for (QChar &character : guide) {
        if (character.isDigit()) {
            character = QLatin1Char('8');
        }
    }
    return guide;
}

bool writeImage(const QString &path, const QImage &image)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && image.save(&file, "PNG") && file.commit();
}

} // namespace

StatusNotifierItem::StatusNotifierItem()
    : StatusNotifierItem(Options{})
{}

StatusNotifierItem::StatusNotifierItem(Options options, QObject *parent)
    : StatusItem(parent)
    , m_options(std::move(options))
    , m_serviceName(nextServiceName())
    , m_icon(m_options.iconSource)
    , m_menu(new DBusMenu(this))
    , m_watcherWatcher(watcherService(), m_options.bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    registerStatusNotifierTypes();
    const QString currentDesktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
    m_drawsTitleImage = wantsTitleImage(m_options.titleImage, qEnvironmentVariable("INKWARDEN_STATUS_TITLE_IMAGE"));
    m_color = m_options.color.value_or(StatusIcon::panelColor(currentDesktop));
    m_toolTip.title = defaultToolTipTitle();

    for (int size : pixmapSizes()) {
        m_iconPixmaps.append(SniIconPixmap::fromImage(m_icon.image(size, m_color)));
    }
    writeSquareIcon();

    new StatusNotifierItemAdaptor(this);
    new DBusMenuAdaptor(m_menu);
    connect(m_menu, &DBusMenu::triggered, this, &StatusNotifierItem::triggerMenuEntry);
    connect(this, &StatusItem::amountsHiddenChanged, m_menu, &DBusMenu::setAmountsHidden);

    if (!m_options.bus.registerObject(objectPath(), this, QDBusConnection::ExportAdaptors)
        || !m_options.bus.registerObject(DBusMenu::objectPath(), m_menu, QDBusConnection::ExportAdaptors)
        || !m_options.bus.registerService(m_serviceName)) {
        qCWarning(lcStatusItem) << "Could not put the status item on the bus:" << m_options.bus.lastError().message();
    }

    connect(&m_watcherWatcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) {
                if (newOwner.isEmpty()) {
                    setRegistered(false);
                } else {
                    m_registerAgainTimesLeft = registerAgainTimes;
                    registerWithWatcher();
                }
            });
    m_options.bus.connect(watcherService(), QStringLiteral("/StatusNotifierWatcher"), watcherService(),
                          QStringLiteral("StatusNotifierItemUnregistered"), this, SLOT(watcherDroppedItem(QString)));
    registerWithWatcher();
}

StatusNotifierItem::~StatusNotifierItem()
{
    m_options.bus.unregisterService(m_serviceName);
    m_options.bus.unregisterObject(DBusMenu::objectPath());
    m_options.bus.unregisterObject(objectPath());
    if (m_ownsFileDirectory) {
        QDir(m_options.fileDirectory).removeRecursively();
    }
}

bool StatusNotifierItem::wantsTitleImage(TitleImage mode, const QString &override)
{
    switch (mode) {
    case TitleImage::Never:
        return false;
    case TitleImage::Always:
        return true;
    case TitleImage::Auto:
        break;
    }
    // No host is known to show a wide image by path: GNOME's AppIndicator extension 46 shows a
    // placeholder for it, and every host that reads XAyatanaLabel draws the figure itself.
    return override == QLatin1String("1");
}

void StatusNotifierItem::setTitle(const MenuBarTitle &title)
{
    m_title = title;
    if (m_drawsTitleImage) {
        writeTitleImage();
        return;
    }
    const QString label = title.text();
    if (label == m_label) {
        return;
    }
    m_label = label;
    m_labelGuide = guideFor(label);
    Q_EMIT labelChanged(m_label, m_labelGuide);
}

void StatusNotifierItem::setToolTip(const QString &title, const QString &body)
{
    if (m_toolTip.title == title && m_toolTip.description == body) {
        return;
    }
    m_toolTip.title = title;
    m_toolTip.description = body;
    Q_EMIT toolTipChanged();
}

void StatusNotifierItem::setAccessibleTitle(const QString &title)
{
    if (title == m_accessibleTitle) {
        return;
    }
    m_accessibleTitle = title;
    Q_EMIT accessibleTitleChanged();
}

void StatusNotifierItem::activate(int x, int y)
{
    const QPoint point = x == 0 && y == 0 ? QPoint() : QPoint(x, y);
    // After the reply has gone out, so that the host is not kept waiting while the popover opens.
    QMetaObject::invokeMethod(
        this, [this, point] { Q_EMIT activated(point); }, Qt::QueuedConnection);
}

void StatusNotifierItem::registerWithWatcher()
{
    QDBusMessage call = QDBusMessage::createMethodCall(watcherService(), QStringLiteral("/StatusNotifierWatcher"),
                                                       watcherService(), QStringLiteral("RegisterStatusNotifierItem"));
    call << m_serviceName;
    auto *pending = new QDBusPendingCallWatcher(m_options.bus.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        if (pending->isError()) {
            qCInfo(lcStatusItem) << "No StatusNotifierWatcher took the item:" << pending->error().message();
        }
        setRegistered(!pending->isError());
    });
}

bool StatusNotifierItem::isThisItem(const QString &item) const
{
    const qsizetype pathStart = item.indexOf(QLatin1Char('/'));
    QString service = pathStart < 0 ? item : item.left(pathStart);
    const QString path = pathStart < 0 ? objectPath() : item.mid(pathStart);
    if (service.endsWith(QLatin1Char('@'))) {
        service.chop(1);
    }
    return path == objectPath() && (service == m_serviceName || service == m_options.bus.baseService());
}

void StatusNotifierItem::watcherDroppedItem(const QString &item)
{
    if (!isThisItem(item)) {
        return;
    }
    setRegistered(false);
    if (m_registerAgainTimesLeft <= 0) {
        qCWarning(lcStatusItem) << "The StatusNotifierWatcher keeps dropping the item; not registering again";
        return;
    }
    --m_registerAgainTimesLeft;
    QTimer::singleShot(registerAgainMilliseconds, this, [this] {
        if (!m_registered) {
            registerWithWatcher();
        }
    });
}

void StatusNotifierItem::setRegistered(bool registered)
{
    if (m_registered == registered) {
        return;
    }
    m_registered = registered;
    Q_EMIT registeredChanged(registered);
}

QString StatusNotifierItem::fileDirectory()
{
    if (m_options.fileDirectory.isEmpty()) {
        QString base = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
        if (base.isEmpty()) {
            base = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
        }
        m_options.fileDirectory = base + QStringLiteral("/inkwarden/") + m_serviceName;
        m_ownsFileDirectory = true;
    }
    QDir().mkpath(m_options.fileDirectory);
    return m_options.fileDirectory;
}

void StatusNotifierItem::writeSquareIcon()
{
    const QString directory = fileDirectory();
    const QString name = QStringLiteral("inkwarden-status");
    if (!writeImage(directory + QLatin1Char('/') + name + QStringLiteral(".png"),
                    m_icon.image(IconFileSize, m_color))) {
        qCWarning(lcStatusItem) << "Could not write the status icon to" << directory;
        return;
    }
    m_iconThemePath = directory;
    m_iconName = name;
}

qreal StatusNotifierItem::devicePixelRatio() const
{
    if (m_options.devicePixelRatio > 0) {
        return m_options.devicePixelRatio;
    }
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->devicePixelRatio() : 1;
}

void StatusNotifierItem::writeTitleImage()
{
    const qreal ratio = devicePixelRatio();
    const int iconPixels = int(std::ceil(MenuBarTitleRenderer::IconPoints * m_options.titleImageHeight
                                         / MenuBarTitleRenderer::ReferenceHeight * ratio));
    const QImage image =
        m_renderer.render(m_title, m_icon.image(iconPixels, m_color), {m_options.titleImageHeight, ratio, m_color});
    // A new name for every picture: hosts cache icons by name.
    const QByteArray hash = QCryptographicHash::hash(
        QByteArray::fromRawData(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes()),
        QCryptographicHash::Sha1);
    const QString path = fileDirectory() + QStringLiteral("/title-") + QString::fromLatin1(hash.toHex().left(12))
                         + QStringLiteral(".png");
    if (path == m_iconName) {
        return;
    }
    if (!writeImage(path, image)) {
        qCWarning(lcStatusItem) << "Could not write the status title to" << path;
        return;
    }
    m_titleImages.removeAll(path);
    m_titleImages.append(path);
    while (m_titleImages.size() > 2) {
        QFile::remove(m_titleImages.takeFirst());
    }
    m_iconThemePath.clear();
    m_iconName = path;
    Q_EMIT iconChanged();
}
