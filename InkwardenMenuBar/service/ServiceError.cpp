#include "ServiceError.h"

QString ServiceError::localizedDescription() const
{
    if (const RoyaltiesError *error = royaltiesError()) {
        return error->errorDescription();
    }
    return std::get<TransportError>(m_error).description;
}
