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
                    objectName: "backButton"
                    symbol: "chevron.left"
                    symbolSize: 20
                    toolTip: "Back"
                    onClicked: view.store.isShowingSettings = false
                }
                TextLine {
                    objectName: "settingsTitle"
                    text: "Settings"
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
                        title: "Server URL"
                        hint: "Change this to https://\u2026 for production"
                        TextField {
                            objectName: "serverURLInput"
                            placeholderText: "Server URL"
                            text: view.store.serverURL
                            selectByMouse: true
                            Layout.fillWidth: true
                            Accessible.name: "Server URL"
                            onTextEdited: view.store.serverURL = text
                        }
                    }

                    LabeledField {
                        objectName: "apiKeyField"
                        title: "API key"
                        hint: view.viewModel.apiKeyHint
                        TextField {
                            objectName: "apiKeyInput"
                            placeholderText: "API key"
                            echoMode: TextInput.Password
                            text: view.store.apiKey
                            selectByMouse: true
                            Layout.fillWidth: true
                            Accessible.name: "API key"
                            onTextEdited: view.store.apiKey = text
                        }
                    }

                    LabeledField {
                        objectName: "accountField"
                        title: "Account"
                        hint: view.viewModel.accountHint

                        RowLayout {
                            objectName: "accountLoading"
                            visible: view.viewModel.accountRowForm === "loading"
                            spacing: 8
                            Spinner { size: 13 }
                            TextLine {
                                text: "Loading account\u2026"
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
                            Accessible.name: "Account"
                            onActivated: view.store.accountID = currentValue
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
                            text: "Reload accounts"
                            onClicked: view.store.loadAccounts()
                        }
                    }

                    LabeledField {
                        objectName: "displayedRoyaltyField"
                        title: "Show in menu bar"
                        hint: "This also controls the large highlighted amount"
                        SegmentedPicker {
                            objectName: "displayedRoyaltyPicker"
                            accessibleName: "Displayed royalty"
                            model: DisplayedRoyaltyChoicesModel { store: view.store }
                            onActivated: value => view.store.displayedRoyalty = value
                        }
                    }

                    LabeledField {
                        objectName: "refreshField"
                        title: "Refresh automatically"
                        hint: "Inkwarden allows no more than one request every 3 seconds"
                        ComboBox {
                            objectName: "refreshIntervalPicker"
                            model: view.viewModel.refreshIntervalChoices
                            textRole: "text"
                            valueRole: "minutes"
                            currentIndex: view.viewModel.refreshIntervalIndex
                            font: Typography.body
                            Layout.fillWidth: true
                            Accessible.name: "Refresh interval"
                            onActivated: view.store.refreshMinutes = currentValue
                        }
                    }

                    LabeledField {
                        objectName: "salesBreakdownField"
                        title: "Sales breakdown"
                        hint: "Choose which formats appear and arrange them in your preferred order"
                        SalesMetricList {
                            objectName: "salesMetricList"
                            store: view.store
                        }
                    }

                    LabeledField {
                        objectName: "startAutomaticallyField"
                        title: "Start automatically"
                        hint: view.viewModel.startAutomaticallyHint

                        Switch {
                            objectName: "openAtLoginSwitch"
                            text: "Open Inkwarden at login"
                            checked: view.store.opensAtLogin
                            font: Typography.body
                            padding: 0
                            Accessible.name: text
                            onToggled: {
                                view.store.setOpensAtLogin(checked)
                                // Always show the state the system reports, not the click.
                                checked = Qt.binding(() => view.store.opensAtLogin)
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
                                        text: "Approval required"
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
                        title: "Notifications"
                        hint: "When a refresh finds new royalties for today or this month"

                        Switch {
                            objectName: "notifySwitch"
                            text: "Notify on new royalties"
                            checked: view.store.alerts.notifyOnNewRoyalties
                            font: Typography.body
                            padding: 0
                            Accessible.name: text
                            onToggled: view.store.alerts.notifyOnNewRoyalties = checked
                        }
                        Switch {
                            objectName: "soundSwitch"
                            text: "Play a sound"
                            enabled: view.store.alerts.notifyOnNewRoyalties
                            checked: view.store.alerts.notificationSound
                            font: Typography.body
                            padding: 0
                            Accessible.name: text
                            onToggled: view.store.alerts.notificationSound = checked
                        }
                        Switch {
                            objectName: "quietHoursSwitch"
                            text: "Quiet hours"
                            enabled: view.store.alerts.notifyOnNewRoyalties
                            checked: view.store.alerts.quietHoursEnabled
                            font: Typography.body
                            padding: 0
                            Accessible.name: text
                            onToggled: view.store.alerts.quietHoursEnabled = checked
                        }
                        RowLayout {
                            objectName: "quietHoursTimes"
                            visible: view.store.alerts.quietHoursEnabled
                            enabled: view.store.alerts.notifyOnNewRoyalties
                            spacing: 6
                            Layout.fillWidth: true
                            TextLine {
                                text: "From"
                                font: Typography.body
                            }
                            ComboBox {
                                objectName: "quietHoursStartPicker"
                                model: view.viewModel.quietHoursChoices
                                currentIndex: view.viewModel.quietHoursStartIndex
                                font: Typography.body
                                Layout.fillWidth: true
                                Accessible.name: "Quiet hours start"
                                onActivated: view.store.alerts.quietHoursStart = currentText
                            }
                            TextLine {
                                text: "to"
                                font: Typography.body
                            }
                            ComboBox {
                                objectName: "quietHoursEndPicker"
                                model: view.viewModel.quietHoursChoices
                                currentIndex: view.viewModel.quietHoursEndIndex
                                font: Typography.body
                                Layout.fillWidth: true
                                Accessible.name: "Quiet hours end"
                                onActivated: view.store.alerts.quietHoursEnd = currentText
                            }
                        }
                        Switch {
                            objectName: "quietHoursSummarySwitch"
                            visible: view.store.alerts.quietHoursEnabled
                            enabled: view.store.alerts.notifyOnNewRoyalties
                            text: "Tell me what came in when they end"
                            checked: view.store.alerts.quietHoursSummary
                            font: Typography.body
                            padding: 0
                            Accessible.name: text
                            onToggled: view.store.alerts.quietHoursSummary = checked
                        }
                    }

                    LabeledField {
                        objectName: "privacyField"
                        title: "Privacy"
                        hint: "Every amount shows as $\u2022\u2022\u2022, in the panel too, for a screen that others see"

                        Switch {
                            objectName: "hideAmountsSwitch"
                            text: "Hide amounts"
                            checked: view.store.hideAmounts
                            font: Typography.body
                            padding: 0
                            Accessible.name: text
                            onToggled: view.store.hideAmounts = checked
                        }
                    }

                    ErrorBanner {
                        objectName: "errorBanner"
                        visible: view.store.errorMessage !== undefined
                        message: view.store.errorMessage ?? ""
                    }

                    LabeledField {
                        objectName: "versionField"
                        title: "Version"

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
                                    enabled: view.updates.canCheckForUpdates
                                    labelFont: Typography.callout
                                    Layout.alignment: Qt.AlignRight
                                    onClicked: view.store.checkForUpdates()
                                }
                                SymbolButton {
                                    objectName: "installUpdateButton"
                                    visible: view.updates.isUpdateAvailable
                                    text: view.updates.installUpdateTitle
                                    enabled: view.updates.canStartUpdateAction
                                    labelFont: Typography.callout
                                    Layout.alignment: Qt.AlignRight
                                    onClicked: view.updates.performUpdateAction()
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
                        text: "Save settings"
                        prominent: true
                        busy: view.store.isLoading
                        Layout.fillWidth: true
                        onClicked: view.store.connect()
                    }

                    Separator { objectName: "signOutDivider" }

                    SymbolButton {
                        objectName: "signOutButton"
                        text: "Sign out"
                        Layout.fillWidth: true
                        onClicked: view.store.signOut()
                    }

                    SymbolButton {
                        objectName: "quitButton"
                        text: "Quit Inkwarden"
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
