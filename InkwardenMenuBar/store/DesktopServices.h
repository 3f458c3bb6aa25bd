#pragma once

#include <QString>
#include <QUrl>
#include <qcoro/qcorotask.h>

#include <optional>

// What Inkwarden asks of the desktop: pages in the browser, the downloaded installer in the
// system's package installer, a file shown in the file manager, and the autostart settings.
class DesktopServices
{
public:
    virtual ~DesktopServices() = default;

    // Opens `url` in the user's default browser; false when nothing could open it.
    virtual bool openURL(const QUrl &url) = 0;
    // Opens the file with the desktop's default application for it. Finishes with nothing once it
    // is open, or with the reason it could not be opened, in words.
    virtual QCoro::Task<std::optional<QString>> openFile(QString path) = 0;
    // Shows the file selected in the file manager (or at least its folder).
    virtual void revealFile(const QString &path) = 0;
    // Opens the desktop's settings for the programs that start at login (or the autostart folder).
    virtual void openLoginItemsSettings() = 0;
};
