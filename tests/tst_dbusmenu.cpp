// The item's dbusmenu without a bus: its entries, their properties, the layout at each depth and
// what each event does. tst_statusnotifieritem reads the same menu over a real bus.
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
        QCOMPARE(shown, (QStringList{QStringLiteral("Open Inkwarden"), QStringLiteral("Refresh"),
                                     QStringLiteral("Settings"), QStringLiteral("Hide amounts"), QStringLiteral("---"),
                                     QStringLiteral("Quit Inkwarden")}));
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
        QCOMPARE(properties.value(QStringLiteral("label")).toString(), QStringLiteral("Refresh"));
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
        QCOMPARE(group[1].properties.value(QStringLiteral("label")).toString(), QStringLiteral("Quit Inkwarden"));
        QCOMPARE(adaptor->GetProperty(2, QStringLiteral("label")).variant().toString(), QStringLiteral("Refresh"));
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
