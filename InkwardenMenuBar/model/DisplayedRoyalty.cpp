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
    // The same words as the stored value in English; the settings keep the raw value whatever the
    // language.
    switch (m_case) {
    case gross:
        //: The royalties before spending is taken off, as the headline figure (a choice in Settings)
        return tr("Gross royalties");
    case net:
        //: The royalties after spending is taken off, as the headline figure (a choice in Settings)
        return tr("Net royalties");
    }
    Q_UNREACHABLE();
}
