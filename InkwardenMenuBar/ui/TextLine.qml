import QtQuick
import QtQuick.Controls.Fusion

// A label that always shows its text as it stands: texts from the server are never read as markup.
Label {
    textFormat: Text.PlainText
    color: Theme.text
    font: Typography.body
    Accessible.name: text
}
