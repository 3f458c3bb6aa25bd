import QtQuick
import Inkwarden.Ui
import QtQuick.Controls.Fusion
import QtQuick.Layouts

// The screen shown while no account is connected: browser sign-in first, and a folded form for
// a server address and an API key typed by hand.
Item {
    id: view
    required property RoyaltiesStore store
    readonly property ConnectViewModel viewModel: ConnectViewModel {
        store: view.store
    }
    Accessible.role: Accessible.Pane
    //: The sign-in screen of the popover, as screen readers name it
    Accessible.name: qsTr("Connect to Inkwarden")
    // The view's one state of its own: every new connect view starts folded.
    property bool showsManualConnection: false

    // Where the keyboard focus starts as this screen appears (MenuContentView): the browser sign-in,
    // or while it is greyed out (connecting), the manual connection.
    function focusFirstControl() {
        if (signInButton.enabled)
            signInButton.forceActiveFocus()
        else
            disclosure.forceActiveFocus()
    }

    Flickable {
        id: scroll
        objectName: "connectScroll"
        anchors.fill: parent
        contentWidth: width
        // Centred in the popover when it fits, scrolling when the manual form makes it taller.
        contentHeight: Math.max(height, column.implicitHeight + 48)
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        ScrollBar.vertical: ScrollBar { }

        Item {
            width: scroll.width
            height: scroll.contentHeight

            ColumnLayout {
                id: column
                anchors.fill: parent
                anchors.margins: 24
                spacing: 20

                Item { Layout.fillHeight: true; Layout.minimumHeight: 10 }

                BrandLogoView {
                    objectName: "connectLogo"
                    size: 72
                    cornerRadius: 18
                    Layout.alignment: Qt.AlignHCenter
                }

                ColumnLayout {
                    spacing: 6
                    Layout.fillWidth: true
                    TextLine {
                        objectName: "connectTitle"
                        text: "Inkwarden"
                        font: Typography.make(Typography.title2Size, Font.Bold)
                        Layout.alignment: Qt.AlignHCenter
                    }
                    TextLine {
                        objectName: "connectSubtitle"
                        text: qsTr("See your latest royalties from the menu bar.")
                        font: Typography.subheadline
                        color: Theme.secondaryText
                        wrapMode: Text.Wrap
                        horizontalAlignment: Text.AlignHCenter
                        Layout.fillWidth: true
                    }
                }

                SymbolButton {
                    id: signInButton
                    objectName: "signInButton"
                    text: view.viewModel.signInButtonTitle
                    symbol: "person.crop.circle.badge.checkmark"
                    busy: view.store.isAuthenticating
                    prominent: true
                    large: true
                    enabled: !view.store.isLoading
                    Layout.fillWidth: true
                    onClicked: view.store.beginBrowserAuthentication()
                }

                ColumnLayout {
                    spacing: 0
                    Layout.fillWidth: true

                    AbstractButton {
                        id: disclosure
                        objectName: "manualConnectionToggle"
                        //: Toggle that unfolds the form for typing a server address and an API key by hand
                        text: qsTr("Connect manually")
                        // Folds and unfolds on every click, however it comes: the pointer, Space, or
                        // a screen reader's press (which clicks a button without toggling it).
                        checked: view.showsManualConnection
                        focusPolicy: Qt.StrongFocus
                        Layout.fillWidth: true
                        Accessible.role: Accessible.Button
                        Accessible.name: text
                        Accessible.checkable: true
                        Accessible.checked: checked
                        onClicked: view.showsManualConnection = !view.showsManualConnection
                        Accessible.onPressAction: if (enabled) clicked()
                        FocusRing {
                            ownerRadius: 4
                        }
                        contentItem: RowLayout {
                            spacing: 4
                            SymbolIcon {
                                symbol: "chevron.right"
                                size: 16
                                color: Theme.secondaryText
                                rotation: disclosure.checked ? 90 : 0
                                Behavior on rotation { NumberAnimation { duration: 150 } }
                            }
                            Label {
                                text: disclosure.text
                                textFormat: Text.PlainText
                                font: Typography.body
                                color: Theme.text
                            }
                            Item { Layout.fillWidth: true }
                        }
                    }

                    ColumnLayout {
                        objectName: "manualConnection"
                        visible: view.showsManualConnection
                        spacing: 13
                        Layout.fillWidth: true
                        Layout.topMargin: 12

                        LabeledField {
                            objectName: "serverField"
                            //: Field title above the address of the Inkwarden server
                            title: qsTr("Server")
                            hint: view.viewModel.builtInServerURLText
                            TextField {
                                objectName: "serverURLInput"
                                placeholderText: qsTr("Server URL")
                                text: view.store.serverURL
                                selectByMouse: true
                                Layout.fillWidth: true
                                Accessible.name: qsTr("Server URL")
                                onTextEdited: view.store.serverURL = text
                                FocusRing {
                                    ownerRadius: 2
                                }
                            }
                        }
                        LabeledField {
                            objectName: "apiKeyField"
                            //: Field title above the key that gives Inkwarden access to the account
                            title: qsTr("API key")
                            hint: view.viewModel.apiKeyHint
                            TextField {
                                objectName: "apiKeyInput"
                                placeholderText: qsTr("Inkwarden API key")
                                echoMode: TextInput.Password
                                text: view.store.apiKey
                                selectByMouse: true
                                Layout.fillWidth: true
                                Accessible.name: qsTr("API key")
                                onTextEdited: view.store.apiKey = text
                                FocusRing {
                                    ownerRadius: 2
                                }
                            }
                        }
                        SymbolButton {
                            objectName: "connectButton"
                            text: view.viewModel.connectButtonTitle
                            busy: view.store.isLoading
                            large: true
                            available: !view.store.isLoading
                            Layout.fillWidth: true
                            onTriggered: view.store.connect()
                        }
                    }
                }

                ErrorBanner {
                    objectName: "errorBanner"
                    visible: view.store.errorMessage !== undefined
                    message: view.store.errorMessage ?? ""
                }

                TextLine {
                    objectName: "browserSignInNote"
                    text: qsTr("Browser sign-in fills the API key automatically. Manual entry remains available whenever you need it.")
                    font: Typography.caption2
                    color: Theme.tertiaryText
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                    Layout.fillWidth: true
                }
                TextLine {
                    objectName: "versionLine"
                    text: view.viewModel.versionLine
                    font: Typography.caption2
                    color: Theme.tertiaryText
                    Layout.alignment: Qt.AlignHCenter
                }

                Item { Layout.fillHeight: true; Layout.minimumHeight: 4 }

                SymbolButton {
                    objectName: "quitButton"
                    //: Button that quits Inkwarden
                    text: qsTr("Quit")
                    flat: true
                    foreground: Theme.secondaryText
                    Layout.alignment: Qt.AlignHCenter
                    onClicked: Qt.quit()
                }
            }
        }
    }
}
