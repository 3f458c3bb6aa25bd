#include "StatusItem.h"

QList<StatusMenuEntry> StatusItem::menuEntries()
{
    return {StatusMenuEntry::Open, StatusMenuEntry::Refresh, StatusMenuEntry::Settings, StatusMenuEntry::HideAmounts,
            StatusMenuEntry::Quit};
}

QString StatusItem::menuMnemonicLabel(StatusMenuEntry entry)
{
    // The "&" goes before the access key; every entry of the menu needs a key of its own. Languages
    // whose words have no such letter add it in brackets at the end, as "設定(&S)".
    switch (entry) {
    case StatusMenuEntry::Open:
        //: Entry of the panel icon's menu: shows the popover with the royalties. The & marks the access key,
        //: unique within this menu.
        return tr("&Open Inkwarden");
    case StatusMenuEntry::Refresh:
        //: Entry of the panel icon's menu: fetches the royalties again now. The & marks the access key, unique
        //: within this menu.
        return tr("&Refresh");
    case StatusMenuEntry::Settings:
        //: Entry of the panel icon's menu: opens Inkwarden's settings. The & marks the access key, unique within
        //: this menu.
        return tr("&Settings");
    case StatusMenuEntry::HideAmounts:
        //: Check box entry of the panel icon's menu: hides the money figures next to the icon and in the popover.
        //: The & marks the access key, unique within this menu.
        return tr("&Hide amounts");
    case StatusMenuEntry::Quit:
        //: Entry of the panel icon's menu: ends Inkwarden. The & marks the access key, unique within this menu.
        return tr("&Quit Inkwarden");
    }
    return {};
}

QString StatusItem::withoutMnemonic(const QString &text)
{
    QString plain;
    plain.reserve(text.size());
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar character = text.at(index);
        // "(&S)": the key in brackets goes whole, with the space before it.
        if (character == u'(' && index + 3 < text.size() && text.at(index + 1) == u'&' && text.at(index + 2) != u'&'
            && text.at(index + 3) == u')') {
            while (!plain.isEmpty() && plain.back().isSpace()) {
                plain.chop(1);
            }
            index += 3;
            continue;
        }
        if (character == u'&') {
            // "&&" is a plain "&"; a lone "&" only marks the letter after it.
            if (index + 1 < text.size() && text.at(index + 1) == u'&') {
                plain += u'&';
                ++index;
            }
            continue;
        }
        plain += character;
    }
    return plain;
}

void StatusItem::setAmountsHidden(bool hidden)
{
    if (hidden == m_amountsHidden) {
        return;
    }
    m_amountsHidden = hidden;
    Q_EMIT amountsHiddenChanged(hidden);
}

void StatusItem::triggerMenuEntry(StatusMenuEntry entry)
{
    switch (entry) {
    case StatusMenuEntry::Open:
        Q_EMIT menuOpenRequested();
        return;
    case StatusMenuEntry::Refresh:
        Q_EMIT refreshRequested();
        return;
    case StatusMenuEntry::Settings:
        Q_EMIT settingsRequested();
        return;
    case StatusMenuEntry::HideAmounts:
        Q_EMIT hideAmountsToggled();
        return;
    case StatusMenuEntry::Quit:
        Q_EMIT quitRequested();
        return;
    }
}
