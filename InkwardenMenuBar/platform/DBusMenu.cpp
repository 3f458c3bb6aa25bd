#include "DBusMenu.h"

#include <QGuiApplication>
#include <QMetaObject>

DBusMenu::DBusMenu(QObject *parent)
    : QObject(parent)
{
    registerStatusNotifierTypes();
}

int DBusMenu::idOf(StatusMenuEntry entry)
{
    switch (entry) {
    case StatusMenuEntry::Open:
        return 1;
    case StatusMenuEntry::Refresh:
        return 2;
    case StatusMenuEntry::Settings:
        return 3;
    case StatusMenuEntry::HideAmounts:
        return 6;
    case StatusMenuEntry::Quit:
        return 5;
    }
    return -1;
}

QString DBusMenu::accessKeyLabel(const QString &mnemonicLabel)
{
    QString label;
    label.reserve(mnemonicLabel.size() + 1);
    for (qsizetype index = 0; index < mnemonicLabel.size(); ++index) {
        const QChar character = mnemonicLabel.at(index);
        if (character == u'_') {
            label += QStringLiteral("__");
        } else if (character != u'&') {
            label += character;
        } else if (index + 1 < mnemonicLabel.size() && mnemonicLabel.at(index + 1) == u'&') {
            label += u'&';
            ++index;
        } else if (index + 1 < mnemonicLabel.size()) {
            label += u'_';
        }
    }
    return label;
}

std::optional<StatusMenuEntry> DBusMenu::entryOf(int id)
{
    for (StatusMenuEntry entry : StatusItem::menuEntries()) {
        if (idOf(entry) == id) {
            return entry;
        }
    }
    return std::nullopt;
}

QList<int> DBusMenu::ids()
{
    return {idOf(StatusMenuEntry::Open),
            idOf(StatusMenuEntry::Refresh),
            idOf(StatusMenuEntry::Settings),
            idOf(StatusMenuEntry::HideAmounts),
            SeparatorId,
            idOf(StatusMenuEntry::Quit)};
}

QVariantMap DBusMenu::properties(int id, const QStringList &names) const
{
    QVariantMap all;
    if (id == RootId) {
        all.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
    } else if (id == SeparatorId) {
        all.insert(QStringLiteral("type"), QStringLiteral("separator"));
    } else if (const auto entry = entryOf(id)) {
        all.insert(QStringLiteral("label"), accessKeyLabel(StatusItem::menuMnemonicLabel(*entry)));
        all.insert(QStringLiteral("enabled"), true);
        all.insert(QStringLiteral("visible"), true);
        if (*entry == StatusMenuEntry::HideAmounts) {
            all.insert(QStringLiteral("toggle-type"), QStringLiteral("checkmark"));
            all.insert(QStringLiteral("toggle-state"), m_amountsHidden ? 1 : 0);
        }
        if (*entry == StatusMenuEntry::Quit) {
            all.insert(QStringLiteral("shortcut"),
                       QVariant::fromValue(DBusMenuShortcut{{QStringLiteral("Control"), QStringLiteral("q")}}));
        }
    }
    if (names.isEmpty()) {
        return all;
    }
    QVariantMap chosen;
    for (const QString &name : names) {
        if (const auto found = all.constFind(name); found != all.constEnd()) {
            chosen.insert(name, found.value());
        }
    }
    return chosen;
}

void DBusMenu::setAmountsHidden(bool hidden)
{
    if (hidden == m_amountsHidden) {
        return;
    }
    m_amountsHidden = hidden;
    const int id = idOf(StatusMenuEntry::HideAmounts);
    Q_EMIT itemsPropertiesUpdated({DBusMenuItem{id, properties(id, {QStringLiteral("toggle-state")})}}, {});
}

DBusMenuLayoutItem DBusMenu::layout(int parentId, int depth, const QStringList &names) const
{
    DBusMenuLayoutItem item{parentId, properties(parentId, names), {}};
    if (parentId == RootId && depth != 0) {
        for (int id : ids()) {
            item.children.append(layout(id, depth < 0 ? -1 : depth - 1, names));
        }
    }
    return item;
}

bool DBusMenu::handleEvent(int id, const QString &eventId)
{
    if (id != RootId && !contains(id)) {
        return false;
    }
    const auto entry = entryOf(id);
    if (entry && eventId == QLatin1String("clicked")) {
        QMetaObject::invokeMethod(
            this, [this, chosen = *entry] { Q_EMIT triggered(chosen); }, Qt::QueuedConnection);
    }
    return true;
}
