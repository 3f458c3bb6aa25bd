import QtQuick
import QtQuick.Layouts

// A titled row of the connect and settings views: the title, the row's controls, and an optional
// hint under them. Without a hint there is no third line at all.
ColumnLayout {
    id: field
    property string title
    property var hint: undefined
    default property alias content: holder.data

    spacing: 5
    Layout.fillWidth: true

    TextLine {
        objectName: "fieldTitle"
        text: field.title
        font: Typography.make(Typography.captionSize, Font.DemiBold)
    }
    ColumnLayout {
        id: holder
        objectName: "fieldContent"
        spacing: 5
        Layout.fillWidth: true
    }
    TextLine {
        objectName: "fieldHint"
        visible: field.hint !== undefined && field.hint !== null
        text: field.hint ?? ""
        font: Typography.caption2
        color: Theme.tertiaryText
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
}
