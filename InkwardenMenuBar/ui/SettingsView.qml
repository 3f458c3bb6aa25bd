import QtQuick
import Inkwarden.Ui
import QtQuick.Controls.Fusion
import QtQuick.Layouts

// The settings page: connection, display preferences, sales formats, open at login, updates,
// saving, signing out and quitting. Fields write into the store as the user types; nothing reaches
// the server or the keyring before "Save settings".
Item {
    id: view
    required property RoyaltiesStore store
    readonly property SettingsViewModel viewModel: SettingsViewModel {
        store: view.store
    }
    readonly property UpdateViewModel updates: UpdateViewModel {
        store: view.store
    }
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Settings")

    // Where the keyboard focus starts as the settings appear (MenuContentView): Back, the page's
    // first control in reading order, one Tab before the server field, and one that a stray key
    // press cannot change, as it could a text field.
    function focusFirstControl() {
        backButton.forceActiveFocus()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Rectangle {
            objectName: "settingsHeader"
            Layout.fillWidth: true
            implicitHeight: header.implicitHeight + 32
            color: Theme.withOpacity(Theme.controlBackground, 0.55)

            RowLayout {
                id: header
                anchors.fill: parent
                anchors.margins: 16
                spacing: 6
                SymbolButton {
                    id: backButton
                    objectName: "backButton"
                    symbol: "chevron.left"
                    symbolSize: 20
                    //: Tool tip of the arrow button that leaves the settings page
                    toolTip: qsTr("Back")
                    onClicked: view.store.isShowingSettings = false
                }
                TextLine {
                    objectName: "settingsTitle"
                    //: Title of the settings page
                    text: qsTr("Settings")
                    font: Typography.headline
                }
                Item { Layout.fillWidth: true }
            }
        }

        ScrollView {
            id: scroll
            objectName: "settingsScroll"
            Layout.fillWidth: true
            Layout.fillHeight: true
            // Its width comes from the popover, never from its content.
            Layout.preferredWidth: 0
            contentWidth: availableWidth
            clip: true

            Item {
                width: scroll.availableWidth
                implicitHeight: column.implicitHeight + 40
                height: implicitHeight

                ColumnLayout {
                    id: column
                    // Takes its own height: a page that grows is scrolled, never squeezed.
                    anchors.top: parent.top
                    anchors.left: parent.left
                    anchors.right: parent.right
                    anchors.margins: 20
                    spacing: 16

                    LabeledField {
                        objectName: "serverField"
                        title: qsTr("Server URL")
                        //: Hint below the server address; keep https:// as it is
                        hint: qsTr("Change this to https://\u2026 for production")
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
                            placeholderText: qsTr("API key")
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

                    LabeledField {
                        objectName: "accountField"
                        //: Field title above the choice of the publishing account whose royalties are shown
                        title: qsTr("Account")
                        hint: view.viewModel.accountHint

                        RowLayout {
                            objectName: "accountLoading"
                            visible: view.viewModel.accountRowForm === "loading"
                            spacing: 8
                            Spinner { size: 13 }
                            TextLine {
                                text: qsTr("Loading account\u2026")
                                font: Typography.callout
                                color: Theme.secondaryText
                            }
                        }
                        ComboBox {
                            objectName: "accountPicker"
                            visible: view.viewModel.accountRowForm === "picker"
                            model: AccountChoicesModel { store: view.store }
                            textRole: "text"
                            valueRole: "accountID"
                            currentIndex: view.viewModel.selectedAccountIndex
                            font: Typography.body
                            Layout.fillWidth: true
                            Accessible.name: qsTr("Account")
                            onActivated: view.store.accountID = currentValue
                            FocusRing {
                                ownerRadius: 2
                            }
                        }
                        TextLine {
                            objectName: "singleAccountName"
                            visible: view.viewModel.accountRowForm === "single"
                            text: view.viewModel.singleAccountName
                            font: Typography.callout
                            color: Theme.secondaryText
                        }
                        SymbolButton {
                            objectName: "reloadAccountsButton"
                            visible: view.viewModel.accountRowForm === "none"
                            text: qsTr("Reload accounts")
                            onClicked: view.store.loadAccounts()
                        }
                    }

                    LabeledField {
                        objectName: "displayedRoyaltyField"
                        //: Field title: which royalty figure the panel shows beside its icon
                        title: qsTr("Show in menu bar")
                        hint: qsTr("This also controls the large highlighted amount")
                        SegmentedPicker {
                            objectName: "displayedRoyaltyPicker"
                            //: Accessible name of the picker choosing which royalty figure is displayed
                            accessibleName: qsTr("Displayed royalty")
                            model: DisplayedRoyaltyChoicesModel { store: view.store }
                            onActivated: value => view.store.displayedRoyalty = value
                        }
                    }

                    LabeledField {
                        objectName: "refreshField"
                        //: Field title above the choice of how often the royalties are fetched
                        title: qsTr("Refresh automatically")
                        hint: qsTr("Inkwarden allows no more than one request every 3 seconds")
                        ComboBox {
                            objectName: "refreshIntervalPicker"
                            model: view.viewModel.refreshIntervalChoices
                            textRole: "text"
                            valueRole: "minutes"
                            currentIndex: view.viewModel.refreshIntervalIndex
                            font: Typography.body
                            Layout.fillWidth: true
                            Accessible.name: qsTr("Refresh interval")
                            onActivated: view.store.refreshMinutes = currentValue
                            FocusRing {
                                ownerRadius: 2
                            }
                        }
                    }

                    LabeledField {
                        objectName: "salesBreakdownField"
                        //: Field title above the list of book formats shown in the dashboard's sales breakdown
                        title: qsTr("Sales breakdown")
                        hint: qsTr("Choose which formats appear and arrange them in your preferred order")
                        SalesMetricList {
                            objectName: "salesMetricList"
                            store: view.store
                        }
                    }

                    LabeledField {
                        objectName: "startAutomaticallyField"
                        //: Field title above the switch that starts Inkwarden when the user logs in
                        title: qsTr("Start automatically")
                        hint: view.viewModel.startAutomaticallyHint

                        Switch {
                            objectName: "openAtLoginSwitch"
                            text: qsTr("Open Inkwarden at login")
                            checked: view.store.opensAtLogin
                            font: Typography.body
                            padding: 0
                            Accessible.name: text
                            onToggled: {
                                view.store.setOpensAtLogin(checked)
                                // Always show the state the system reports, not the click.
                                checked = Qt.binding(() => view.store.opensAtLogin)
                            }
                            FocusRing {
                                ownerRadius: 4
                            }
                        }
                        Rectangle {
                            objectName: "approvalNotice"
                            visible: view.store.launchAtLoginRequiresApproval
                            Layout.fillWidth: true
                            Layout.topMargin: 3
                            Layout.minimumHeight: notice.implicitHeight + 20
                            Layout.preferredHeight: notice.implicitHeight + 20
                            implicitHeight: notice.implicitHeight + 20
                            radius: 9
                            color: Theme.withOpacity(Theme.color("orange"), 0.1)

                            Column {
                                id: notice
                                x: 10
                                y: 10
                                // The popover is at least 360 wide: the text wraps at its final width from the
                                // start, and the page lays out once (a later change of its height would be missed).
                                width: Math.max(view.width, 360) - 60
                                spacing: 8
                                Row {
                                    spacing: 5
                                    SymbolIcon {
                                        symbol: "exclamationmark.triangle.fill"
                                        color: Theme.color("orange")
                                        size: 13
                                    }
                                    TextLine {
                                        objectName: "approvalTitle"
                                        //: Title of a notice: the desktop must approve starting Inkwarden at login
                                        text: qsTr("Approval required")
                                        font: Typography.make(Typography.captionSize, Font.DemiBold)
                                        color: Theme.color("orange")
                                    }
                                }
                                TextLine {
                                    objectName: "approvalText"
                                    width: parent.width
                                    text: view.viewModel.loginApprovalNotice
                                    font: Typography.caption
                                    wrapMode: Text.Wrap
                                }
                                SymbolButton {
                                    objectName: "openLoginItemsSettingsButton"
                                    text: view.viewModel.openLoginItemsSettingsTitle
                                    prominent: true
                                    onClicked: view.store.openLoginItemsSettings()
                                }
                            }
                        }
                    }

                    LabeledField {
                        objectName: "notificationsField"
                        title: qsTr("Notifications")
                        hint: qsTr("When a refresh finds new royalties for today or this month")

                        Switch {
                            objectName: "notifySwitch"
                            text: qsTr("Notify on new royalties")
                            checked: view.store.alerts.notifyOnNewRoyalties
                            font: Typography.body
                            padding: 0
                            Accessible.name: text
                            onToggled: view.store.alerts.notifyOnNewRoyalties = checked
                            FocusRing {
                                ownerRadius: 4
                            }
                        }
                        Switch {
                            objectName: "soundSwitch"
                            //: Switch: play a sound with the notification
                            text: qsTr("Play a sound")
                            enabled: view.store.alerts.notifyOnNewRoyalties
                            checked: view.store.alerts.notificationSound
                            font: Typography.body
                            padding: 0
                            Accessible.name: text
                            onToggled: view.store.alerts.notificationSound = checked
                            FocusRing {
                                ownerRadius: 4
                            }
                        }
                        Switch {
                            objectName: "quietHoursSwitch"
                            //: Switch: a daily span of time without notifications
                            text: qsTr("Quiet hours")
                            enabled: view.store.alerts.notifyOnNewRoyalties
                            checked: view.store.alerts.quietHoursEnabled
                            font: Typography.body
                            padding: 0
                            Accessible.name: text
                            onToggled: view.store.alerts.quietHoursEnabled = checked
                            FocusRing {
                                ownerRadius: 4
                            }
                        }
                        RowLayout {
                            objectName: "quietHoursTimes"
                            visible: view.store.alerts.quietHoursEnabled
                            enabled: view.store.alerts.notifyOnNewRoyalties
                            spacing: 6
                            Layout.fillWidth: true
                            TextLine {
                                //: Label before the start time of the quiet hours, read as "From [time] to [time]"
                                text: qsTr("From")
                                font: Typography.body
                            }
                            ComboBox {
                                objectName: "quietHoursStartPicker"
                                model: view.viewModel.quietHoursChoices
                                currentIndex: view.viewModel.quietHoursStartIndex
                                font: Typography.body
                                Layout.fillWidth: true
                                Accessible.name: qsTr("Quiet hours start")
                                onActivated: view.store.alerts.quietHoursStart = currentText
                                FocusRing {
                                    ownerRadius: 2
                                }
                            }
                            TextLine {
                                //: Label between the start and end times of the quiet hours, read as "From [time] to [time]"
                                text: qsTr("to")
                                font: Typography.body
                            }
                            ComboBox {
                                objectName: "quietHoursEndPicker"
                                model: view.viewModel.quietHoursChoices
                                currentIndex: view.viewModel.quietHoursEndIndex
                                font: Typography.body
                                Layout.fillWidth: true
                                Accessible.name: qsTr("Quiet hours end")
                                onActivated: view.store.alerts.quietHoursEnd = currentText
                                FocusRing {
                                    ownerRadius: 2
                                }
                            }
                        }
                        Switch {
                            objectName: "quietHoursSummarySwitch"
                            visible: view.store.alerts.quietHoursEnabled
                            enabled: view.store.alerts.notifyOnNewRoyalties
                            //: Switch: when the quiet hours end, one notification sums up the royalties that came in during them
                            text: qsTr("Tell me what came in when they end")
                            checked: view.store.alerts.quietHoursSummary
                            font: Typography.body
                            padding: 0
                            Accessible.name: text
                            onToggled: view.store.alerts.quietHoursSummary = checked
                            FocusRing {
                                ownerRadius: 4
                            }
                        }
                    }

                    LabeledField {
                        objectName: "privacyField"
                        title: qsTr("Privacy")
                        //: Hint below the Hide amounts switch; the dollar sign with three bullets shows how a hidden amount looks
                        hint: qsTr("Every amount shows as $\u2022\u2022\u2022, in the panel too, for a screen that others see")

                        Switch {
                            objectName: "hideAmountsSwitch"
                            text: qsTr("Hide amounts")
                            checked: view.store.hideAmounts
                            font: Typography.body
                            padding: 0
                            Accessible.name: text
                            onToggled: view.store.hideAmounts = checked
                            FocusRing {
                                ownerRadius: 4
                            }
                        }
                    }

                    ErrorBanner {
                        objectName: "errorBanner"
                        visible: view.store.errorMessage !== undefined
                        message: view.store.errorMessage ?? ""
                    }

                    LabeledField {
                        objectName: "versionField"
                        //: Field title above the installed version of Inkwarden and the update buttons
                        title: qsTr("Version")

                        RowLayout {
                            spacing: 8
                            Layout.fillWidth: true
                            ColumnLayout {
                                spacing: 2
                                Layout.fillWidth: true
                                Layout.alignment: Qt.AlignVCenter
                                TextLine {
                                    objectName: "appVersionTitle"
                                    text: view.updates.appVersionTitle
                                    font: Typography.make(Typography.calloutSize, Font.Medium)
                                }
                                TextLine {
                                    objectName: "versionStatus"
                                    visible: view.updates.versionStatusText !== undefined
                                    text: view.updates.versionStatusText ?? ""
                                    font: Typography.caption
                                    color: Theme.color(view.updates.versionStatusColor)
                                }
                            }
                            ColumnLayout {
                                spacing: 6
                                Layout.alignment: Qt.AlignVCenter | Qt.AlignRight
                                SymbolButton {
                                    objectName: "checkForUpdatesButton"
                                    text: view.updates.checkForUpdatesTitle
                                    available: view.updates.canCheckForUpdates
                                    labelFont: Typography.callout
                                    Layout.alignment: Qt.AlignRight
                                    onTriggered: view.store.checkForUpdates()
                                }
                                SymbolButton {
                                    objectName: "installUpdateButton"
                                    visible: view.updates.isUpdateAvailable
                                    text: view.updates.installUpdateTitle
                                    available: view.updates.canStartUpdateAction
                                    labelFont: Typography.callout
                                    Layout.alignment: Qt.AlignRight
                                    onTriggered: view.updates.performUpdateAction()
                                }
                                LinkButton {
                                    objectName: "revealUpdateButton"
                                    visible: view.updates.isUpdateAvailable && view.updates.hasDownloadedUpdate
                                    text: view.updates.showInFilesTitle
                                    Layout.alignment: Qt.AlignRight
                                    onClicked: view.store.revealDownloadedUpdate()
                                }
                            }
                        }
                        TextLine {
                            objectName: "updateStatusMessage"
                            visible: view.store.updateStatusMessage !== undefined
                            text: view.store.updateStatusMessage ?? ""
                            font: Typography.caption
                            wrapMode: Text.Wrap
                            Layout.fillWidth: true
                        }
                    }

                    SymbolButton {
                        objectName: "saveSettingsButton"
                        text: qsTr("Save settings")
                        prominent: true
                        busy: view.store.isLoading
                        Layout.fillWidth: true
                        onClicked: view.store.connect()
                    }

                    Separator { objectName: "signOutDivider" }

                    SymbolButton {
                        objectName: "signOutButton"
                        text: qsTr("Sign out")
                        Layout.fillWidth: true
                        onClicked: view.store.signOut()
                    }

                    SymbolButton {
                        objectName: "quitButton"
                        text: qsTr("Quit Inkwarden")
                        flat: true
                        foreground: Theme.secondaryText
                        Layout.fillWidth: true
                        onClicked: Qt.quit()
                    }
                }
            }
        }
    }
}
