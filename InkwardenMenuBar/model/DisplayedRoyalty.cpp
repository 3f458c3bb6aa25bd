#include "DisplayedRoyalty.h"

#include "RawValueLookup.h"

std::optional<DisplayedRoyalty> DisplayedRoyalty::fromRawValue(QStringView raw)
{
    return caseWithRawValue(allCases(), raw);
}

QString DisplayedRoyalty::rawValue() const
{
    switch (m_case) {
    case gross:
        return QStringLiteral("Gross royalties");
    case net:
        return QStringLiteral("Net royalties");
    }
    Q_UNREACHABLE();
}

QString DisplayedRoyalty::title() const
{
    // The same words as the stored value, for now: a title may change (or be translated) here
    // without touching what the settings keep.
    return rawValue();
}
