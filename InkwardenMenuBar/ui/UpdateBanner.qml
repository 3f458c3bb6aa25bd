import QtQuick
import Inkwarden.Ui
import QtQuick.Layouts

// The dashboard's note that a newer Inkwarden exists, with the button that downloads it or opens
// the downloaded installer, and the one that shows the installer in the file manager.
Rectangle {
    id: banner
    required property RoyaltiesStore store
    readonly property UpdateViewModel updates: UpdateViewModel {
        store: banner.store
    }

    Layout.fillWidth: true
    implicitHeight: column.implicitHeight + 22
    radius: 11
    color: Theme.withOpacity(Theme.accent, 0.1)

    ColumnLayout {
        id: column
        anchors.fill: parent
        anchors.margins: 11
        spacing: 7

        RowLayout {
            spacing: 8
            Layout.fillWidth: true
            SymbolIcon {
                symbol: "arrow.down.circle.fill"
                color: Theme.accent
                size: 20
            }
            ColumnLayout {
                spacing: 1
                Layout.fillWidth: true
                TextLine {
                    objectName: "updateBannerTitle"
                    text: banner.updates.bannerTitle
                    font: Typography.make(Typography.captionSize, Font.DemiBold)
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                TextLine {
                    objectName: "updateBannerSubtitle"
                    text: banner.updates.bannerSubtitle
                    font: Typography.caption2
                    color: Theme.secondaryText
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
            }
            ColumnLayout {
                spacing: 2
                Layout.alignment: Qt.AlignVCenter | Qt.AlignRight
                LinkButton {
                    objectName: "updateActionButton"
                    text: banner.updates.updateActionTitle
                    available: banner.updates.canStartUpdateAction
                    labelFont: Typography.make(Typography.captionSize, Font.DemiBold)
                    Layout.alignment: Qt.AlignRight
                    onTriggered: banner.updates.performUpdateAction()
                }
                LinkButton {
                    objectName: "revealUpdateButton"
                    visible: banner.updates.hasDownloadedUpdate
                    text: banner.updates.showInFilesTitle
                    Layout.alignment: Qt.AlignRight
                    onClicked: banner.store.revealDownloadedUpdate()
                }
            }
        }
        TextLine {
            objectName: "updateStatusMessage"
            visible: banner.store.updateStatusMessage !== undefined
            text: banner.store.updateStatusMessage ?? ""
            font: Typography.caption
            color: Theme.secondaryText
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }
}
