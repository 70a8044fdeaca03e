// SPDX-License-Identifier: MIT
// The parameter types a context may have, which depend on the DB context environment, and the
// reserved name of the default context.
#pragma once

#include "platform/VELDbContextEnvironment.h"

namespace dyadctx {

// Whether the DB context environment is on now. Never cache the result: it may change between two
// steps of one operation.
inline bool IsDbEnvironmentOn() {
    return IsDbContextEnvironmentActivated().AsView() == "1";
}

inline constexpr const char* DefaultType = "Default";
inline constexpr const char* PathType = "Path";
inline constexpr const char* FileType = "File";
inline constexpr const char* DatabaseType = "Database";

// Visits the types a context may have now, in the order clients get them.
template<class Visit>
void VisitParameterTypes(Visit visit) {
    if (IsDbEnvironmentOn())
        visit(FileType);
    visit(PathType);
    if (IsDbEnvironmentOn())
        visit(DatabaseType);
    visit(DefaultType);
}

// The name reserved for the context of type "Default".
inline constexpr const char* DefaultContextName = "DYADIC";

} // namespace dyadctx
