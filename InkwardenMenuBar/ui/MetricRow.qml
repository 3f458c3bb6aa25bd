import QtQuick
import QtQuick.Layouts

// One financial figure: symbol, title, and the amount in fixed-width digits.
RowLayout {
    id: row
    property string title
    property string value
    property string icon
    property string color

    spacing: 8
    Layout.fillWidth: true
    Accessible.role: Accessible.StaticText
    //: Accessible name of a financial figure: its name, then the amount
    Accessible.name: qsTr("%1: %2").arg(title).arg(value)

    SymbolIcon {
        symbol: row.icon
        color: Theme.color(row.color)
        size: 15
        Layout.preferredWidth: 20
    }
    TextLine {
        objectName: "title"
        text: row.title
        // The row reads as one line; its parts are not read again.
        Accessible.ignored: true
        color: Theme.secondaryText
        font: Typography.body
    }
    Item { Layout.fillWidth: true }
    TextLine {
        objectName: "value"
        Accessible.ignored: true
        text: row.value
        font: Typography.make(Typography.bodySize, Font.DemiBold, Typography.figureFamily)
    }
}
