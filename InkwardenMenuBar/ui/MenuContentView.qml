import QtQuick
import Inkwarden.Ui
import QtQuick.Controls.Fusion
import QtQuick.Templates as T

// The popover's content: the connect view while no account is connected, else the settings page
// while it is open, else the dashboard; and the update prompt over them. Escape asks the shell to
// close the popover (`closeRequested`); every Quit in the views calls Qt.quit(), which the shell
// connects to the application's quit. The controls take their colours from the desktop's palette
// as it is now, so a switch between light and dark reaches them too.
//
// Everything works from the keyboard: each screen puts the focus on its first control as it appears,
// Tab and Shift+Tab go through the controls in reading order, each with its focus ring, and Enter
// presses the focused button as Space does.
Pane {
    id: root
    required property RoyaltiesStore store
    readonly property UpdateViewModel updates: UpdateViewModel {
        store: root.store
    }
    signal closeRequested()

    implicitWidth: 360
    implicitHeight: 560
    padding: 0
    background: Rectangle { color: Theme.windowBackground }
    palette.window: Theme.desktop.window
    palette.windowText: Theme.desktop.windowText
    palette.base: Theme.desktop.base
    palette.alternateBase: Theme.desktop.alternateBase
    palette.text: Theme.desktop.text
    palette.button: Theme.desktop.button
    palette.buttonText: Theme.desktop.buttonText
    palette.highlight: Theme.desktop.highlight
    palette.highlightedText: Theme.desktop.highlightedText
    palette.placeholderText: Theme.desktop.placeholderText
    palette.light: Theme.desktop.light
    palette.midlight: Theme.desktop.midlight
    palette.mid: Theme.desktop.mid
    palette.dark: Theme.desktop.dark
    palette.shadow: Theme.desktop.shadow

    // Enter and Return press the focused button, link or segment and toggle the focused switch or
    // check box, as Space does (Qt's controls take only Space).
    function pressFocusedControl(event: KeyEvent) {
        const button = Window.activeFocusItem as T.AbstractButton
        if (!button || !button.enabled) {
            event.accepted = false
            return
        }
        if (button.checkable) {
            button.toggle()
            button.toggled()
        }
        button.clicked()
    }
    Keys.onReturnPressed: event => pressFocusedControl(event)
    Keys.onEnterPressed: event => pressFocusedControl(event)

    // Puts the keyboard focus on the first control of the screen shown, without a ring until the
    // keyboard moves it: as the screen appears, and whenever the popover is shown again. An open
    // update prompt keeps the focus.
    function focusScreen() {
        if (updatePrompt.visible)
            return
        const connect = screen.item as ConnectView
        const dashboard = screen.item as DashboardView
        const settings = screen.item as SettingsView
        connect?.focusFirstControl()
        dashboard?.focusFirstControl()
        settings?.focusFirstControl()
    }
    Window.onVisibilityChanged: {
        if (Window.visibility !== Window.Hidden)
            focusScreen()
    }
    function isInScreen(item: Item): bool {
        for (let ancestor = item; ancestor; ancestor = ancestor.parent) {
            if (ancestor === screen)
                return true
        }
        return false
    }

    Loader {
        id: screen
        objectName: "screen"
        anchors.fill: parent
        // The screens' focus stays inside the popover's content as they change.
        focus: true
        onLoaded: root.focusScreen()
        sourceComponent: !root.store.isConnected ? connectScreen
                       : root.store.isShowingSettings ? settingsScreen
                       : dashboardScreen
    }

    // The Loader makes these in its own context, which a bound component would refuse; they reach
    // the store through the root's id.
    // qmllint disable unqualified
    Component {
        id: connectScreen
        ConnectView { objectName: "connectView"; store: root.store }
    }
    Component {
        id: settingsScreen
        SettingsView { objectName: "settingsView"; store: root.store }
    }
    Component {
        id: dashboardScreen
        DashboardView { objectName: "dashboardView"; store: root.store }
    }
    // qmllint enable unqualified

    // A focus that falls to the popover itself (the sign-in greyed out as it connects, a screen
    // that goes) leaves a screen reader nothing but the popover's whole text, and the keyboard
    // nothing to press: it goes on to the screen's first control that can take it. Not while it is
    // anywhere else (inside a scrolled page, an open list, the update prompt), not while the prompt
    // gives it back, nor while the popover is not the active window, which has no focus at all (Qt
    // gives it back as the window comes back).
    function recoverFocus() {
        if (!Window.active || focusRestorer.running)
            return
        const focused = Window.activeFocusItem
        if (!focused || focused === root || focused === screen || focused === Window.contentItem)
            focusScreen()
    }
    Window.onActiveFocusItemChanged: focusRecovery.restart()
    Timer {
        id: focusRecovery
        interval: 0
        onTriggered: root.recoverFocus()
    }
    Timer {
        id: focusRestorer
        interval: 0
        onTriggered: updatePrompt.restoreFocus()
    }

    Dialog {
        id: updatePrompt
        objectName: "updatePrompt"
        parent: T.Overlay.overlay
        anchors.centerIn: parent
        width: 300
        modal: true
        visible: root.store.isShowingUpdatePrompt
        title: root.updates.promptTitle
        closePolicy: Popup.CloseOnEscape
        // Takes the keyboard focus as it opens, on its prominent button, and gives it back as it
        // closes to the control that had it (else to the screen's first control).
        property Item focusBefore
        focus: true
        onAboutToShow: {
            const focused = root.Window.activeFocusItem
            focusBefore = focused && root.isInScreen(focused) ? focused : null
        }
        onOpened: downloadButton.forceActiveFocus()
        palette: root.palette
        onClosed: {
            root.store.isShowingUpdatePrompt = false
            // After the closing popup has handed the focus to the window, where a screen reader
            // would find nothing but the popover's whole text.
            focusRestorer.restart()
        }
        function restoreFocus() {
            if (focusBefore && focusBefore.visible && focusBefore.enabled)
                focusBefore.forceActiveFocus()
            root.recoverFocus()
        }

        contentItem: TextLine {
            objectName: "updatePromptMessage"
            text: root.updates.promptMessage
            font: Typography.callout
            wrapMode: Text.Wrap
        }
        footer: DialogButtonBox {
            Keys.onReturnPressed: event => root.pressFocusedControl(event)
            Keys.onEnterPressed: event => root.pressFocusedControl(event)
            SymbolButton {
                objectName: "updatePromptLater"
                //: Button of the update prompt: do not download the new version now
                text: qsTr("Later")
                onClicked: updatePrompt.reject()
            }
            SymbolButton {
                id: downloadButton
                objectName: "updatePromptDownload"
                //: Button of the update prompt
                text: qsTr("Download Update")
                prominent: true
                onClicked: updatePrompt.accept()
            }
        }
        onAccepted: root.store.downloadLatestUpdate()
    }

    Shortcut {
        objectName: "closeShortcut"
        sequence: "Escape"
        enabled: !root.store.isShowingUpdatePrompt
        onActivated: root.closeRequested()
    }
    Shortcut {
        objectName: "refreshShortcut"
        sequence: "Ctrl+R"
        onActivated: root.store.refresh()
    }
    Shortcut {
        objectName: "quitShortcut"
        sequence: "Ctrl+Q"
        onActivated: Qt.quit()
    }
    Shortcut {
        objectName: "settingsShortcut"
        sequence: "Ctrl+,"
        enabled: root.store.isConnected
        onActivated: root.store.showSettings()
    }
}
