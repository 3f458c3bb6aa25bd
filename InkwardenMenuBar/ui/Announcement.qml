import QtQuick

// What screen readers should say of a change they would not otherwise notice (a refresh that
// begins or brings new figures, an error that appears), without a word of the clocks that tick:
// `say()` shows a notification with the words, and Orca reads a notification as it appears.
// Nothing is drawn. A reader reads the words some moments after it appears, so each stays a second
// before the next one, and the last goes once it has been read.
Item {
    id: announcement
    property string message
    property var waiting: []
    property bool turning: false

    // Said only while the popover is open: a closed one (kept a while before it is given up) says
    // nothing, amounts least of all, whether the words come or are due after it closed.
    function popoverOpen() {
        return !!announcement.Window.window && announcement.Window.window.visible;
    }
    function say(words) {
        if (!popoverOpen()) {
            return;
        }
        // Words already on their way are not said twice in a row.
        const last = waiting.length > 0 ? waiting[waiting.length - 1] : (spacing.running ? message : "");
        if (words.length === 0 || words === last) {
            return;
        }
        waiting = waiting.concat([words]);
        if (!spacing.running) {
            sayNext();
        }
    }
    function sayNext() {
        if (!popoverOpen())
            waiting = [];
        if (waiting.length === 0) {
            visible = false;
            return;
        }
        // Shown again, even with the same words: every change is told.
        turning = true;
        visible = false;
        message = waiting[0];
        waiting = waiting.slice(1);
        visible = true;
        turning = false;
        spacing.restart();
    }
    // Hidden with what holds it (the error banner goes), it forgets its words: shown again with its
    // holder, it would say them anew, long after they were true.
    onVisibleChanged: {
        if (!visible && !turning) {
            waiting = [];
            spacing.stop();
            visible = false;
        }
    }

    width: 0
    height: 0
    visible: false
    Accessible.role: Accessible.Notification
    Accessible.name: message

    Timer {
        id: spacing
        interval: 1000
        onTriggered: announcement.sayNext()
    }
}
