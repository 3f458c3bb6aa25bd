#include "UiTest.h"

class TestLabeledField : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startTest(); }
    void cleanup() { endTest(); }

    void rowWithoutHintHasTwoChildrenAndNoEmptyThirdLine();
    void rowWithHintShowsItUnderTheContent();
    void changingHintReRendersInPlaceWithoutMovingTitleOrContent();

private:
    ViewHarness &showField(const QString &hint)
    {
        fixture->makeStore();
        view = std::make_unique<ViewHarness>(
            &fixture->store(),
            QStringLiteral("ColumnLayout { anchors.fill: parent; anchors.margins: 20\n"
                           "  LabeledField { objectName: \"field\"; title: \"Server\"; %1\n"
                           "    Rectangle { objectName: \"control\"; implicitHeight: 24; Layout.fillWidth: true }\n"
                           "  }\n"
                           "  Item { Layout.fillHeight: true }\n}")
                .arg(hint));
        if (!view->loaded()) {
            qFatal("%s", qPrintable(view->errors()));
        }
        return *view;
    }
    QList<QQuickItem *> visibleChildren()
    {
        QList<QQuickItem *> children;
        for (QQuickItem *child : item(QStringLiteral("field"))->childItems()) {
            if (child->isVisible() && child->height() > 0) {
                children.append(child);
            }
        }
        return children;
    }
};

void TestLabeledField::rowWithoutHintHasTwoChildrenAndNoEmptyThirdLine()
{
    showField(QString());
    const QList<QQuickItem *> children = visibleChildren();
    QCOMPARE(children.size(), 2);
    QCOMPARE(children.at(0)->objectName(), QStringLiteral("fieldTitle"));
    QCOMPARE(children.at(1)->objectName(), QStringLiteral("fieldContent"));
    QCOMPARE(text(QStringLiteral("fieldTitle")), QStringLiteral("Server"));
    QQuickItem *field = item(QStringLiteral("field"));
    QQuickItem *content = item(QStringLiteral("fieldContent"));
    QCOMPARE(field->height(), content->y() + content->height());
}

void TestLabeledField::rowWithHintShowsItUnderTheContent()
{
    showField(QStringLiteral("hint: \"http://localhost:8000\""));
    const QList<QQuickItem *> children = visibleChildren();
    QCOMPARE(children.size(), 3);
    QCOMPARE(text(QStringLiteral("fieldHint")), QStringLiteral("http://localhost:8000"));
    QQuickItem *content = item(QStringLiteral("fieldContent"));
    QCOMPARE(item(QStringLiteral("fieldHint"))->y(), content->y() + content->height() + 5);
    QCOMPARE(content->y(), item(QStringLiteral("fieldTitle"))->height() + 5);
}

void TestLabeledField::changingHintReRendersInPlaceWithoutMovingTitleOrContent()
{
    showField(QStringLiteral("hint: \"Launch Inkwarden after you sign in to or restart your computer\""));
    QQuickItem *field = item(QStringLiteral("field"));
    QQuickItem *title = item(QStringLiteral("fieldTitle"));
    QQuickItem *content = item(QStringLiteral("fieldContent"));
    QQuickItem *hint = item(QStringLiteral("fieldHint"));
    const QPointF titleAt = title->mapToScene({0, 0});
    const QPointF contentAt = content->mapToScene({0, 0});
    field->setProperty("hint", QStringLiteral("Approval is required in your system's autostart settings"));
    view->settle();
    QCOMPARE(item(QStringLiteral("fieldHint")), hint);
    QCOMPARE(ViewHarness::text(hint), QStringLiteral("Approval is required in your system's autostart settings"));
    QCOMPARE(title->mapToScene({0, 0}), titleAt);
    QCOMPARE(content->mapToScene({0, 0}), contentAt);
}

QTEST_MAIN(TestLabeledField)
#include "tst_ui_labeledfield.moc"
