#pragma once

#include <QString>

// The few texts and names that speak of the desktop Inkwarden runs on. They live together so that
// a port to another system changes them in one place.
namespace PlatformTexts {

inline QString keyringSaveFailure(int status)
{
    return QStringLiteral("Could not save the API key in the keyring (") + QString::number(status)
           + QStringLiteral(").");
}

// While the keyring that holds the API key is locked: Inkwarden waits for it instead of signing in.
inline QString keyringLocked()
{
    return QStringLiteral("Unlock your keyring to show your royalties.");
}

// While the keyring does not answer, or refuses to be read.
inline QString keyringUnreachable()
{
    return QStringLiteral("Your keyring is not answering. Inkwarden will read your API key as soon as it does.");
}

// A save that failed while the keyring stayed locked.
inline QString keyringLockedSaveFailure()
{
    return QStringLiteral("Your keyring is locked, so the API key could not be saved. Unlock your keyring, then "
                          "sign in again.");
}

inline QString apiKeyStorageNote()
{
    return QStringLiteral(
        u"My Account \u2192 Settings \u2192 API Access \u00B7 Stored securely in your system keyring");
}

inline QString showInFileManager()
{
    return QStringLiteral("Show in Files");
}

inline QString openFromFileManager()
{
    return QStringLiteral("The update is downloaded. Open it from your file manager to continue.");
}

inline QString installerNotOpenedPrefix()
{
    return QStringLiteral("The system did not open the installer: ");
}

inline QString installerOpened()
{
    return QStringLiteral("Installer opened. If it is not visible, choose Show in Files.");
}

inline QString downloadUpdateQuestion()
{
    return QStringLiteral("Download the latest version now?");
}

inline QString loginApprovalRequired()
{
    return QStringLiteral("Approval is required in your system's autostart settings");
}

inline QString launchAtLoginExplanation()
{
    return QStringLiteral("Launch Inkwarden after you sign in to or restart your computer");
}

inline QString loginRegisteredButNotApproved()
{
    return QStringLiteral("Inkwarden is registered, but the system has not approved it. It will not open at login "
                          "until you enable it in your system's autostart settings.");
}

inline QString openLoginItemsSettings()
{
    return QStringLiteral("Open Autostart Settings");
}

inline QString couldNotEnableOpenAtLogin()
{
    return QStringLiteral("The system could not enable Open at Login. Make sure Inkwarden is installed, then enable "
                          "it in your system's autostart settings.");
}

inline QString couldNotUpdateOpenAtLogin(const QString &reason)
{
    return QStringLiteral("Could not update Open at Login: ") + reason
           + QStringLiteral(". Make sure Inkwarden is installed, then try again.");
}

// The installer the server offers for this system, and the name it is saved under.
inline QString installerPagePath()
{
    return QStringLiteral("/download_for_linux/");
}

inline QString installerFileName(const QString &version)
{
    return QStringLiteral("Inkwarden-") + version + QStringLiteral(".deb");
}

} // namespace PlatformTexts
