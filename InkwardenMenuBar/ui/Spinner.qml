import QtQuick

// A small turning progress mark, the size of a caption; shown while something loads.
Item {
    id: spinner
    property real size: 14
    property color color: Theme.secondaryText
    // Only while someone can see it: a turning mark in a hidden popover would wake Inkwarden sixty
    // times a second for nothing.
    property bool running: visible && Window.visibility !== Window.Hidden

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Animation
    //: Accessible name of a turning progress mark shown while something loads
    Accessible.name: qsTr("Loading")

    SymbolIcon {
        anchors.centerIn: parent
        symbol: "progress.spinner"
        size: spinner.size
        color: spinner.color
        // A plain animation, not an animator: an animator is stopped only by the next frame, and a
        // hidden window draws none, so it would tick on for as long as the popover stays closed.
        NumberAnimation on rotation {
            from: 0
            to: 360
            duration: 900
            loops: Animation.Infinite
            running: spinner.running
        }
    }
}
