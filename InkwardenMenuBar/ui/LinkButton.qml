import QtQuick
import QtQuick.Controls.Fusion

// A link-style button: accent-coloured text, no frame.
AbstractButton {
    id: control
    property font labelFont: Typography.caption
    property color linkColor: Theme.accent

    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    padding: 2
    Accessible.name: text
    Accessible.role: Accessible.Link

    contentItem: Label {
        text: control.text
        textFormat: Text.PlainText
        font: control.labelFont
        color: control.linkColor
        opacity: control.enabled ? (control.down ? 0.7 : 1) : 0.45
    }
    background: Rectangle {
        visible: control.visualFocus
        color: "transparent"
        radius: 3
        border.width: 1
        border.color: control.linkColor
    }
}
