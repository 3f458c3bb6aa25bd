#pragma once

#include "store/DesktopServices.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QObject>
#include <QStringList>

#include <chrono>
#include <functional>

// The desktop as a freedesktop.org session offers it: URLs through Qt (which asks the desktop's own
// opener), files through `gio open` (else `xdg-open`) so that a failure comes back with GLib's
// reason, the file manager through org.freedesktop.FileManager1, and the autostart settings of the
// desktop named in XDG_CURRENT_DESKTOP.
class LinuxDesktopServices final : public DesktopServices
{
    Q_DECLARE_TR_FUNCTIONS(LinuxDesktopServices)

public:
    // What the adapter reaches outside itself; each part has the real thing as its default.
    struct System {
        // The absolute path of a program found on PATH, or nothing.
        std::function<QString(const QString &name)> findProgram = defaultFindProgram;
        // Starts a program that outlives the call (a settings window); false when it did not start.
        std::function<bool(const QString &program, const QStringList &arguments)> startDetached = defaultStartDetached;
        // Hands a URL to the desktop: web pages, and folders for the file manager.
        std::function<bool(const QUrl &url)> openURL = defaultOpenURL;
        QDBusConnection bus = QDBusConnection::sessionBus();
        // The folder to show when the desktop has no autostart settings Inkwarden knows of.
        QString autostartFolder = defaultAutostartFolder();
        // How long an opener may run before Inkwarden takes the file as opened: some wait until the
        // application they started has quit.
        std::chrono::milliseconds openerPatience{5000};
        // How long the file manager may take to answer, including being started for the call.
        std::chrono::milliseconds fileManagerTimeout{10000};
    };

    LinuxDesktopServices();
    explicit LinuxDesktopServices(System system);
    ~LinuxDesktopServices() override;

    bool openURL(const QUrl &url) override;
    QCoro::Task<std::optional<QString>> openFile(QString path) override;
    void revealFile(const QString &path) override;
    void openLoginItemsSettings() override;

    // The settings program and its arguments for the desktops in `currentDesktops` (the entries of
    // XDG_CURRENT_DESKTOP), the first one installed; empty when none is known or installed.
    static QStringList autostartSettingsCommand(const QStringList &currentDesktops,
                                                const std::function<QString(const QString &)> &findProgram);

    static QString defaultFindProgram(const QString &name);
    static bool defaultStartDetached(const QString &program, const QStringList &arguments);
    static bool defaultOpenURL(const QUrl &url);
    static QString defaultAutostartFolder();

private:
    System m_system;
    // Parent of the file manager calls still waiting for an answer: they end with the adapter.
    QObject m_pendingCalls;
};
