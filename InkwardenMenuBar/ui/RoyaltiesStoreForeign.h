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
