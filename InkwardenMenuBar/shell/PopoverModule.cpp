#include "PopoverModule.h"

#include "PopoverWindow.h"

extern "C" Q_DECL_EXPORT Popover *inkwarden_make_popover(RoyaltiesStore *store, QObject *parent)
{
    return new PopoverWindow(*store, parent);
}

// The declaration callers resolve the symbol by must match the definition.
static_assert(std::is_same_v<decltype(inkwarden_make_popover), InkwardenMakePopover>);
