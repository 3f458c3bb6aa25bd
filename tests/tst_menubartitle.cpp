// The panel title: its runs before and after the first successful refresh, and the image that the
// item shows on hosts that keep a wide icon.
#include "platform/MenuBarTitle.h"
#include "platform/MenuBarTitleRenderer.h"
#include "platform/StatusIcon.h"

#include <QTest>

namespace {

MenuBarTitle styled(const QString &title = QStringLiteral("$1,234"))
{
    return MenuBarTitle{title, MenuBarMoneyParts{QStringLiteral("$"), QStringLiteral("1,234")}};
}

// How many pixels of `image` inside `rect` are not fully transparent.
int coveredPixels(const QImage &image, const QRect &rect)
{
    int covered = 0;
    const QRect inside = rect.intersected(image.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x) {
            covered += qAlpha(image.pixel(x, y)) > 0 ? 1 : 0;
        }
    }
    return covered;
}

} // namespace

class MenuBarTitleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void beforeAnyRefreshThePlaceholderShowsIn12PointMedium()
    {
        const MenuBarTitle title{QStringLiteral("◉ —"), std::nullopt};
        QVERIFY(!title.isStyled());
        const QList<MenuBarTitleRun> runs = title.runs();
        QCOMPARE(runs.size(), 1);
        QCOMPARE(runs[0].text, QStringLiteral("◉ —"));
        QCOMPARE(runs[0].pointSize, 12.0);
        QCOMPARE(runs[0].weight, QFont::Medium);
        QCOMPARE(runs[0].baselineOffset, 0.0);
        QCOMPARE(title.text(), QStringLiteral("◉ —"));
        QCOMPARE(title.figure(), QStringLiteral("◉ —"));
    }

    void aFailureWithNoEarlierSuccessShowsTheErrorTitle()
    {
        const MenuBarTitle title{QStringLiteral("◉ !"), std::nullopt};
        QCOMPARE(title.text(), QStringLiteral("◉ !"));
        QCOMPARE(title.runs().constFirst().pointSize, 12.0);
    }

    void afterASuccessTheTitleIsDotCurrencyAndAmount()
    {
        const QList<MenuBarTitleRun> runs = styled().runs();
        QCOMPARE(runs.size(), 3);
        QCOMPARE(runs[0].text, QStringLiteral("\u00B7 "));
        QCOMPARE(runs[0].pointSize, 10.0);
        QCOMPARE(runs[0].weight, QFont::Normal);
        QCOMPARE(runs[0].baselineOffset, 1.0);
        QCOMPARE(runs[1].text, QStringLiteral("$"));
        QCOMPARE(runs[1].pointSize, 9.0);
        QCOMPARE(runs[1].weight, QFont::Medium);
        QCOMPARE(runs[1].baselineOffset, 1.0);
        QCOMPARE(runs[2].text, QStringLiteral("1,234"));
        QCOMPARE(runs[2].pointSize, 13.0);
        QCOMPARE(runs[2].weight, QFont::DemiBold);
        QCOMPARE(runs[2].baselineOffset, 0.0);
        QCOMPARE(runs[2].typeface, MenuBarTitleRun::Typeface::MonospacedDigits);
        QCOMPARE(styled().text(), QStringLiteral("· $1,234"));
        QCOMPARE(styled().figure(), QStringLiteral("$1,234"));
    }

    void afterASuccessAndALaterFailureTheLastFigureStays()
    {
        // The failed refresh set the store's title to "◉ !", but its money parts are still those of
        // the last success: the title argument is ignored.
        const MenuBarTitle afterFailure = styled(QStringLiteral("◉ !"));
        QCOMPARE(afterFailure.text(), QStringLiteral("· $1,234"));
        QCOMPARE(afterFailure.runs(), styled().runs());
    }

    void theCurrencyIsDrawnSmallerThanTheAmount()
    {
        const MenuBarTitleRenderer renderer;
        const QList<MenuBarTitleRenderer::PlacedRun> placed = renderer.layout(styled(), {16, 2, Qt::white});
        QCOMPARE(placed.size(), 3);
        QCOMPARE(placed[0].font.pixelSize(), 20);
        QCOMPARE(placed[1].font.pixelSize(), 18);
        QCOMPARE(placed[2].font.pixelSize(), 26);
        QCOMPARE(placed[1].font.weight(), QFont::Medium);
        QCOMPARE(placed[2].font.weight(), QFont::DemiBold);
        QVERIFY(placed[1].rect.height() < placed[2].rect.height());
        // The runs follow one another after the icon, left to right, without overlapping.
        QVERIFY(placed[0].rect.left() >= MenuBarTitleRenderer::IconPoints * 2);
        QVERIFY(placed[1].rect.left() >= placed[0].rect.right() - 0.01);
        QVERIFY(placed[2].rect.left() >= placed[1].rect.right() - 0.01);
    }

    void theDotAndCurrencyAreRaisedAboveTheAmountsBaseline()
    {
        const MenuBarTitleRenderer renderer;
        const QList<MenuBarTitleRenderer::PlacedRun> placed = renderer.layout(styled(), {16, 1, Qt::white});
        const auto baseline = [](const MenuBarTitleRenderer::PlacedRun &run) {
            return run.rect.top() + QFontMetricsF(run.font).ascent();
        };
        QCOMPARE(baseline(placed[0]), baseline(placed[2]) - 1);
        QCOMPARE(baseline(placed[1]), baseline(placed[2]) - 1);
    }

    void theAmountUsesDigitsOfOneWidth()
    {
        const MenuBarTitleRenderer renderer;
        const QFontMetricsF metrics(renderer.font(styled().runs()[2], 1));
        QCOMPARE(metrics.horizontalAdvance(QStringLiteral("111")), metrics.horizontalAdvance(QStringLiteral("888")));
    }

    void theImageHoldsTheIconAndTextOnTransparency()
    {
        const MenuBarTitleRenderer renderer;
        const QImage icon = StatusIcon().image(28, Qt::white);
        const QImage image = renderer.render(styled(), icon, {16, 2, Qt::white});
        QCOMPARE(image.height(), 32);
        QCOMPARE(image.devicePixelRatio(), 2.0);
        // GNOME's AppIndicator extension keeps an icon this wide at its aspect ratio.
        QVERIFY2(image.width() >= 1.5 * image.height(), qPrintable(QString::number(image.width())));
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
        QCOMPARE(qAlpha(image.pixel(image.width() - 1, image.height() - 1)), 0);
        // Ink where the icon is and where each run is.
        QVERIFY(coveredPixels(image, QRect(0, 0, 28, 32)) > 50);
        for (const MenuBarTitleRenderer::PlacedRun &run : renderer.layout(styled(), {16, 2, Qt::white})) {
            QVERIFY2(coveredPixels(image, run.rect.toAlignedRect()) > 0, qPrintable(run.run.text));
        }
        // Between the icon and the dot there is nothing.
        QCOMPARE(coveredPixels(image, QRect(29, 0, 4, 32)), 0);
    }

    void theImageTakesTheColourItIsGiven()
    {
        const MenuBarTitleRenderer renderer;
        const QColor dark(0x20, 0x20, 0x20);
        const QImage image = renderer.render(styled(), StatusIcon().image(14, dark), {16, 1, dark})
                                 .convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                if (qAlpha(pixel) == 255) {
                    QCOMPARE(QColor(pixel), dark);
                }
            }
        }
    }

    void thePlaceholderImageIsNarrowerThanAFigure()
    {
        const MenuBarTitleRenderer renderer;
        const QImage icon = StatusIcon().image(14, Qt::white);
        const QImage placeholder = renderer.render(MenuBarTitle{QStringLiteral("◉ —"), std::nullopt}, icon, {});
        QCOMPARE(placeholder.height(), 16);
        QVERIFY(placeholder.width() > 14);
        const QList<MenuBarTitleRenderer::PlacedRun> placed =
            renderer.layout(MenuBarTitle{QStringLiteral("◉ —"), std::nullopt}, {});
        QCOMPARE(placed.size(), 1);
        QCOMPARE(placed[0].font.pixelSize(), 12);
        QCOMPARE(placed[0].font.weight(), QFont::Medium);
    }

    void theIconIsATintedSquare()
    {
        const StatusIcon icon;
        QVERIFY(icon.isValid());
        const QImage image = icon.image(22, Qt::red).convertToFormat(QImage::Format_ARGB32);
        QCOMPARE(image.size(), QSize(22, 22));
        QVERIFY(coveredPixels(image, image.rect()) > 22 * 22 / 5);
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
        QCOMPARE(QColor(image.pixel(11, 3)).rgb(), QColor(Qt::red).rgb());
    }

    void aMissingIconSourceGivesAnEmptySquare()
    {
        const StatusIcon icon(QStringLiteral("/nonexistent/icon.svg"));
        QVERIFY(!icon.isValid());
        const QImage image = icon.image(16, Qt::white);
        QCOMPARE(image.size(), QSize(16, 16));
        QCOMPARE(coveredPixels(image, image.rect()), 0);
    }
};

QTEST_MAIN(MenuBarTitleTest)
#include "tst_menubartitle.moc"
