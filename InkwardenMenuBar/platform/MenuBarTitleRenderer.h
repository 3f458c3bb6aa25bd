#pragma once

#include "MenuBarTitle.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QList>
#include <QRectF>

// Draws the panel icon and the title's runs into one image, for hosts that show an image but no
// styled text (GNOME's AppIndicator extension keeps a wide icon at its aspect ratio).
//
// Sizes are those of a macOS menu bar, where the icon is 14 points in a 16-point content box; the
// image is scaled so that this box fills `height`. One point is one logical pixel.
class MenuBarTitleRenderer
{
public:
    struct Options {
        // Height of the host's icon box, in logical pixels.
        int height = 16;
        qreal devicePixelRatio = 1;
        // The colour of the icon and the text: light on a dark panel, dark on a light one.
        QColor color = Qt::white;
    };

    // One run as laid out in an image: its font (pixel size already scaled) and its rectangle in
    // device pixels.
    struct PlacedRun {
        MenuBarTitleRun run;
        QFont font;
        QRectF rect;
    };

    static constexpr qreal ReferenceHeight = 16;
    static constexpr qreal IconPoints = 14;
    // The space between the icon and the first run, as AppKit leaves it.
    static constexpr qreal IconSpacing = 3;

    // `baseFont` stands for the system font; its family and hinting are kept, size and weight come
    // from the runs.
    explicit MenuBarTitleRenderer(const QFont &baseFont = defaultFont());

    static QFont defaultFont();

    // The font of `run` at `scale` device pixels per point.
    QFont font(const MenuBarTitleRun &run, qreal scale = 1) const;

    // Where each run goes in an image for `options`, the icon first at the left.
    QList<PlacedRun> layout(const MenuBarTitle &title, const Options &options) const;

    // The icon (already in the right colour, any size: it is scaled to the icon box) followed by the
    // runs, on a transparent background. The image carries `options.devicePixelRatio`.
    QImage render(const MenuBarTitle &title, const QImage &icon, const Options &options) const;

private:
    QFont m_baseFont;
    QString m_digitsFamily;
};
