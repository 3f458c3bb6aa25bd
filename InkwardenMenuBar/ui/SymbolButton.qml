import QtQuick
import QtQuick.Controls.Fusion
import QtQuick.Layouts

// A button with a symbol before its text, or a borderless symbol alone (give it a `toolTip`, which
// is also its accessible name). `prominent` fills it with the accent colour; `large` is the tall
// control size; `busy` shows a small spinner in place of the symbol. `available` false greys it
// out as `enabled` false does, but it keeps the keyboard focus (a screen reader stays on it): for a
// button that greys out as it is pressed. Such a button acts on `triggered`, a click while available.
Button {
    id: control
    property string symbol
    property real symbolSize: 15
    property bool prominent: false
    property bool large: false
    property bool busy: false
    property bool available: true
    property string toolTip
    signal triggered()
    // For screen readers, where the name alone does not say enough (an icon-only button).
    property string accessibleDescription
    property color foreground: prominent ? Theme.accentText : Theme.text
    property font labelFont: Typography.body

    readonly property bool iconOnly: text.length === 0

    flat: iconOnly
    implicitHeight: large ? 34 : (iconOnly ? 26 : 28)
    implicitWidth: iconOnly ? 26 : Math.max(implicitContentWidth + leftPadding + rightPadding, 40)
    leftPadding: iconOnly ? 2 : 10
    rightPadding: iconOnly ? 2 : 10
    // In a crowded row the label elides rather than pushing the row wider than the popover.
    Layout.minimumWidth: iconOnly ? implicitWidth : 40
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true

    ToolTip.visible: toolTip.length > 0 && hovered
    ToolTip.text: toolTip
    ToolTip.delay: 600
    Accessible.name: iconOnly ? toolTip : text
    Accessible.role: Accessible.Button
    Accessible.description: accessibleDescription
    // A screen reader's "press" clicks, as the pointer and the keyboard do, unless greyed out.
    Accessible.onPressAction: if (enabled && available) clicked()
    onClicked: if (available) triggered()

    contentItem: RowLayout {
        spacing: 6
        opacity: control.enabled && control.available ? 1 : 0.45
        Item { Layout.fillWidth: !control.iconOnly }
        Spinner {
            objectName: control.objectName + "Spinner"
            visible: control.busy
            color: control.foreground
            Accessible.ignored: true
        }
        SymbolIcon {
            visible: !control.busy && control.symbol.length > 0
            symbol: control.symbol
            size: control.symbolSize
            color: control.foreground
            Layout.alignment: Qt.AlignVCenter
        }
        Label {
            visible: !control.iconOnly
            // The button is named by its text already.
            Accessible.ignored: true
            Layout.fillWidth: control.Layout.fillWidth
            Layout.minimumWidth: 0
            horizontalAlignment: Text.AlignHCenter
            text: control.text
            textFormat: Text.PlainText
            font: control.labelFont
            color: control.foreground
            elide: Text.ElideRight
            Layout.alignment: Qt.AlignVCenter
        }
        Item { Layout.fillWidth: !control.iconOnly }
    }

    background: Rectangle {
        visible: !control.flat || control.hovered
        radius: control.large ? 8 : 6
        color: control.prominent
               ? (control.down ? Qt.darker(Theme.accent, 1.15) : Theme.accent)
               : control.flat
                 ? Theme.withOpacity(Theme.text, control.down ? 0.14 : 0.07)
                 : (control.down ? Qt.darker(Theme.controlBackground, 1.08) : Theme.controlBackground)
        border.width: control.prominent || control.flat ? 0 : 1
        border.color: Theme.separator
        opacity: control.enabled && control.available ? 1 : 0.55
    }

    FocusRing {
        ownerRadius: control.large ? 8 : 6
    }
}
