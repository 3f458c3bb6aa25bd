#include "KWalletLock.h"

#include <QDBusError>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QLoggingCategory>
#include <qcoro/qcorodbuspendingcall.h>

Q_LOGGING_CATEGORY(lcKWallet, "inkwarden.keychain.kwallet", QtCriticalMsg)

namespace {

const QString walletName = QStringLiteral("org.kde.kwalletd5");
const QString walletPath = QStringLiteral("/modules/kwalletd5");
const QString walletInterface = QStringLiteral("org.kde.KWallet");

bool isNoService(const QDBusError &error)
{
    return error.type() == QDBusError::ServiceUnknown || error.type() == QDBusError::Disconnected
           || error.type() == QDBusError::UnknownObject || error.type() == QDBusError::UnknownMethod
           || error.type() == QDBusError::UnknownInterface;
}

bool isReplyWith(const QDBusMessage &reply)
{
    return reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty();
}

} // namespace

bool KWalletLock::isUsedIn(const QProcessEnvironment &environment)
{
    const bool plasma5 = environment.value(QStringLiteral("KDE_SESSION_VERSION")) == u"5";
    const QString desktop = environment.value(QStringLiteral("XDG_CURRENT_DESKTOP"));
    if (desktop == u"GNOME" || desktop == u"Unity" || desktop == u"XFCE") {
        return false;
    }
    if (desktop == u"KDE") {
        return plasma5;
    }
    const QString session = environment.value(QStringLiteral("DESKTOP_SESSION"));
    if (session == u"gnome" || session == u"kde4" || session.contains(u"xfce") || session == u"xubuntu") {
        return false;
    }
    if (session == u"kde") {
        return plasma5;
    }
    if (!environment.value(QStringLiteral("GNOME_DESKTOP_SESSION_ID")).isEmpty()) {
        return false;
    }
    return !environment.value(QStringLiteral("KDE_FULL_SESSION")).isEmpty() && plasma5;
}

KWalletLock::KWalletLock(QDBusConnection bus, QString folder, QString keyName, std::chrono::milliseconds timeout,
                         QObject *parent)
    : KeyringLock(parent)
    , m_bus(std::move(bus))
    , m_folder(std::move(folder))
    , m_keyName(std::move(keyName))
    , m_timeout(timeout)
{
    if (!m_bus.isConnected()) {
        return;
    }
    // Opened by anyone (the login's PAM module, the wallet manager, another application) or created
    // by the wizard.
    m_bus.connect(walletName, walletPath, walletInterface, QStringLiteral("walletOpened"), this,
                  SLOT(onWalletChanged(QString)));
    m_bus.connect(walletName, walletPath, walletInterface, QStringLiteral("walletCreated"), this,
                  SLOT(onWalletChanged(QString)));
    m_bus.connect(walletName, walletPath, walletInterface, QStringLiteral("walletAsyncOpened"), this,
                  SLOT(onAsyncOpened(int, int)));
    auto *watcher = new QDBusServiceWatcher(walletName, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    QObject::connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &KWalletLock::changed);
}

QCoro::Task<QDBusMessage> KWalletLock::call(QString method, QVariantList arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(walletName, walletPath, walletInterface, method);
    message.setArguments(arguments);
    // Named, not a temporary: g++ 12 mishandles temporaries inside a co_await expression.
    QDBusPendingCall pending = m_bus.asyncCall(message, int(m_timeout.count()));
    const QDBusMessage reply = co_await pending;
    if (reply.type() == QDBusMessage::ErrorMessage) {
        qCWarning(lcKWallet) << method << QDBusError(reply).name() << QDBusError(reply).message();
    }
    co_return reply;
}

QCoro::Task<KeyringLock::ItemState> KWalletLock::itemState()
{
    if (!m_bus.isConnected()) {
        co_return ItemState::noService;
    }
    QCoro::Task<QDBusMessage> asking = call(QStringLiteral("isEnabled"));
    const QDBusMessage enabled = co_await std::move(asking);
    if (enabled.type() == QDBusMessage::ErrorMessage && isNoService(QDBusError(enabled))) {
        co_return ItemState::noService;
    }
    if (!isReplyWith(enabled)) {
        co_return ItemState::unreachable;
    }
    if (!enabled.arguments().at(0).toBool()) {
        // The wallet system is switched off: QtKeychain can store nothing there.
        co_return ItemState::noService;
    }
    asking = call(QStringLiteral("networkWallet"));
    const QDBusMessage named = co_await std::move(asking);
    asking = call(QStringLiteral("wallets"));
    const QDBusMessage listed = co_await std::move(asking);
    if (!isReplyWith(named) || !isReplyWith(listed)) {
        co_return ItemState::unreachable;
    }
    const QString wallet = named.arguments().at(0).toString();
    if (!listed.arguments().at(0).toStringList().contains(wallet)) {
        // No wallet yet: nothing can be stored in it.
        co_return ItemState::absent;
    }
    asking = call(QStringLiteral("isOpen"), {wallet});
    const QDBusMessage open = co_await std::move(asking);
    if (!isReplyWith(open)) {
        co_return ItemState::unreachable;
    }
    if (open.arguments().at(0).toBool()) {
        co_return ItemState::unlocked;
    }
    asking = call(QStringLiteral("keyDoesNotExist"), {wallet, m_folder, m_keyName});
    const QDBusMessage missing = co_await std::move(asking);
    if (isReplyWith(missing) && missing.arguments().at(0).toBool()) {
        co_return ItemState::absent;
    }
    co_return ItemState::locked;
}

QCoro::Task<bool> KWalletLock::isLockedForSaving()
{
    if (!m_bus.isConnected()) {
        co_return false;
    }
    QCoro::Task<QDBusMessage> asking = call(QStringLiteral("networkWallet"));
    const QDBusMessage named = co_await std::move(asking);
    if (!isReplyWith(named)) {
        co_return false;
    }
    asking = call(QStringLiteral("isOpen"), {named.arguments().at(0).toString()});
    const QDBusMessage open = co_await std::move(asking);
    co_return isReplyWith(open) && !open.arguments().at(0).toBool();
}

QCoro::Task<> KWalletLock::askToUnlock()
{
    if (m_asking || !m_bus.isConnected()) {
        co_return;
    }
    m_asking = true;
    QCoro::Task<QDBusMessage> asking = call(QStringLiteral("networkWallet"));
    const QDBusMessage named = co_await std::move(asking);
    if (!isReplyWith(named)) {
        m_asking = false;
        co_return;
    }
    // No window to attach the dialog to (0), and no session to tie the handle to: the wallet stays
    // open as its own settings say, as for any application.
    asking = call(QStringLiteral("openAsync"), {named.arguments().at(0).toString(), qlonglong(0), m_folder, false});
    const QDBusMessage opening = co_await std::move(asking);
    if (!isReplyWith(opening) || opening.arguments().at(0).toInt() < 0) {
        qCWarning(lcKWallet) << "The wallet would not open";
        m_asking = false;
        co_return;
    }
    m_transaction = opening.arguments().at(0).toInt();
}

void KWalletLock::onWalletChanged(const QString &wallet)
{
    qCDebug(lcKWallet) << "Wallet changed:" << wallet;
    Q_EMIT changed();
}

void KWalletLock::onAsyncOpened(int transaction, int handle)
{
    if (!m_asking || transaction != m_transaction) {
        return;
    }
    qCDebug(lcKWallet) << "Wallet dialog answered, handle" << handle;
    m_transaction = -1;
    m_asking = false;
    Q_EMIT changed();
}
