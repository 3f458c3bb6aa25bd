#pragma once

class Popover;
class QObject;
class RoyaltiesStore;

// The one entry point of the popover module, inkwarden-popover.so, which the executable opens the
// first time the popover is asked for (LoadedPopover). The module's code uses the store and the
// platform code of the executable that loads it.
extern "C" {
// Makes the popover window for `store`; the caller owns it.
using InkwardenMakePopover = Popover *(RoyaltiesStore *store, QObject *parent);
}

inline constexpr char inkwardenMakePopoverSymbol[] = "inkwarden_make_popover";
