import QtQuick
import QtQuick.Layouts

// A hairline divider; `indent` leaves room on the leading side.
Item {
    property real indent: 0
    Layout.fillWidth: true
    implicitHeight: 1
    Rectangle {
        x: parent.indent
        width: parent.width - parent.indent
        height: 1
        color: Theme.separator
    }
}
