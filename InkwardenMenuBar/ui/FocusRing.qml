import QtQuick
import QtQuick.Templates as T

// The keyboard focus ring of a control: a 2 px frame in the accent colour, `outset` outside the
// control's edges so that it also shows around a button filled with the accent colour. Put it
// inside the control: it surrounds its parent, the `owner`.
//
// It shows while the control has the focus from the keyboard (Tab, Shift+Tab, the arrows of a
// picker or a list), never after a click; a text field shows it whenever it has the focus, since
// what is typed goes there. A control greyed out for a moment by its own press (`available` false:
// Refresh while its request runs, the period picker during the cooldown) keeps the focus and its
// ring. A control whose ring shows is scrolled into view, whatever scrolls it; one that takes the
// focus without showing it (where a screen starts, a click) stays where it is.
Rectangle {
    id: ring
    property real outset: 3
    // The control's own corner radius; the ring's follows it at its distance.
    property real ownerRadius: 6

    readonly property Item owner: parent
    readonly property bool ownerHasFocus: owner !== null && owner.activeFocus
    readonly property bool keyboardFocus: {
        const asControl = owner as T.Control
        return asControl ? asControl.visualFocus : ownerHasFocus
    }
    readonly property bool focusedByPointer: (owner as T.Control)?.focusReason === Qt.MouseFocusReason
    // The focus came from the keyboard and has not left the control since, except while it was
    // greyed out; a click ends it.
    property bool fromKeyboard: false
    readonly property bool shows: ownerHasFocus && fromKeyboard

    objectName: "focusRing"
    anchors.fill: parent
    anchors.margins: -outset
    z: 10
    radius: ownerRadius + outset
    color: "transparent"
    border.width: 2
    border.color: Theme.accent
    visible: shows

    onKeyboardFocusChanged: {
        if (keyboardFocus)
            fromKeyboard = true
        else if (owner && owner.activeFocus && owner.enabled)
            fromKeyboard = false
    }
    onOwnerHasFocusChanged: {
        if (!ownerHasFocus && owner && owner.enabled)
            fromKeyboard = false
    }
    onFocusedByPointerChanged: {
        if (focusedByPointer)
            fromKeyboard = false
    }
    onShowsChanged: {
        if (shows)
            revealOwner()
    }

    // Scrolls each view that holds the control so that the control and its ring are in sight, with
    // a little room around them.
    function revealOwner() {
        const room = outset + 12
        for (let ancestor = owner.parent; ancestor; ancestor = ancestor.parent) {
            const flickable = ancestor as Flickable
            if (!flickable)
                continue
            const area = owner.mapToItem(flickable.contentItem, -room, -room, owner.width + 2 * room,
                                         owner.height + 2 * room)
            const bottom = flickable.contentHeight - flickable.height
            if (area.y < flickable.contentY)
                flickable.contentY = Math.max(0, area.y)
            else if (area.y + area.height > flickable.contentY + flickable.height)
                flickable.contentY = Math.max(0, Math.min(bottom, area.y + area.height - flickable.height))
        }
    }
}
