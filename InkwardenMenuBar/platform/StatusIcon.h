#pragma once

#include <QColor>
#include <QImage>
#include <QString>

// The panel icon: a monochrome template, like a macOS template image. Only the source's alpha is
// used; every pixel is drawn in the colour that suits the panel. The source is an SVG or a raster
// image file (or Qt resource); the default is the placeholder compiled into Inkwarden until the brand
// icon replaces it.
class StatusIcon
{
public:
    explicit StatusIcon(QString source = defaultSource());

    static QString defaultSource();

    // The colour that shows on the panel of the desktops named in `currentDesktop` (the value of
    // XDG_CURRENT_DESKTOP). Plasma's panel follows the colour scheme that Qt's palette has there;
    // GNOME's top bar, Xfce's default panel and most others are dark, whatever the application
    // palette says, so elsewhere the icon is light.
    static QColor panelColor(const QString &currentDesktop);

    const QString &source() const { return m_source; }

    // False when the source is missing or does not load: the item then shows an empty square.
    bool isValid() const;

    // A square image of `pixels` x `pixels` in `color`, transparent elsewhere.
    QImage image(int pixels, const QColor &color) const;

private:
    QString m_source;
};
