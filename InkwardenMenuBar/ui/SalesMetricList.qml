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
            // Toggling or moving changes the rows in place, so they keep the keyboard focus.
            model: SalesMetricSettingsModel { store: list.store }
            delegate: ColumnLayout {
                id: entry
                required property int index
                required property string key
                required property string title
                required property bool isShown
                required property bool showsDivider
                required property bool canMoveUp
                required property bool canMoveDown
                required property string moveUpTitle
                required property string moveDownTitle
                objectName: "metricSetting" + index
                spacing: 0
                Layout.fillWidth: true

                Separator {
                    objectName: "divider"
                    visible: entry.showsDivider
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
                        text: entry.title
                        checked: entry.isShown
                        font: Typography.body
                        padding: 0
                        Layout.fillWidth: true
                        Accessible.name: text
                        onToggled: {
                            list.store.setSalesMetricHidden(entry.key, !checked)
                            // The store decides: show what it holds, not what was clicked.
                            checked = Qt.binding(() => entry.isShown)
                        }
                    }
                    SymbolButton {
                        objectName: "moveUpButton"
                        symbol: "chevron.up"
                        toolTip: entry.moveUpTitle
                        foreground: Theme.secondaryText
                        enabled: entry.canMoveUp
                        onClicked: list.store.moveSalesMetric(entry.key, -1)
                    }
                    SymbolButton {
                        objectName: "moveDownButton"
                        symbol: "chevron.down"
                        toolTip: entry.moveDownTitle
                        foreground: Theme.secondaryText
                        enabled: entry.canMoveDown
                        onClicked: list.store.moveSalesMetric(entry.key, 1)
                    }
                }
            }
        }
    }
}
