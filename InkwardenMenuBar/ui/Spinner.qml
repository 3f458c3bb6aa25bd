import QtQuick

// A small turning progress mark, the size of a caption; shown while something loads.
Item {
    id: spinner
    property real size: 14
    property color color: Theme.secondaryText
    property bool running: visible

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Animation
    Accessible.name: "Loading"

    SymbolIcon {
        anchors.centerIn: parent
        symbol: "progress.spinner"
        size: spinner.size
        color: spinner.color
        RotationAnimator on rotation {
            from: 0
            to: 360
            duration: 900
            loops: Animation.Infinite
            running: spinner.running
        }
    }
}
