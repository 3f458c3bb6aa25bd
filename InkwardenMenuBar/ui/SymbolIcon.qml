import QtQuick

// One symbol of the icon table, drawn in a colour.
Text {
    id: icon
    property string symbol
    property real size: 16

    text: Icons.glyph(symbol)
    color: Theme.text
    font.family: Icons.family
    font.pixelSize: size
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    textFormat: Text.PlainText
    Accessible.ignored: true
}
