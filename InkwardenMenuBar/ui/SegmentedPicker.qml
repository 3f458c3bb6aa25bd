pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Fusion
import QtQuick.Layouts
import QtQuick.Templates as T

// A segmented choice: one segment per row of `model` (a list model with the roles value, title and
// isCurrent), showing the title, the current row selected. Choosing a segment emits `activated`
// with its value; the picker never selects by itself, so the store decides what is shown.
//
// From the keyboard each segment is a stop of Tab and Shift+Tab, Space or Enter chooses it, and
// Left and Right choose the segment beside the focused one and take the focus there, as in a
// group of radio buttons (they stop at the ends). Screen readers find a group of radio buttons
// too, and say which one is chosen.
Rectangle {
    id: picker
    property var model
    property string accessibleName
    // False greys the picker out and chooses nothing, while the segments keep the keyboard focus: a
    // screen reader stays on the segment it was on, rather than on what a lost focus falls back to.
    property bool available: true
    signal activated(string value)
    // Asks the segment at `index` (the selected one for -1) to take the focus; `choose` chooses it
    // as well.
    signal segmentFocusRequested(int index, bool choose, int reason)

    // Puts the keyboard focus on the selected segment; the ring shows only for a keyboard `reason`.
    function focusCurrent(reason: int) {
        segmentFocusRequested(-1, false, reason)
    }

    implicitHeight: 26
    Layout.fillWidth: true
    radius: 7
    color: Theme.withOpacity(Theme.text, Theme.dark ? 0.10 : 0.07)
    opacity: enabled && available ? 1 : 0.5
    Accessible.role: Accessible.Grouping
    Accessible.name: accessibleName

    RowLayout {
        anchors.fill: parent
        anchors.margins: 2
        spacing: 2
        Repeater {
            model: picker.model
            // A radio button at heart, for the role screen readers get (a role set on another kind
            // of button would not hold); chosen only by the store, through `isCurrent`.
            delegate: T.RadioButton {
                id: segment
                required property string value
                required property string title
                required property bool isCurrent
                required property int index
                objectName: picker.objectName + "Segment" + index
                text: title
                // A click or Space toggles a checked button; the store decides what is checked.
                checked: isCurrent
                onToggled: checked = Qt.binding(() => segment.isCurrent)
                autoExclusive: false
                enabled: picker.enabled
                focusPolicy: Qt.StrongFocus
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                Accessible.name: text
                Accessible.checked: checked
                // A screen reader's "press" chooses the segment, as a click does, unless greyed out.
                Accessible.onPressAction: if (enabled) clicked()
                Accessible.onToggleAction: if (enabled) clicked()
                onClicked: {
                    if (picker.available)
                        picker.activated(value)
                }
                // The first segment has none before it (-1 would mean the selected one). Greyed
                // out, the focus stays where the choice is.
                Keys.onLeftPressed: {
                    if (index > 0 && picker.available)
                        picker.segmentFocusRequested(index - 1, true, Qt.BacktabFocusReason)
                }
                Keys.onRightPressed: {
                    if (picker.available)
                        picker.segmentFocusRequested(index + 1, true, Qt.TabFocusReason)
                }

                Connections {
                    target: picker
                    function onSegmentFocusRequested(index: int, choose: bool, reason: int) {
                        if (index === -1 ? !segment.isCurrent : index !== segment.index)
                            return
                        // The focus first, then the choice (which can grey the picker out for a
                        // moment: the period cooldown).
                        segment.forceActiveFocus(reason)
                        if (choose && !segment.isCurrent)
                            picker.activated(segment.value)
                    }
                }

                background: Rectangle {
                    radius: 5
                    color: segment.checked ? (Theme.dark ? Qt.lighter(Theme.controlBackground, 1.9) : "#ffffff")
                                           : "transparent"
                    border.width: segment.checked && !Theme.dark ? 1 : 0
                    border.color: Theme.separator
                }
                FocusRing {
                    outset: 1
                    ownerRadius: 5
                }
                contentItem: Label {
                    text: segment.text
                    textFormat: Text.PlainText
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                    font: segment.checked ? Typography.make(Typography.calloutSize, Font.DemiBold)
                                          : Typography.callout
                    color: Theme.text
                }
            }
        }
    }
}
