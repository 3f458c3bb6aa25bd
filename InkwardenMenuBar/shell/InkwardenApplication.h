#pragma once

#include <QObject>
#include <QStringList>

#include <memory>

class AppDelegate;

// Everything the running Inkwarden is made of, wired to the real desktop: the clock, keyring,
// settings file, network monitor, desktop services and autostart entry behind the store, the panel
// item and the popover in front of it.
class InkwardenApplication : public QObject
{
    Q_OBJECT

public:
    InkwardenApplication();
    ~InkwardenApplication() override;

    void start();
    void openURLs(const QStringList &urls);
    void showPopover();

Q_SIGNALS:
    void quitRequested();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
