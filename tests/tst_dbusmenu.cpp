// The item's dbusmenu without a bus: its entries and their access keys, their properties, the layout
// at each depth and what each event does. tst_statusnotifieritem reads the same menu over a real bus.
#include "platform/DBusMenu.h"
#include "platform/DBusMenuAdaptor.h"

#include <QDBusMetaType>
#include <QSignalSpy>
#include <QTest>

Q_DECLARE_METATYPE(StatusMenuEntry)

class DBusMenuTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRootHoldsFourEntriesAndASeparatorInOrder()
    {
        DBusMenu menu;
        const DBusMenuLayoutItem root = menu.layout(DBusMenu::RootId, -1, {});
        QCOMPARE(root.id, 0);
        QCOMPARE(root.properties.value(QStringLiteral("children-display")).toString(), QStringLiteral("submenu"));
        QStringList shown;
        for (const DBusMenuLayoutItem &child : root.children) {
            shown.append(child.properties.value(QStringLiteral("type")).toString() == QLatin1String("separator")
                             ? QStringLiteral("---")
                             : child.properties.value(QStringLiteral("label")).toString());
            QVERIFY(child.children.isEmpty());
        }
        QCOMPARE(shown, (QStringList{QStringLiteral("_Open Inkwarden"), QStringLiteral("_Refresh"),
                                     QStringLiteral("_Settings"), QStringLiteral("_Hide amounts"),
                                     QStringLiteral("---"), QStringLiteral("_Quit Inkwarden")}));
    }

    void everyEntryHasAnAccessKeyOfItsOwn()
    {
        DBusMenu menu;
        QStringList keys;
        for (const StatusMenuEntry entry : StatusItem::menuEntries()) {
            const QString label = menu.properties(DBusMenu::idOf(entry)).value(QStringLiteral("label")).toString();
            // One "_", before a letter; the words around it are the plain label.
            QCOMPARE(label.count(u'_'), 1);
            const qsizetype mark = label.indexOf(u'_');
            QVERIFY2(mark + 1 < label.size() && label.at(mark + 1).isLetter(), qPrintable(label));
            keys.append(label.at(mark + 1).toLower());
            QCOMPARE(QString(label).remove(mark, 1), StatusItem::withoutMnemonic(StatusItem::menuMnemonicLabel(entry)));
        }
        QCOMPARE(keys, (QStringList{QStringLiteral("o"), QStringLiteral("r"), QStringLiteral("s"), QStringLiteral("h"),
                                    QStringLiteral("q")}));
    }

    void accessKeyLabelsAreWrittenTheDBusMenuWay_data()
    {
        QTest::addColumn<QString>("mnemonic");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("plain");
        QTest::newRow("key first") << QStringLiteral("&Refresh") << QStringLiteral("_Refresh")
                                   << QStringLiteral("Refresh");
        QTest::newRow("key inside") << QStringLiteral("Inkwarden ö&ffnen") << QStringLiteral("Inkwarden ö_ffnen")
                                    << QStringLiteral("Inkwarden öffnen");
        QTest::newRow("literal ampersand")
            << QStringLiteral("Fish && &Chips") << QStringLiteral("Fish & _Chips") << QStringLiteral("Fish & Chips");
        QTest::newRow("literal underscore") << QStringLiteral("snake_case &file") << QStringLiteral("snake__case _file")
                                            << QStringLiteral("snake_case file");
        QTest::newRow("both, no key") << QStringLiteral("a_b && c") << QStringLiteral("a__b & c")
                                      << QStringLiteral("a_b & c");
        QTest::newRow("key in brackets") << QStringLiteral(u"\u8A2D\u5B9A(&S)") << QStringLiteral(u"\u8A2D\u5B9A(_S)")
                                         << QStringLiteral(u"\u8A2D\u5B9A");
        QTest::newRow("key in brackets after a space")
            << QStringLiteral(u"Inkwarden \u3092\u958B\u304F (&O)")
            << QStringLiteral(u"Inkwarden \u3092\u958B\u304F (_O)") << QStringLiteral(u"Inkwarden \u3092\u958B\u304F");
        QTest::newRow("trailing mark") << QStringLiteral("Refresh&") << QStringLiteral("Refresh")
                                       << QStringLiteral("Refresh");
        QTest::newRow("no mark") << QStringLiteral("Refresh") << QStringLiteral("Refresh") << QStringLiteral("Refresh");
    }

    void accessKeyLabelsAreWrittenTheDBusMenuWay()
    {
        QFETCH(QString, mnemonic);
        QFETCH(QString, label);
        QFETCH(QString, plain);
        QCOMPARE(DBusMenu::accessKeyLabel(mnemonic), label);
        QCOMPARE(StatusItem::withoutMnemonic(mnemonic), plain);
    }

    void thePlainLabelIsTheMarkedOneWithoutItsMark()
    {
        QCOMPARE(StatusItem::menuMnemonicLabel(StatusMenuEntry::Open), QStringLiteral("&Open Inkwarden"));
        QCOMPARE(StatusItem::withoutMnemonic(StatusItem::menuMnemonicLabel(StatusMenuEntry::Open)),
                 QStringLiteral("Open Inkwarden"));
        for (const StatusMenuEntry entry : StatusItem::menuEntries()) {
            QVERIFY(!StatusItem::withoutMnemonic(StatusItem::menuMnemonicLabel(entry)).contains(u'&'));
        }
    }

    void hidingAmountsChecksTheEntryAndTellsTheHost()
    {
        DBusMenu menu;
        const int id = DBusMenu::idOf(StatusMenuEntry::HideAmounts);
        QCOMPARE(menu.properties(id).value(QStringLiteral("toggle-type")), QVariant(QStringLiteral("checkmark")));
        QCOMPARE(menu.properties(id).value(QStringLiteral("toggle-state")), QVariant(0));
        QSignalSpy updated(&menu, &DBusMenu::itemsPropertiesUpdated);
        menu.setAmountsHidden(true);
        QCOMPARE(menu.properties(id).value(QStringLiteral("toggle-state")), QVariant(1));
        QCOMPARE(updated.size(), 1);
        const auto items = updated.at(0).at(0).value<DBusMenuItemList>();
        QCOMPARE(items.size(), 1);
        QCOMPARE(items.first().id, id);
        QCOMPARE(items.first().properties.value(QStringLiteral("toggle-state")), QVariant(1));
        menu.setAmountsHidden(true);
        QCOMPARE(updated.size(), 1);
    }

    void aDepthOfZeroGivesTheRootAlone()
    {
        DBusMenu menu;
        QVERIFY(menu.layout(DBusMenu::RootId, 0, {}).children.isEmpty());
        QCOMPARE(menu.layout(DBusMenu::RootId, 1, {}).children.size(), 6);
    }

    void askedPropertiesAreTheOnlyOnesGiven()
    {
        DBusMenu menu;
        const QVariantMap properties = menu.properties(DBusMenu::idOf(StatusMenuEntry::Refresh),
                                                       {QStringLiteral("label"), QStringLiteral("no-such-property")});
        QCOMPARE(properties.keys(), QStringList{QStringLiteral("label")});
        QCOMPARE(properties.value(QStringLiteral("label")).toString(), QStringLiteral("_Refresh"));
    }

    void quitCarriesControlQ()
    {
        DBusMenu menu;
        const QVariant shortcut =
            menu.properties(DBusMenu::idOf(StatusMenuEntry::Quit)).value(QStringLiteral("shortcut"));
        QCOMPARE(shortcut.value<DBusMenuShortcut>(),
                 (DBusMenuShortcut{{QStringLiteral("Control"), QStringLiteral("q")}}));
    }

    void clickedOnAnEntryTriggersItAfterTheCallReturns_data()
    {
        QTest::addColumn<StatusMenuEntry>("entry");
        QTest::newRow("Open Inkwarden") << StatusMenuEntry::Open;
        QTest::newRow("Refresh") << StatusMenuEntry::Refresh;
        QTest::newRow("Settings") << StatusMenuEntry::Settings;
        QTest::newRow("Quit Inkwarden") << StatusMenuEntry::Quit;
    }

    void clickedOnAnEntryTriggersItAfterTheCallReturns()
    {
        QFETCH(StatusMenuEntry, entry);
        DBusMenu menu;
        QSignalSpy triggered(&menu, &DBusMenu::triggered);
        QVERIFY(menu.handleEvent(DBusMenu::idOf(entry), QStringLiteral("clicked")));
        QCOMPARE(triggered.size(), 0);
        QTRY_COMPARE(triggered.size(), 1);
        QCOMPARE(triggered.at(0).at(0).value<StatusMenuEntry>(), entry);
    }

    void otherEventsAndTheSeparatorTriggerNothing()
    {
        DBusMenu menu;
        QSignalSpy triggered(&menu, &DBusMenu::triggered);
        QVERIFY(menu.handleEvent(DBusMenu::idOf(StatusMenuEntry::Quit), QStringLiteral("hovered")));
        QVERIFY(menu.handleEvent(DBusMenu::SeparatorId, QStringLiteral("clicked")));
        QVERIFY(menu.handleEvent(DBusMenu::RootId, QStringLiteral("opened")));
        QTest::qWait(20);
        QCOMPARE(triggered.size(), 0);
    }

    void anUnknownIdIsRefused()
    {
        DBusMenu menu;
        QVERIFY(!menu.handleEvent(42, QStringLiteral("clicked")));
    }

    void theAdaptorAnswersForTheMenu()
    {
        DBusMenu menu;
        auto *adaptor = new DBusMenuAdaptor(&menu);
        QCOMPARE(adaptor->version(), 3u);
        QCOMPARE(adaptor->status(), QStringLiteral("normal"));
        QCOMPARE(adaptor->textDirection(), QStringLiteral("ltr"));
        DBusMenuLayoutItem layout;
        QCOMPARE(adaptor->GetLayout(0, -1, {}, layout), DBusMenu::LayoutRevision);
        QCOMPARE(layout.children.size(), 6);
        const DBusMenuItemList group = adaptor->GetGroupProperties({1, 5, 99}, {QStringLiteral("label")});
        QCOMPARE(group.size(), 2);
        QCOMPARE(group[1].properties.value(QStringLiteral("label")).toString(), QStringLiteral("_Quit Inkwarden"));
        QCOMPARE(adaptor->GetProperty(2, QStringLiteral("label")).variant().toString(), QStringLiteral("_Refresh"));
        QVERIFY(!adaptor->AboutToShow(0));
        QList<int> idErrors;
        QVERIFY(adaptor->AboutToShowGroup({0, 1, 77}, idErrors).isEmpty());
        QCOMPARE(idErrors, QList<int>{77});
        QSignalSpy triggered(&menu, &DBusMenu::triggered);
        const QList<int> eventErrors =
            adaptor->EventGroup({DBusMenuEvent{2, QStringLiteral("clicked"), QDBusVariant(0), 0},
                                 DBusMenuEvent{66, QStringLiteral("clicked"), QDBusVariant(0), 0}});
        QCOMPARE(eventErrors, QList<int>{66});
        QTRY_COMPARE(triggered.size(), 1);
        QCOMPARE(triggered.at(0).at(0).value<StatusMenuEntry>(), StatusMenuEntry::Refresh);
    }

    void theTypesHaveTheirWireSignatures()
    {
        registerStatusNotifierTypes();
        QCOMPARE(QDBusMetaType::typeToSignature(QMetaType::fromType<DBusMenuLayoutItem>()), "(ia{sv}av)");
        QCOMPARE(QDBusMetaType::typeToSignature(QMetaType::fromType<DBusMenuItemList>()), "a(ia{sv})");
        QCOMPARE(QDBusMetaType::typeToSignature(QMetaType::fromType<DBusMenuItemKeysList>()), "a(ias)");
        QCOMPARE(QDBusMetaType::typeToSignature(QMetaType::fromType<DBusMenuEventList>()), "a(isvu)");
        QCOMPARE(QDBusMetaType::typeToSignature(QMetaType::fromType<SniIconPixmapList>()), "a(iiay)");
        QCOMPARE(QDBusMetaType::typeToSignature(QMetaType::fromType<SniToolTip>()), "(sa(iiay)ss)");
    }
};

QTEST_MAIN(DBusMenuTest)
#include "tst_dbusmenu.moc"
