import QtQuick

// What screen readers should say of a change they would not otherwise notice (a refresh that
// begins or brings new figures), without a word of the clocks that tick: `say()` shows an alert
// with the words, and Orca reads an alert as it appears. Nothing is drawn. A reader reads the words
// some moments after the alert appears, so each stays at least a second before the next one.
Item {
    id: announcement
    property string message
    property var waiting: []

    function say(words) {
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
        if (waiting.length === 0) {
            return;
        }
        // Shown again, even with the same words: every change is told.
        visible = false;
        message = waiting[0];
        waiting = waiting.slice(1);
        visible = true;
        spacing.restart();
    }

    width: 0
    height: 0
    visible: false
    Accessible.role: Accessible.AlertMessage
    Accessible.name: message

    Timer {
        id: spacing
        interval: 1000
        onTriggered: announcement.sayNext()
    }
}
