#pragma once

#include "Popover.h"

#include <QString>

#include <memory>

class RoyaltiesStore;

// The popover, loaded from its module (inkwarden-popover.so) the first time it is shown: until
// then Inkwarden maps none of Qt Quick. Once loaded, the module stays; the window in it gives its
// memory back by itself after a while closed. A module that cannot be loaded is reported once, and
// the popover then does not open; the panel item and the store carry on.
class LoadedPopover final : public Popover
{
    Q_OBJECT

public:
    // `modulePath` empty: the installed module, or in a build the one beside the executable.
    explicit LoadedPopover(RoyaltiesStore &store, QString modulePath = {}, QObject *parent = nullptr);
    ~LoadedPopover() override;

    bool isShown() const override;
    void show(std::optional<QPoint> anchor) override;
    void close() override;
    bool closedJustNow() const override;

    // Whether the module is loaded and made the window.
    bool isLoaded() const { return m_popover != nullptr; }
    // Why the module could not be loaded; empty when it was, or was not tried yet.
    QString loadError() const { return m_loadError; }

    // Where the module is looked for by default.
    static QString defaultModulePath();

private:
    bool load();

    RoyaltiesStore &m_store;
    QString m_modulePath;
    std::unique_ptr<Popover> m_popover;
    QString m_loadError;
};
