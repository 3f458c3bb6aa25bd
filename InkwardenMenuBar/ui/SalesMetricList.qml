pragma ComponentBehavior: Bound
import QtQuick
import Inkwarden.Ui
import QtQuick.Controls.Fusion
import QtQuick.Layouts

// The settings' list of sales formats: a checkbox to show or hide each, and buttons that move it
// up or down. Hidden formats keep their place.
Rectangle {
    id: list
    required property RoyaltiesStore store

    Layout.fillWidth: true
    implicitHeight: rows.implicitHeight
    radius: 9
    color: Theme.controlBackground

    ColumnLayout {
        id: rows
        anchors.left: parent.left
        anchors.right: parent.right
        spacing: 0

        Repeater {
            // Counted, not listed: toggling or moving keeps the rows (and the keyboard focus).
            model: list.store.salesMetricSettingsRows.length
            delegate: ColumnLayout {
                id: entry
                required property int index
                readonly property var row: list.store.salesMetricSettingsRows[index]
                objectName: "metricSetting" + index
                spacing: 0
                Layout.fillWidth: true

                Separator {
                    objectName: "divider"
                    visible: entry.row.showsDivider
                }
                RowLayout {
                    spacing: 8
                    Layout.fillWidth: true
                    Layout.leftMargin: 10
                    Layout.rightMargin: 10
                    Layout.topMargin: 7
                    Layout.bottomMargin: 7

                    CheckBox {
                        id: toggle
                        objectName: "metricToggle"
                        text: entry.row.title
                        checked: entry.row.isShown
                        font: Typography.body
                        padding: 0
                        Layout.fillWidth: true
                        Accessible.name: text
                        onToggled: {
                            list.store.setSalesMetricHidden(entry.row.id, !checked)
                            // The store decides: show what it holds, not what was clicked.
                            checked = Qt.binding(() => entry.row.isShown)
                        }
                    }
                    SymbolButton {
                        objectName: "moveUpButton"
                        symbol: "chevron.up"
                        toolTip: entry.row.moveUpTitle
                        foreground: Theme.secondaryText
                        enabled: entry.row.canMoveUp
                        onClicked: list.store.moveSalesMetric(entry.row.id, -1)
                    }
                    SymbolButton {
                        objectName: "moveDownButton"
                        symbol: "chevron.down"
                        toolTip: entry.row.moveDownTitle
                        foreground: Theme.secondaryText
                        enabled: entry.row.canMoveDown
                        onClicked: list.store.moveSalesMetric(entry.row.id, 1)
                    }
                }
            }
        }
    }
}
