// The parameter types a context may have, and the reserved name of the default context.
#pragma once

#include "context/detail/DbEnvironment.h"

namespace dyadctx {

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
