import QtQuick

// The headline amount. When the text changes, the old amount rolls out and the new one rolls in:
// upwards when the figure went up, downwards when `countsDown` says it went down.
Item {
    id: rolling
    property string text
    property bool countsDown: false
    property font font: Typography.amount
    property color color: Theme.text
    property int duration: 450

    implicitWidth: Math.max(current.implicitWidth, previous.implicitWidth)
    implicitHeight: current.implicitHeight
    clip: true
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    property string shownText: text
    property string leavingText

    onTextChanged: {
        if (text === shownText)
            return
        // The first amount, arriving as the view is made, appears without a roll.
        if (shownText === "") {
            shownText = text
            return
        }
        leavingText = shownText
        shownText = text
        roll.restart()
    }

    Text {
        id: previous
        objectName: "leavingAmount"
        text: rolling.leavingText
        textFormat: Text.PlainText
        font: rolling.font
        color: rolling.color
        anchors.horizontalCenter: parent.horizontalCenter
        opacity: 0
    }
    Text {
        id: current
        objectName: "shownAmount"
        text: rolling.shownText
        textFormat: Text.PlainText
        font: rolling.font
        color: rolling.color
        anchors.horizontalCenter: parent.horizontalCenter
    }

    ParallelAnimation {
        id: roll
        readonly property real distance: current.implicitHeight * 0.6 * (rolling.countsDown ? -1 : 1)
        NumberAnimation { target: current; property: "y"; from: roll.distance; to: 0; duration: rolling.duration; easing.type: Easing.InOutQuad }
        NumberAnimation { target: current; property: "opacity"; from: 0; to: 1; duration: rolling.duration; easing.type: Easing.InOutQuad }
        NumberAnimation { target: previous; property: "y"; from: 0; to: -roll.distance; duration: rolling.duration; easing.type: Easing.InOutQuad }
        NumberAnimation { target: previous; property: "opacity"; from: 1; to: 0; duration: rolling.duration; easing.type: Easing.InOutQuad }
    }
}
