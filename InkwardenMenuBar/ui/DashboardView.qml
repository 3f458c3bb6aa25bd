pragma ComponentBehavior: Bound
import QtQuick
import Inkwarden.Ui
import QtQuick.Controls.Fusion
import QtQuick.Layouts

// The dashboard: header, then a scrolling column (period picker, update banner, earnings card with
// the financial rows, sales breakdown, error banner), then the footer with the commands.
Item {
    id: view
    required property RoyaltiesStore store
    readonly property DashboardViewModel viewModel: DashboardViewModel {
        store: view.store
    }
    Accessible.role: Accessible.Pane
    //: The dashboard screen of the popover, as screen readers name it
    Accessible.name: qsTr("Royalties")

    // Where the keyboard focus starts as the dashboard appears (MenuContentView): the selected
    // period.
    function focusFirstControl() {
        periodPicker.focusCurrent(Qt.OtherFocusReason)
    }

    PeriodChoicesModel {
        id: periods
        store: view.store
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Rectangle {
            objectName: "dashboardHeader"
            Layout.fillWidth: true
            implicitHeight: header.implicitHeight + 28
            color: Theme.withOpacity(Theme.controlBackground, 0.55)

            RowLayout {
                id: header
                anchors.fill: parent
                anchors.leftMargin: 18
                anchors.rightMargin: 18
                anchors.topMargin: 14
                anchors.bottomMargin: 14
                spacing: 10

                BrandLogoView {
                    objectName: "headerLogo"
                    size: 30
                    cornerRadius: 8
                }
                ColumnLayout {
                    spacing: 1
                    TextLine {
                        objectName: "headerTitle"
                        text: "Inkwarden"
                        font: Typography.headline
                    }
                    TextLine {
                        objectName: "headerPeriod"
                        text: periods.currentTitle
                        font: Typography.caption
                        color: Theme.secondaryText
                    }
                }
                Item { Layout.fillWidth: true }
                SymbolButton {
                    objectName: "settingsButton"
                    symbol: "gearshape"
                    symbolSize: 17
                    //: Tool tip of the gear button that opens the settings page
                    toolTip: qsTr("Settings")
                    //: What the gear button does, for screen readers
                    accessibleDescription: qsTr("Server, account, figures, notifications and updates")
                    foreground: Theme.secondaryText
                    onClicked: view.store.showSettings()
                }
            }
        }

        ScrollView {
            id: scroll
            objectName: "dashboardScroll"
            Layout.fillWidth: true
            Layout.fillHeight: true
            // Its width comes from the popover, never from its content.
            Layout.preferredWidth: 0
            contentWidth: availableWidth
            clip: true

            Item {
                width: scroll.availableWidth
                implicitHeight: column.implicitHeight + 36
                height: implicitHeight

                ColumnLayout {
                    id: column
                    // Takes its own height: a page that grows is scrolled, never squeezed.
                    anchors.top: parent.top
                    anchors.left: parent.left
                    anchors.right: parent.right
                    anchors.margins: 18
                    spacing: 16

                    ColumnLayout {
                        spacing: 5
                        Layout.fillWidth: true
                        SegmentedPicker {
                            id: periodPicker
                            objectName: "periodPicker"
                            //: Accessible name of the picker choosing the time span of the royalty figures (Today, This Month, ...)
                            accessibleName: qsTr("Period")
                            model: periods
                            available: view.store.canSwitchPeriod
                            onActivated: value => view.store.selectPeriod(value)
                        }
                        TextLine {
                            objectName: "cooldownCaption"
                            visible: view.viewModel.periodCooldownCaption !== undefined
                            text: view.viewModel.periodCooldownCaption ?? ""
                            font: Typography.make(Typography.captionSize, Font.Normal, Typography.figureFamily)
                            color: Theme.secondaryText
                            Layout.alignment: Qt.AlignHCenter
                        }
                    }

                    UpdateBanner {
                        objectName: "updateBanner"
                        visible: view.viewModel.showsUpdateBanner
                        store: view.store
                    }

                    Rectangle {
                        objectName: "figuresCard"
                        Layout.fillWidth: true
                        implicitHeight: figures.implicitHeight + 28
                        radius: 13
                        color: Theme.controlBackground

                        ColumnLayout {
                            id: figures
                            anchors.fill: parent
                            anchors.margins: 14
                            spacing: 11

                            EarningsCard {
                                objectName: "earningsCard"
                                store: view.store
                                // Only while the popover is on screen: a closed popover must not wake Inkwarden every second.
                                timelineRunning: view.visible && view.Window.window !== null && view.Window.window.visible
                            }
                            Repeater {
                                // The rows change in place when the figures do, so they keep
                                // their focus.
                                model: FinancialRowsModel { store: view.store }
                                delegate: ColumnLayout {
                                    id: financial
                                    required property int index
                                    required property string title
                                    required property string value
                                    required property string icon
                                    required property string color
                                    spacing: 11
                                    Layout.fillWidth: true
                                    Separator { visible: financial.index > 0 }
                                    MetricRow {
                                        objectName: "financialRow" + financial.index
                                        title: financial.title
                                        value: financial.value
                                        icon: financial.icon
                                        color: financial.color
                                    }
                                }
                            }
                        }
                    }

                    ColumnLayout {
                        spacing: 12
                        Layout.fillWidth: true
                        TextLine {
                            objectName: "salesBreakdownHeading"
                            //: Section heading above the royalties per book format; shown in capital letters
                            text: qsTr("SALES BREAKDOWN")
                            font: Typography.sectionHeading
                            color: Theme.secondaryText
                        }
                        Rectangle {
                            objectName: "salesBreakdownCard"
                            Layout.fillWidth: true
                            implicitHeight: breakdown.implicitHeight
                            radius: 13
                            color: Theme.controlBackground

                            ColumnLayout {
                                id: breakdown
                                objectName: "salesBreakdownRows"
                                anchors.left: parent.left
                                anchors.right: parent.right
                                spacing: 0
                                Repeater {
                                    model: SalesBreakdownModel { store: view.store }
                                    delegate: ColumnLayout {
                                        id: sales
                                        required property string key
                                        required property string title
                                        required property string units
                                        required property var royalties
                                        required property string icon
                                        required property string color
                                        required property bool showsDivider
                                        objectName: "breakdownRow_" + key
                                        spacing: 0
                                        Layout.fillWidth: true
                                        Separator {
                                            objectName: "divider"
                                            indent: 38
                                            visible: sales.showsDivider
                                        }
                                        FormatSalesRow {
                                            objectName: "row"
                                            title: sales.title
                                            units: sales.units
                                            royalties: sales.royalties
                                            icon: sales.icon
                                            color: sales.color
                                        }
                                    }
                                }
                            }
                        }
                    }

                    ErrorBanner {
                        objectName: "errorBanner"
                        visible: view.store.errorMessage !== undefined
                        message: view.store.errorMessage ?? ""
                    }
                }
            }
        }

        Separator { objectName: "footerDivider" }

        RowLayout {
            objectName: "footer"
            Layout.fillWidth: true
            Layout.leftMargin: 18
            Layout.rightMargin: 18
            Layout.topMargin: 12
            Layout.bottomMargin: 12
            Layout.preferredWidth: 0
            spacing: 6

            SymbolButton {
                objectName: "refreshButton"
                labelFont: Typography.callout
                leftPadding: 8
                rightPadding: 8
                //: Footer button that fetches the royalties again now
                text: qsTr("Refresh")
                symbol: "arrow.clockwise"
                available: view.store.canRequestSummary
                onTriggered: view.store.refresh()
            }
            SymbolButton {
                objectName: "openDashboardButton"
                labelFont: Typography.callout
                leftPadding: 8
                rightPadding: 8
                //: Footer button that opens the author's dashboard on the Inkwarden website
                text: qsTr("Open My Dashboard")
                symbol: "arrow.up.forward.square"
                onClicked: view.store.openDashboard()
            }
            Item { Layout.fillWidth: true }
            SymbolButton {
                objectName: "quitButton"
                labelFont: Typography.callout
                leftPadding: 8
                rightPadding: 8
                //: Footer button that quits Inkwarden
                text: qsTr("Quit")
                flat: true
                foreground: Theme.secondaryText
                onClicked: Qt.quit()
            }
        }
    }
}
