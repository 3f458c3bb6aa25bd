#pragma once

#include "ViewHarness.h"
#include "support/StoreFixture.h"

#include <QRegularExpression>
#include <QTest>

// What every view test shares: a fresh fixture and view per test, and any QML warning is a failure
// (Inkwarden writes no log, so a warning means a broken binding).
class UiTest : public QObject
{
    Q_OBJECT

protected:
    void startTest()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral("\\.qml|qrc:|QML|Binding")));
        fixture = std::make_unique<StoreFixture>();
    }
    void endTest()
    {
        view.reset();
        fixture.reset();
    }

    // Shows `type` (or any QML body) for the store as it stands.
    ViewHarness &show(const QString &type = QStringLiteral("MenuContentView"))
    {
        return showBody(ViewHarness::view(type));
    }
    // Shows any QML inside the window.
    ViewHarness &showBody(const QString &body)
    {
        view = std::make_unique<ViewHarness>(&fixture->store(), body);
        if (!view->loaded()) {
            qFatal("the view did not load: %s", qPrintable(view->errors()));
        }
        return *view;
    }

    QQuickItem *item(const QString &name, QObject *scope = nullptr) const { return view->item(name, scope); }
    QString text(const QString &name, QObject *scope = nullptr) const
    {
        return ViewHarness::text(view->find(name, scope));
    }
    bool shown(const QString &name, QObject *scope = nullptr) const { return ViewHarness::isShown(item(name, scope)); }
    // Usable: neither disabled nor greyed out while it keeps the focus (`available` false).
    bool enabled(const QString &name, QObject *scope = nullptr) const
    {
        QQuickItem *found = item(name, scope);
        const QVariant available = found ? found->property("available") : QVariant();
        return found && found->isEnabled() && (!available.isValid() || available.toBool());
    }
    bool click(const QString &name, QObject *scope = nullptr) { return view->click(item(name, scope)); }

    std::unique_ptr<StoreFixture> fixture;
    std::unique_ptr<ViewHarness> view;
};
