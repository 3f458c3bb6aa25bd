#pragma once

#include "store/LoginItemService.h"

#include <QCoreApplication>
#include <QString>

#include <optional>

// Open at login through the XDG autostart folder: Inkwarden starts at login when
// `<config folder>/autostart/com.inkwarden.menubar.desktop` is there, enabled, and names a program
// that exists. The desktop's own autostart settings edit the same file, so the status is read back
// from it every time rather than remembered.
//
// Registering writes the entry for the program that is running now, even when that is a developer's
// build: the switch then starts exactly the Inkwarden the user turned it on from (its version and
// its compiled-in server), never a different copy that happens to be on PATH. An entry whose program
// later disappears reads as "not found", and turning the switch on again rewrites it for the running
// program.
//
// Failures are described as a phrase without a final full stop, for the middle of a sentence:
// "could not create the folder “…”: Not a directory".
class XdgAutostart final : public LoginItemService
{
    Q_DECLARE_TR_FUNCTIONS(XdgAutostart)

public:
    // `configFolder` is the user's configuration folder (XDG_CONFIG_HOME, else ~/.config);
    // `executable` is the program the entry starts.
    explicit XdgAutostart(QString configFolder = defaultConfigFolder(), QString executable = defaultExecutable());

    Status status() const override;
    std::optional<QString> registerItem() override;
    std::optional<QString> unregisterItem() override;

    QString autostartFolder() const;
    QString entryPath() const;

    // The desktop entry that registerItem() writes for `executable`.
    static QByteArray entryContents(const QString &executable);

    // The desktop file ID, shared with the application's own entry so that desktops match the two.
    static QString entryFileName();
    static QString defaultConfigFolder();
    static QString defaultExecutable();
    static QString defaultAutostartFolder();

private:
    QString m_configFolder;
    QString m_executable;
};
