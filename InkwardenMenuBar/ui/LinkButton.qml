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
    // A screen reader's "press" follows the link, as a click does.
    Accessible.onPressAction: if (enabled) clicked()

    contentItem: Label {
        text: control.text
        textFormat: Text.PlainText
        font: control.labelFont
        color: control.linkColor
        opacity: control.enabled ? (control.down ? 0.7 : 1) : 0.45
    }

    FocusRing {
        outset: 1
        ownerRadius: 3
    }
}
