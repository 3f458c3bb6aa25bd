#include "MenuBarTitleRenderer.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace {

// Qt 6.4 cannot ask a font for its tabular-figures feature, so the amount uses a family whose plain
// digits all have one advance, so that the figure does not wobble as it changes.
bool hasTabularDigits(const QFont &font)
{
    const QFontMetricsF metrics(font);
    const qreal advance = metrics.horizontalAdvance(QLatin1Char('0'));
    for (char digit = '1'; digit <= '9'; ++digit) {
        if (!qFuzzyCompare(metrics.horizontalAdvance(QLatin1Char(digit)), advance)) {
            return false;
        }
    }
    return true;
}

QString tabularDigitsFamily(const QFont &baseFont)
{
    QFont probe = baseFont;
    probe.setPixelSize(13);
    if (hasTabularDigits(probe)) {
        return baseFont.family();
    }
    for (const QString &family : {QStringLiteral("DejaVu Sans"), QStringLiteral("Noto Sans")}) {
        probe.setFamily(family);
        if (QFontInfo(probe).family() == family && hasTabularDigits(probe)) {
            return family;
        }
    }
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

qreal scaleFor(const MenuBarTitleRenderer::Options &options)
{
    return options.height / MenuBarTitleRenderer::ReferenceHeight * options.devicePixelRatio;
}

} // namespace

MenuBarTitleRenderer::MenuBarTitleRenderer(const QFont &baseFont)
    : m_baseFont(baseFont)
    , m_digitsFamily(tabularDigitsFamily(m_baseFont))
{}

QFont MenuBarTitleRenderer::defaultFont()
{
    return QFontDatabase::systemFont(QFontDatabase::GeneralFont);
}

QFont MenuBarTitleRenderer::font(const MenuBarTitleRun &run, qreal scale) const
{
    QFont font = m_baseFont;
    if (run.typeface == MenuBarTitleRun::Typeface::MonospacedDigits) {
        font.setFamily(m_digitsFamily);
    }
    font.setPixelSize(std::max(1, int(std::lround(run.pointSize * scale))));
    font.setWeight(run.weight);
    font.setStyleStrategy(QFont::PreferAntialias);
    return font;
}

QList<MenuBarTitleRenderer::PlacedRun> MenuBarTitleRenderer::layout(const MenuBarTitle &title,
                                                                    const Options &options) const
{
    const qreal scale = scaleFor(options);
    const qreal boxHeight = ReferenceHeight * scale;
    QList<PlacedRun> placed;
    qreal ascent = 0;
    qreal descent = 0;
    for (const MenuBarTitleRun &run : title.runs()) {
        const QFont runFont = font(run, scale);
        const QFontMetricsF metrics(runFont);
        ascent = std::max(ascent, metrics.ascent() + run.baselineOffset * scale);
        descent = std::max(descent, metrics.descent() - run.baselineOffset * scale);
        placed.append(PlacedRun{run, runFont, QRectF(0, 0, metrics.horizontalAdvance(run.text), metrics.height())});
    }
    // One baseline for every run, the line centred in the box.
    const qreal baseline = std::round((boxHeight - (ascent + descent)) / 2 + ascent);
    qreal x = (IconPoints + IconSpacing) * scale;
    for (PlacedRun &run : placed) {
        const QFontMetricsF metrics(run.font);
        const qreal runBaseline = baseline - run.run.baselineOffset * scale;
        run.rect = QRectF(x, runBaseline - metrics.ascent(), run.rect.width(), metrics.height());
        x += run.rect.width();
    }
    return placed;
}

QImage MenuBarTitleRenderer::render(const MenuBarTitle &title, const QImage &icon, const Options &options) const
{
    const qreal scale = scaleFor(options);
    const QList<PlacedRun> placed = layout(title, options);
    const qreal right = placed.isEmpty() ? IconPoints * scale : placed.constLast().rect.right();
    const int width = int(std::ceil(right + 1 * scale));
    const int height = int(std::ceil(ReferenceHeight * scale));

    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const qreal iconSize = IconPoints * scale;
    painter.drawImage(QRectF(0, (height - iconSize) / 2, iconSize, iconSize), icon);
    painter.setPen(options.color);
    for (const PlacedRun &run : placed) {
        painter.setFont(run.font);
        const qreal baseline = run.rect.top() + QFontMetricsF(run.font).ascent();
        painter.drawText(QPointF(run.rect.left(), baseline), run.run.text);
    }
    painter.end();
    image.setDevicePixelRatio(options.devicePixelRatio);
    return image;
}
