import QtQuick

// The Inkwarden mark. The logo image is looked up once when the view is built; without it, an
// indigo rounded square with the rising-chart symbol stands in. A missing logo is no error.
Item {
    id: logo
    property real size: 30
    property real cornerRadius: 8
    property url source: Qt.resolvedUrl("icons/InkwardenLogo.svg")
    readonly property bool showsImage: image.status === Image.Ready

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Graphic
    Accessible.name: "Inkwarden"

    Image {
        id: image
        objectName: "brandLogoImage"
        anchors.fill: parent
        source: logo.source
        sourceSize.width: logo.size * 2
        sourceSize.height: logo.size * 2
        fillMode: Image.PreserveAspectFit
        smooth: true
        visible: logo.showsImage
    }

    Rectangle {
        objectName: "brandLogoFallback"
        anchors.fill: parent
        visible: !logo.showsImage
        radius: logo.cornerRadius
        color: Theme.color("indigo")
        SymbolIcon {
            anchors.centerIn: parent
            symbol: "chart.line.uptrend.xyaxis"
            size: logo.size * 0.55
            color: Theme.color("white")
        }
    }
}
