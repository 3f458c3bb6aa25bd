#pragma once

#include <QCoreApplication>
#include <QString>

// The few texts and names that speak of the desktop Inkwarden runs on. They live together so that
// a port to another system changes them in one place.
namespace PlatformTexts {

inline QString keyringSaveFailure(int status)
{
    //: %1 is the error code the keyring returned
    return QCoreApplication::translate("PlatformTexts", "Could not save the API key in the keyring (%1).").arg(status);
}

// While the keyring that holds the API key is locked: Inkwarden waits for it instead of signing in.
inline QString keyringLocked()
{
    return QCoreApplication::translate("PlatformTexts", "Unlock your keyring to show your royalties.");
}

// While the keyring does not answer, or refuses to be read.
inline QString keyringUnreachable()
{
    return QCoreApplication::translate(
        "PlatformTexts", "Your keyring is not answering. Inkwarden will read your API key as soon as it does.");
}

// A save that failed while the keyring stayed locked.
inline QString keyringLockedSaveFailure()
{
    return QCoreApplication::translate("PlatformTexts",
                                       "Your keyring is locked, so the API key could not be saved. Unlock your "
                                       "keyring, then sign in again.");
}

inline QString apiKeyStorageNote()
{
    //: Under the API key field. "My Account", "Settings" and "API Access" are the pages of the Inkwarden
    //: website where the key is found, each arrow leading to the next
    return QCoreApplication::translate(
        "PlatformTexts", "My Account \u2192 Settings \u2192 API Access \u00B7 Stored securely in your system keyring");
}

inline QString showInFileManager()
{
    //: A button that shows the downloaded installer in the file manager
    return QCoreApplication::translate("PlatformTexts", "Show in Files");
}

inline QString openFromFileManager()
{
    return QCoreApplication::translate("PlatformTexts",
                                       "The update is downloaded. Open it from your file manager to continue.");
}

// Why the installer did not open, as the system said it.
inline QString installerNotOpened(const QString &reason)
{
    //: %1 is the system's reason
    return QCoreApplication::translate("PlatformTexts", "The system did not open the installer: %1").arg(reason);
}

inline QString installerOpened()
{
    //: "Show in Files" is the button of that name
    return QCoreApplication::translate("PlatformTexts",
                                       "Installer opened. If it is not visible, choose Show in Files.");
}

inline QString downloadUpdateQuestion()
{
    return QCoreApplication::translate("PlatformTexts", "Download the latest version now?");
}

inline QString loginApprovalRequired()
{
    //: Under the setting that starts Inkwarden when the user logs in
    return QCoreApplication::translate("PlatformTexts", "Approval is required in your system's autostart settings");
}

inline QString launchAtLoginExplanation()
{
    //: Under the setting that starts Inkwarden when the user logs in
    return QCoreApplication::translate("PlatformTexts",
                                       "Launch Inkwarden after you sign in to or restart your computer");
}

inline QString loginRegisteredButNotApproved()
{
    return QCoreApplication::translate("PlatformTexts",
                                       "Inkwarden is registered, but the system has not approved it. It will not "
                                       "open at login until you enable it in your system's autostart settings.");
}

inline QString openLoginItemsSettings()
{
    //: A button that opens the desktop's settings of the programs started at login
    return QCoreApplication::translate("PlatformTexts", "Open Autostart Settings");
}

inline QString couldNotEnableOpenAtLogin()
{
    //: "Open at Login" is starting Inkwarden when the user logs in
    return QCoreApplication::translate("PlatformTexts",
                                       "The system could not enable Open at Login. Make sure Inkwarden is installed, "
                                       "then enable it in your system's autostart settings.");
}

inline QString couldNotUpdateOpenAtLogin(const QString &reason)
{
    //: "Open at Login" is starting Inkwarden when the user logs in; %1 is the system's reason
    return QCoreApplication::translate("PlatformTexts",
                                       "Could not update Open at Login: %1. Make sure Inkwarden is installed, then "
                                       "try again.")
        .arg(reason);
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
