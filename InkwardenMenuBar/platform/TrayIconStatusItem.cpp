#include "TrayIconStatusItem.h"

#include <QApplication>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>

TrayIconStatusItem::TrayIconStatusItem(const QString &iconSource, std::optional<QColor> color, QObject *parent)
    : StatusItem(parent)
    , m_menu(std::make_unique<QMenu>())
    , m_trayIcon(std::make_unique<QSystemTrayIcon>())
{
    const StatusIcon icon(iconSource);
    const QColor tint = color.value_or(StatusIcon::panelColor(qEnvironmentVariable("XDG_CURRENT_DESKTOP")));
    QIcon trayIcon;
    for (int size : {16, 22, 24, 32, 48}) {
        trayIcon.addPixmap(QPixmap::fromImage(icon.image(size, tint)));
    }
    m_trayIcon->setIcon(trayIcon);

    for (StatusMenuEntry entry : menuEntries()) {
        if (entry == StatusMenuEntry::Quit) {
            m_menu->addSeparator();
        }
        QAction *action = m_menu->addAction(menuMnemonicLabel(entry));
        if (entry == StatusMenuEntry::Quit) {
            action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
        }
        if (entry == StatusMenuEntry::HideAmounts) {
            action->setCheckable(true);
            connect(this, &StatusItem::amountsHiddenChanged, action, &QAction::setChecked);
        }
        connect(action, &QAction::triggered, this, [this, entry] { triggerMenuEntry(entry); });
    }
    m_trayIcon->setContextMenu(m_menu.get());

    connect(m_trayIcon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason != QSystemTrayIcon::Trigger && reason != QSystemTrayIcon::MiddleClick) {
            return;
        }
        // The bottom centre of the icon: the popover hangs from there (or sits above it on a bottom
        // panel, which the placement works out from the screen).
        const QRect geometry = m_trayIcon->geometry();
        Q_EMIT activated(geometry.isValid() ? QPoint(geometry.center().x(), geometry.bottom()) : QPoint());
    });
    updateToolTip();
    m_trayIcon->show();
}

TrayIconStatusItem::~TrayIconStatusItem()
{
    m_trayIcon->hide();
}

bool TrayIconStatusItem::isAvailable()
{
    return qobject_cast<QApplication *>(QCoreApplication::instance()) != nullptr
           && QSystemTrayIcon::isSystemTrayAvailable();
}

void TrayIconStatusItem::setTitle(const MenuBarTitle &title)
{
    m_title = title;
    updateToolTip();
}

void TrayIconStatusItem::setToolTip(const QString &title, const QString &body)
{
    m_toolTipTitle = title;
    m_toolTipBody = body;
    updateToolTip();
}

QString TrayIconStatusItem::toolTipText() const
{
    QStringList lines;
    const QString figure = m_title.figure();
    if (!figure.isEmpty()) {
        lines.append(figure);
    }
    if (!m_toolTipTitle.isEmpty() && m_toolTipTitle != figure) {
        lines.append(m_toolTipTitle);
    }
    if (!m_toolTipBody.isEmpty()) {
        lines.append(m_toolTipBody);
    }
    if (lines.isEmpty()) {
        //: Tool tip of the panel icon before any figure is known.
        return tr("Inkwarden Royalties");
    }
    return lines.join(QLatin1Char('\n'));
}

void TrayIconStatusItem::updateToolTip()
{
    m_trayIcon->setToolTip(toolTipText());
}
