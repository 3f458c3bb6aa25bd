pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Fusion
import QtQuick.Layouts

// A segmented choice: one segment per row of `model` (a list model with the roles value, title and
// isCurrent), showing the title, the current row selected. Choosing a segment emits `activated`
// with its value; the picker never selects by itself, so the store decides what is shown.
Rectangle {
    id: picker
    property var model
    property string accessibleName
    signal activated(string value)

    implicitHeight: 26
    Layout.fillWidth: true
    radius: 7
    color: Theme.withOpacity(Theme.text, Theme.dark ? 0.10 : 0.07)
    opacity: enabled ? 1 : 0.5
    Accessible.role: Accessible.PageTabList
    Accessible.name: accessibleName

    RowLayout {
        anchors.fill: parent
        anchors.margins: 2
        spacing: 2
        Repeater {
            model: picker.model
            delegate: AbstractButton {
                id: segment
                required property string value
                required property string title
                required property bool isCurrent
                required property int index
                objectName: picker.objectName + "Segment" + index
                text: title
                checked: isCurrent
                enabled: picker.enabled
                focusPolicy: Qt.StrongFocus
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                Accessible.role: Accessible.PageTab
                Accessible.name: text
                Accessible.checkable: true
                Accessible.checked: checked
                onClicked: picker.activated(value)

                background: Rectangle {
                    radius: 5
                    color: segment.checked ? (Theme.dark ? Qt.lighter(Theme.controlBackground, 1.9) : "#ffffff")
                                           : "transparent"
                    border.width: segment.visualFocus ? 2 : (segment.checked && !Theme.dark ? 1 : 0)
                    border.color: segment.visualFocus ? Theme.accent : Theme.separator
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
