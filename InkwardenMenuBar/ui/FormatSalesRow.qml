import QtQuick
import QtQuick.Layouts

// One line of the sales breakdown: symbol, title over units, and the royalties when the format
// earns any (pre-orders and free ebooks show nothing on the trailing side).
Item {
    id: row
    property string title
    property string units
    property var royalties: undefined
    property string icon
    property string color

    Layout.fillWidth: true
    implicitHeight: content.implicitHeight + 20
    implicitWidth: content.implicitWidth + 28
    // The row reads as one line ("Paid ebooks, 7 units, $45.10"); its parts are not read again.
    Accessible.role: Accessible.StaticText
    Accessible.name: royalties !== undefined
                     //: Accessible name of a sales breakdown row: format, units sold, royalties
                     ? qsTr("%1, %2, %3").arg(title).arg(units).arg(royalties)
                     //: Accessible name of a sales breakdown row without royalties: format, units sold
                     : qsTr("%1, %2").arg(title).arg(units)

    RowLayout {
        id: content
        anchors.fill: parent
        anchors.leftMargin: 14
        anchors.rightMargin: 14
        anchors.topMargin: 10
        anchors.bottomMargin: 10
        spacing: 8

        SymbolIcon {
            symbol: row.icon
            color: Theme.color(row.color)
            size: 16
            Layout.preferredWidth: 22
        }
        ColumnLayout {
            spacing: 2
            Layout.fillWidth: true
            TextLine {
                objectName: "title"
                Accessible.ignored: true
                text: row.title
                font: Typography.make(Typography.bodySize, Font.Medium)
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            TextLine {
                objectName: "units"
                Accessible.ignored: true
                text: row.units
                font: Typography.caption
                color: Theme.secondaryText
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
        }
        TextLine {
            objectName: "royalties"
            Accessible.ignored: true
            visible: row.royalties !== undefined
            text: row.royalties ?? ""
            font: Typography.make(Typography.bodySize, Font.DemiBold, Typography.figureFamily)
        }
    }
}
