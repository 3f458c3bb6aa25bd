#pragma once

#include <QUrl>

// What Inkwarden asks of the desktop: open a web page in the default browser.
class DesktopServices
{
public:
    virtual ~DesktopServices() = default;

    // Opens `url` in the user's default browser; false when nothing could open it.
    virtual bool openURL(const QUrl &url) = 0;
};
