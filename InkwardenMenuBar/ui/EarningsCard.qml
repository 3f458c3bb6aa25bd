import QtQuick
import Inkwarden.Ui
import QtQuick.Layouts

// The highlighted royalty: the connection dot with the figure's name, the amount, and the two
// status lines that move with the clock.
Rectangle {
    id: card
    required property RoyaltiesStore store
    readonly property DashboardViewModel viewModel: DashboardViewModel {
        store: card.store
    }
    property alias timelineRunning: timeline.running

    Layout.fillWidth: true
    implicitHeight: column.implicitHeight + 44
    radius: 16
    color: Theme.withOpacity(Theme.accent, 0.08)
    border.width: 1
    border.color: Theme.withOpacity(Theme.accent, 0.18)

    StatusTimeline {
        id: timeline
        store: card.store
    }

    // A refresh that begins, and the figure it brings, are told to screen readers; the status
    // lines below, which follow the clock, are not.
    Announcement {
        id: announcement
        objectName: "announcement"
    }

    // Told once the new figures are in the view models too, after the store's own signals.
    Timer {
        id: newFigures
        interval: 0
        onTriggered: {
            if (card.store.lastUpdated !== undefined) {
                //: Said by screen readers when new figures arrived: "Refreshed. Gross royalties: $1,234.50"
                announcement.say(qsTr("Refreshed. %1: %2").arg(card.viewModel.displayedRoyaltyTitle)
                          .arg(card.viewModel.highlightedRoyaltyText));
            }
        }
    }
    Connections {
        target: card.store
        function onIsLoadingChanged() {
            if (card.store.isLoading) {
                //: Said by screen readers as a refresh of the royalties begins
                announcement.say(qsTr("Refreshing"));
            }
        }
        function onLastUpdatedChanged() {
            newFigures.restart();
        }
    }

    Spinner {
        objectName: "loadingIndicator"
        visible: card.store.isLoading
        size: 14
        anchors.top: parent.top
        anchors.right: parent.right
        anchors.margins: 12
        //: Accessible name of the small spinner shown while the royalties are fetched
        Accessible.name: qsTr("Refreshing")
    }

    ColumnLayout {
        id: column
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6

        RowLayout {
            spacing: 6
            Layout.alignment: Qt.AlignHCenter
            Rectangle {
                objectName: "statusCircle"
                readonly property string colorName: card.viewModel.statusIndicatorColor
                width: 7
                height: 7
                radius: 3.5
                color: Theme.color(colorName)
                Accessible.ignored: true
            }
            TextLine {
                objectName: "displayedRoyaltyCaption"
                text: card.viewModel.displayedRoyaltyCaption
                // Read with the amount, as one line.
                Accessible.ignored: true
                font: Typography.make(Typography.caption2Size, Font.DemiBold)
                color: Theme.secondaryText
            }
        }
        RollingAmount {
            objectName: "highlightedAmount"
            text: card.viewModel.highlightedRoyaltyText
            countsDown: card.store.royaltyChangeCountsDown
            //: The headline for screen readers: the figure's name ("Gross royalties"), then the amount
            Accessible.name: qsTr("%1: %2").arg(card.viewModel.displayedRoyaltyTitle).arg(text)
            Layout.alignment: Qt.AlignHCenter
            Layout.maximumWidth: card.width - 16
        }
        ColumnLayout {
            spacing: 6
            Layout.alignment: Qt.AlignHCenter
            TextLine {
                objectName: "lastUpdatedText"
                text: timeline.lastUpdatedText
                font: Typography.make(Typography.captionSize, Font.Normal, Typography.figureFamily)
                color: Theme.secondaryText
                Layout.alignment: Qt.AlignHCenter
            }
            TextLine {
                objectName: "nextRefreshText"
                text: timeline.nextRefreshText
                font: Typography.make(Typography.captionSize, Font.Normal, Typography.figureFamily)
                color: Theme.secondaryText
                Layout.alignment: Qt.AlignHCenter
            }
        }
    }
}
