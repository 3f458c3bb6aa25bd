#include "ViewHarness.h"

#include "store/RoyaltiesStore.h"

#include <QImage>
#include <QQmlComponent>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

// The views' module is linked in statically.
Q_IMPORT_QML_PLUGIN(Inkwarden_UiPlugin)

ViewHarness::ViewHarness(RoyaltiesStore *store, const QString &body, QSize size)
{
    m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    const QString source = QStringLiteral("import QtQuick\nimport QtQuick.Layouts\nimport Inkwarden.Ui\n"
                                          "Window {\n    id: win\n    required property RoyaltiesStore viewStore\n"
                                          "    width: %1\n    height: %2\n    color: Theme.windowBackground\n"
                                          "    Item { objectName: \"content\"; anchors.fill: parent\n%3\n    }\n}\n")
                               .arg(size.width())
                               .arg(size.height())
                               .arg(body);
    QQmlComponent component(&m_engine);
    component.setData(source.toUtf8(), QUrl(QStringLiteral("qrc:/inkwarden-tests/Harness.qml")));
    if (component.isError()) {
        m_errors = component.errorString();
        return;
    }
    QObject *created =
        component.createWithInitialProperties({{QStringLiteral("viewStore"), QVariant::fromValue(store)}});
    m_window.reset(qobject_cast<QQuickWindow *>(created));
    if (!m_window) {
        m_errors = component.errorString();
        delete created;
        return;
    }
    m_window->show();
    if (!QTest::qWaitForWindowExposed(m_window.get())) {
        m_errors = QStringLiteral("the window was never exposed");
    }
    m_window->requestActivate();
    if (!QTest::qWaitForWindowActive(m_window.get())) {
        m_errors = QStringLiteral("the window never became active");
    }
    settle();
}

ViewHarness::~ViewHarness()
{
    m_window.reset();
}

QQuickItem *ViewHarness::root() const
{
    if (!m_window) {
        return nullptr;
    }
    return m_window->contentItem()->findChild<QQuickItem *>(QStringLiteral("content"));
}

namespace {

QObject *search(QObject *scope, const QString &name)
{
    if (!scope) {
        return nullptr;
    }
    if (scope->objectName() == name) {
        return scope;
    }
    // Items created by repeaters and loaders hang in the item tree; attached objects only in the
    // object tree. Both are searched, depth first.
    if (auto *item = qobject_cast<QQuickItem *>(scope)) {
        for (QQuickItem *child : item->childItems()) {
            if (QObject *found = search(child, name)) {
                return found;
            }
        }
    }
    for (QObject *child : scope->children()) {
        if (qobject_cast<QQuickItem *>(child) && qobject_cast<QQuickItem *>(scope)
            && qobject_cast<QQuickItem *>(child)->parentItem() == scope) {
            continue; // already searched as an item
        }
        if (QObject *found = search(child, name)) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

QObject *ViewHarness::find(const QString &objectName, QObject *scope) const
{
    if (!scope) {
        scope = m_window ? m_window->contentItem() : nullptr;
    }
    QObject *found = search(scope, objectName);
    if (!found && m_window && scope == m_window->contentItem()) {
        // Popups (the update prompt) live in the window's overlay.
        found = search(m_window.get(), objectName);
    }
    return found;
}

QQuickItem *ViewHarness::item(const QString &objectName, QObject *scope) const
{
    return qobject_cast<QQuickItem *>(find(objectName, scope));
}

bool ViewHarness::isShown(const QQuickItem *item)
{
    return item && item->isVisible();
}

void ViewHarness::settle()
{
    // Layouts settle over a few polish passes: a wrapped text learns its height only after its
    // width is known.
    for (int i = 0; i < 6; ++i) {
        QCoreApplication::processEvents();
        QTest::qWait(10);
    }
}

void ViewHarness::ensureVisible(QQuickItem *item)
{
    for (QQuickItem *ancestor = item ? item->parentItem() : nullptr; ancestor; ancestor = ancestor->parentItem()) {
        if (!ancestor->inherits("QQuickFlickable")) {
            continue;
        }
        auto *contentItem = ancestor->property("contentItem").value<QQuickItem *>();
        const QRectF inContent = item->mapRectToItem(contentItem, QRectF(0, 0, item->width(), item->height()));
        const qreal top = ancestor->property("contentY").toReal();
        if (inContent.top() < top || inContent.bottom() > top + ancestor->height()) {
            const qreal maximum = std::max<qreal>(0, ancestor->property("contentHeight").toReal() - ancestor->height());
            ancestor->setProperty("contentY",
                                  std::clamp<qreal>(inContent.center().y() - ancestor->height() / 2, 0, maximum));
            settle();
        }
    }
}

bool ViewHarness::click(QQuickItem *item)
{
    if (!item || !item->isVisible() || !item->isEnabled()) {
        return false;
    }
    ensureVisible(item);
    const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(m_window.get(), Qt::LeftButton, Qt::NoModifier, centre.toPoint());
    settle();
    return true;
}

void ViewHarness::typeInto(QQuickItem *field, const QString &text)
{
    click(field);
    field->forceActiveFocus();
    for (const QChar character : text) {
        QTest::keyClick(m_window.get(), character.toLatin1());
    }
    settle();
}

void ViewHarness::keyChord(const QKeySequence &keys)
{
    QTest::keySequence(m_window.get(), keys);
    settle();
}

bool ViewHarness::grab(const QString &path)
{
    settle();
    return m_window && m_window->grabWindow().save(path);
}
