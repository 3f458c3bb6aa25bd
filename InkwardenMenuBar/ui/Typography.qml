pragma Singleton
import QtQuick

// The type table of the views, in pixels. Text uses the desktop's font; figures (amounts, counts,
// countdowns) use Roboto, whose digits all have the same width in every weight, so a changing
// amount or a ticking countdown never shifts sideways.
QtObject {
    readonly property string textFamily: Application.font.family
    readonly property string figureFamily: "Roboto"

    readonly property int largeTitleSize: 26
    readonly property int titleSize: 22
    readonly property int title2Size: 17
    readonly property int title3Size: 15
    readonly property int headlineSize: 13
    readonly property int bodySize: 13
    readonly property int calloutSize: 12
    readonly property int subheadlineSize: 11
    readonly property int footnoteSize: 10
    readonly property int captionSize: 10
    readonly property int caption2Size: 10
    readonly property int amountSize: 38

    function make(size, weight, family) {
        return Qt.font({ "family": family ?? textFamily, "pixelSize": size, "weight": weight ?? Font.Normal })
    }

    readonly property font largeTitle: make(largeTitleSize)
    readonly property font title: make(titleSize)
    readonly property font title2: make(title2Size)
    readonly property font title3: make(title3Size)
    readonly property font headline: make(headlineSize, Font.DemiBold)
    readonly property font body: make(bodySize)
    readonly property font callout: make(calloutSize)
    readonly property font subheadline: make(subheadlineSize)
    readonly property font footnote: make(footnoteSize)
    readonly property font caption: make(captionSize)
    readonly property font caption2: make(caption2Size)
    readonly property font amount: make(amountSize, Font.Bold, figureFamily)
    // Small capitals-style headings such as "SALES BREAKDOWN": caption2, semibold, tracked 0.8.
    readonly property font sectionHeading: Qt.font({ "family": textFamily, "pixelSize": caption2Size,
                                                     "weight": Font.DemiBold, "letterSpacing": 0.8 })
}
