pragma ComponentBehavior: Bound
import QtQuick
import Inkwarden.Ui
import QtQuick.Controls.Fusion
import QtQuick.Layouts

// The settings' list of sales formats: a checkbox to show or hide each, and buttons that move it
// up or down. Hidden formats keep their place.
//
// From the keyboard: Tab and Shift+Tab go through each row's check box and move buttons (a button
// that cannot move its format is greyed out and skipped); Space toggles the check box or presses
// the button, and so does Enter. Up and Down take the focus to the same control of the row above
// or below; Alt+Up and Alt+Down move the focused row's format. After a move, the focus follows
// the format to its new row.
Rectangle {
    id: list
    required property RoyaltiesStore store

    // Asks the row of the format `key` to take the focus on `part` ("toggle", "up" or "down");
    // the ring shows only for a keyboard `reason`.
    signal rowFocusRequested(string key, string part, int reason)

    // Moves the format `key` by `by` places; when `part` names the control of its row that had the
    // focus, the focus follows the format there.
    function move(key: string, by: int, part: string, reason: int) {
        list.store.moveSalesMetric(key, by)
        if (part.length > 0)
            list.rowFocusRequested(key, part, reason)
    }

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
            // Toggling or moving changes the rows in place: a toggled row keeps the keyboard focus,
            // and a moved format takes it along to its new row (move).
            model: SalesMetricSettingsModel {
                id: metrics
                store: list.store
            }
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

                // The control of this row that has the focus: "toggle", "up", "down", or "".
                function focusedPart(): string {
                    return toggle.activeFocus ? "toggle"
                         : moveUp.activeFocus ? "up"
                         : moveDown.activeFocus ? "down" : ""
                }
                // A move button that cannot move the format further is greyed out: the other one
                // takes the focus instead, else the check box.
                function takeFocus(part: string, reason: int) {
                    const wanted = part === "up" ? moveUp : part === "down" ? moveDown : toggle
                    const target = wanted.enabled ? wanted
                                 : moveUp.enabled ? moveUp
                                 : moveDown.enabled ? moveDown : toggle
                    target.forceActiveFocus(reason)
                }
                // Moves the format from the keyboard or a click; the focus follows it if the
                // button had it, with its ring if the keyboard pressed the button.
                function moveBy(by: int, button: SymbolButton) {
                    list.move(entry.key, by, button.activeFocus ? entry.focusedPart() : "",
                              button.visualFocus ? Qt.TabFocusReason : Qt.OtherFocusReason)
                }

                Connections {
                    target: list
                    function onRowFocusRequested(key: string, part: string, reason: int) {
                        if (key === entry.key)
                            entry.takeFocus(part, reason)
                    }
                }

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
                    Keys.onPressed: event => {
                        const part = entry.focusedPart()
                        const step = event.key === Qt.Key_Up ? -1 : event.key === Qt.Key_Down ? 1 : 0
                        if (part === "" || step === 0)
                            return
                        if (event.modifiers === Qt.AltModifier) {
                            if (step < 0 ? entry.canMoveUp : entry.canMoveDown)
                                list.move(entry.key, step, part, Qt.TabFocusReason)
                            event.accepted = true
                        } else if (event.modifiers === Qt.NoModifier) {
                            const neighbour = metrics.value(entry.index + step, "key")
                            if (neighbour !== undefined)
                                list.rowFocusRequested(neighbour, part, step < 0 ? Qt.BacktabFocusReason
                                                                                  : Qt.TabFocusReason)
                            event.accepted = true
                        }
                    }

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
                        FocusRing {
                            ownerRadius: 3
                        }
                    }
                    SymbolButton {
                        id: moveUp
                        objectName: "moveUpButton"
                        symbol: "chevron.up"
                        toolTip: entry.moveUpTitle
                        //: What a metric's move-up and move-down buttons do, for screen readers
                        accessibleDescription: qsTr("Changes the order of the sales breakdown")
                        foreground: Theme.secondaryText
                        enabled: entry.canMoveUp
                        onClicked: entry.moveBy(-1, moveUp)
                    }
                    SymbolButton {
                        id: moveDown
                        objectName: "moveDownButton"
                        symbol: "chevron.down"
                        toolTip: entry.moveDownTitle
                        accessibleDescription: qsTr("Changes the order of the sales breakdown")
                        foreground: Theme.secondaryText
                        enabled: entry.canMoveDown
                        onClicked: entry.moveBy(1, moveDown)
                    }
                }
            }
        }
    }
}
