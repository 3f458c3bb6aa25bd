import QtQuick
import QtQuick.Controls.Fusion

// A link-style button: accent-coloured text, no frame. `available` false greys it out as `enabled`
// false does, but it keeps the keyboard focus (a screen reader stays on it): for a link that greys
// out as it is pressed, which acts on `triggered`, a click while available.
AbstractButton {
    id: control
    property bool available: true
    property font labelFont: Typography.caption
    property color linkColor: Theme.accent
    signal triggered()

    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    padding: 2
    Accessible.name: text
    Accessible.role: Accessible.Link
    // A screen reader's "press" follows the link, as a click does.
    Accessible.onPressAction: if (enabled && available) clicked()
    onClicked: if (available) triggered()

    contentItem: Label {
        text: control.text
        textFormat: Text.PlainText
        font: control.labelFont
        color: control.linkColor
        opacity: control.enabled && control.available ? (control.down ? 0.7 : 1) : 0.45
    }

    FocusRing {
        outset: 1
        ownerRadius: 3
    }
}
