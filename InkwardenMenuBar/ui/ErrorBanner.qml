import QtQuick
import QtQuick.Layouts

// An error message on an orange ground; long messages wrap over several lines. Screen readers
// find it as an alert, and are told its words as it appears and whenever they change.
Rectangle {
    id: banner
    property string message

    Layout.fillWidth: true
    implicitHeight: content.implicitHeight + 20
    radius: 9
    color: Theme.withOpacity(Theme.color("orange"), 0.1)
    Accessible.role: Accessible.AlertMessage
    Accessible.name: message

    // Orca reads an alert only when it comes upon it; a notification it reads as it appears.
    Announcement {
        id: announcement
        objectName: "errorAnnouncement"
    }
    function tell() {
        if (banner.visible && banner.message.length > 0) {
            announcement.say(banner.message);
        }
    }
    onMessageChanged: tell()
    onVisibleChanged: tell()

    RowLayout {
        id: content
        anchors.fill: parent
        anchors.margins: 10
        spacing: 8
        SymbolIcon {
            symbol: "exclamationmark.triangle.fill"
            color: Theme.color("orange")
            size: 14
            Layout.alignment: Qt.AlignTop
        }
        TextLine {
            objectName: "errorMessage"
            text: banner.message
            // The banner itself is the alert that screen readers read.
            Accessible.ignored: true
            font: Typography.caption
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignTop
        }
    }
}
