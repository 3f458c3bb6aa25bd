#include "LoadedPopover.h"

#include "PopoverModule.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(lcPopover, "inkwarden.popover")

constexpr auto moduleFileName = "inkwarden-popover.so";

} // namespace

LoadedPopover::LoadedPopover(RoyaltiesStore &store, QString modulePath, QObject *parent)
    : Popover(parent)
    , m_store(store)
    , m_modulePath(modulePath.isEmpty() ? defaultModulePath() : std::move(modulePath))
{}

LoadedPopover::~LoadedPopover() = default;

QString LoadedPopover::defaultModulePath()
{
    const QDir executableDir(QCoreApplication::applicationDirPath());
    QString inBuild = executableDir.filePath(QLatin1String(moduleFileName));
    if (QFileInfo::exists(inBuild)) {
        return inBuild;
    }
    return QDir::cleanPath(
        executableDir.filePath(QStringLiteral(INKWARDEN_POPOVER_MODULE_DIR "/") + QLatin1String(moduleFileName)));
}

bool LoadedPopover::load()
{
    if (m_popover) {
        return true;
    }
    if (!m_loadError.isEmpty()) {
        return false;
    }
    // The module stays for the life of the process: Qt Quick does not support being unloaded.
    QLibrary module(m_modulePath);
    module.setLoadHints(QLibrary::PreventUnloadHint);
    auto *make = reinterpret_cast<InkwardenMakePopover *>(module.resolve(inkwardenMakePopoverSymbol));
    if (!make) {
        m_loadError = module.errorString();
        qCWarning(lcPopover).noquote() << "Inkwarden cannot open its popover:" << m_loadError;
        return false;
    }
    m_popover.reset(make(&m_store, nullptr));
    QObject::connect(m_popover.get(), &Popover::quitRequested, this, &Popover::quitRequested);
    return true;
}

bool LoadedPopover::isShown() const
{
    return m_popover && m_popover->isShown();
}

void LoadedPopover::show(std::optional<QPoint> anchor)
{
    if (load()) {
        m_popover->show(anchor);
    }
}

void LoadedPopover::close()
{
    if (m_popover) {
        m_popover->close();
    }
}

bool LoadedPopover::closedJustNow() const
{
    return m_popover && m_popover->closedJustNow();
}
