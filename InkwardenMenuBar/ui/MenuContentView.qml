import QtQuick
import Inkwarden.Ui
import QtQuick.Controls.Fusion
import QtQuick.Templates as T

// The popover's content: the connect view while no account is connected, else the settings page
// while it is open, else the dashboard; and the update prompt over them. Escape asks the shell to
// close the popover (`closeRequested`); every Quit in the views calls Qt.quit(), which the shell
// connects to the application's quit. The controls take their colours from the desktop's palette
// as it is now, so a switch between light and dark reaches them too.
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

    Loader {
        id: screen
        objectName: "screen"
        anchors.fill: parent
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
        palette: root.palette
        onClosed: root.store.isShowingUpdatePrompt = false

        contentItem: TextLine {
            objectName: "updatePromptMessage"
            text: root.updates.promptMessage
            font: Typography.callout
            wrapMode: Text.Wrap
        }
        footer: DialogButtonBox {
            SymbolButton {
                objectName: "updatePromptLater"
                //: Button of the update prompt: do not download the new version now
                text: qsTr("Later")
                onClicked: updatePrompt.reject()
            }
            SymbolButton {
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
