#pragma once

#include "store/RoyaltiesStore.h"

#include <QtQml/qqml.h>

// Makes the store a QML type, so the views can declare `required property RoyaltiesStore store`.
// The views never create one: the app, the tests and the screenshot tool hand theirs in.
struct RoyaltiesStoreForeign {
    Q_GADGET
    QML_FOREIGN(RoyaltiesStore)
    QML_NAMED_ELEMENT(RoyaltiesStore)
    QML_UNCREATABLE("The views are given the app's one store.")
};

// The store's notification choices, which the settings view binds to as `store.alerts`.
struct RoyaltyAlertsForeign {
    Q_GADGET
    QML_FOREIGN(RoyaltyAlerts)
    QML_NAMED_ELEMENT(RoyaltyAlerts)
    QML_UNCREATABLE("The store owns its alerts.")
};
