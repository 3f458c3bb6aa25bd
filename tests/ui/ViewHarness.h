#pragma once

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>

#include <memory>

class RoyaltiesStore;

// One view of the Inkwarden.Ui module in a window of its own, offscreen, with the store handed in
// as its required property. Controls are found by object name and used as a person would: scrolled
// into view, then clicked or typed at.
class ViewHarness
{
public:
    // `body` is the QML of the view inside the window; it reads the store as `win.viewStore`,
    // as view("MenuContentView") writes it.
    ViewHarness(RoyaltiesStore *store, const QString &body, QSize size = {360, 560});
    ~ViewHarness();

    static QString view(const QString &type)
    {
        return type + QStringLiteral(" { anchors.fill: parent; store: win.viewStore }");
    }

    QQmlEngine &engine() { return m_engine; }
    QQuickWindow *window() const { return m_window.get(); }
    QQuickItem *root() const;
    bool loaded() const { return m_window != nullptr; }
    const QString &errors() const { return m_errors; }

    // The first object of that name below `scope` (the window's content when none), or null.
    QObject *find(const QString &objectName, QObject *scope = nullptr) const;
    QQuickItem *item(const QString &objectName, QObject *scope = nullptr) const;
    // Visible on screen: itself and every ancestor visible.
    static bool isShown(const QQuickItem *item);
    static QString text(const QObject *object) { return object ? object->property("text").toString() : QString(); }

    // Lets layouts, bindings and polishing settle.
    void settle();
    // Scrolls the item into view and clicks its centre. False when it is hidden or disabled.
    bool click(QQuickItem *item);
    void ensureVisible(QQuickItem *item);
    void typeInto(QQuickItem *field, const QString &text);
    void keyChord(const QKeySequence &keys);

    // Saves what the window shows.
    bool grab(const QString &path);

private:
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    QString m_errors;
};
