import QtQuick
import QtQuick.Controls.Fusion
import QtQuick.Layouts

// A label that always shows its text as it stands: texts from the server are never read as markup.
Label {
    textFormat: Text.PlainText
    color: Theme.text
    font: Typography.body
    Accessible.name: text
    // A wrapping or eliding line takes the width its layout gives it, however long its text: the
    // layout never grows wider than the popover because of it.
    Layout.preferredWidth: Layout.fillWidth && (wrapMode !== Text.NoWrap || elide !== Text.ElideNone) ? 0 : -1
}
