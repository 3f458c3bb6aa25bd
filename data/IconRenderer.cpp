// Renders an SVG icon to a square PNG of a given size, for the hicolor theme folders of the package.
// Qt SVG draws it, as it draws the same logo in the popover, so the icon the desktop shows matches
// the one inside Inkwarden.
//
//   inkwarden-icon-renderer SOURCE.svg SIZE OUTPUT.png
#include <QGuiApplication>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>

int main(int argc, char *argv[])
{
    // No window is ever shown: the offscreen platform needs no display at build time.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    QTextStream errors(stderr);
    if (arguments.size() != 4) {
        errors << "usage: inkwarden-icon-renderer SOURCE.svg SIZE OUTPUT.png\n";
        return 2;
    }
    bool isNumber = false;
    const int size = arguments.at(2).toInt(&isNumber);
    if (!isNumber || size < 1 || size > 4096) {
        errors << "The size must be a number of pixels from 1 to 4096, not " << arguments.at(2) << ".\n";
        return 2;
    }
    QSvgRenderer renderer(arguments.at(1));
    if (!renderer.isValid()) {
        errors << "Could not read the SVG image " << arguments.at(1) << ".\n";
        return 1;
    }

    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        renderer.render(&painter, QRectF(0, 0, size, size));
    }

    // Same pixels, same bytes: no time stamp or other text goes into the file.
    QImageWriter writer(arguments.at(3), "png");
    writer.setCompression(9);
    if (!writer.write(image.convertToFormat(QImage::Format_ARGB32))) {
        errors << "Could not write " << arguments.at(3) << ": " << writer.errorString() << "\n";
        return 1;
    }
    return 0;
}
