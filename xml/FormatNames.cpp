#include "xml/detail/FormatNames.h"

#include "context/detail/ParameterTypes.h"

namespace dyadctx {

FormatNames::FormatNames() : databaseType(DatabaseType) {
    for (const char* detail : format::ServerDetails)
        serverDetails.Append(VELUnicodeString(detail));
}

const FormatNames& Names() {
    static const FormatNames names;
    return names;
}

} // namespace dyadctx
