#include "StatusIcon.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QImageReader>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

#include <algorithm>

namespace {

bool isSvg(const QString &source)
{
    return source.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)
           || source.endsWith(QLatin1String(".svgz"), Qt::CaseInsensitive);
}

} // namespace

StatusIcon::StatusIcon(QString source)
    : m_source(std::move(source))
{}

QString StatusIcon::defaultSource()
{
    return QStringLiteral(":/inkwarden/platform/icons/inkwarden-status.svg");
}

QColor StatusIcon::panelColor(const QString &currentDesktop)
{
    const QStringList desktops = currentDesktop.split(QLatin1Char(':'), Qt::SkipEmptyParts);
    const bool plasma = std::any_of(desktops.cbegin(), desktops.cend(), [](const QString &desktop) {
        return desktop.compare(QLatin1String("KDE"), Qt::CaseInsensitive) == 0;
    });
    if (plasma) {
        return QGuiApplication::palette().color(QPalette::Active, QPalette::WindowText);
    }
    return QColor(0xf2, 0xf2, 0xf2);
}

bool StatusIcon::isValid() const
{
    if (isSvg(m_source)) {
        return QSvgRenderer(m_source).isValid();
    }
    return QImageReader(m_source).canRead();
}

QImage StatusIcon::image(int pixels, const QColor &color) const
{
    QImage mask(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    if (pixels <= 0) {
        return mask;
    }
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (isSvg(m_source)) {
        QSvgRenderer renderer(m_source);
        if (renderer.isValid()) {
            // Keep the drawing's aspect ratio, centred in the square.
            QSizeF size = renderer.defaultSize();
            size.scale(pixels, pixels, Qt::KeepAspectRatio);
            renderer.render(&painter, QRectF(QPointF((pixels - size.width()) / 2, (pixels - size.height()) / 2), size));
        }
    } else {
        QImageReader reader(m_source);
        const QImage source = reader.read();
        if (!source.isNull()) {
            const QImage scaled = source.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
            painter.drawImage(QPointF((pixels - scaled.width()) / 2.0, (pixels - scaled.height()) / 2.0), scaled);
        }
    }
    // Template semantics: the colour goes wherever the source has coverage.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(mask.rect(), color);
    painter.end();
    return mask;
}
