// The parameter types a context may have, and the reserved name of the default context.
#pragma once

namespace dyadctx {

inline constexpr const char* DefaultType = "Default";
inline constexpr const char* PathType = "Path";
inline constexpr const char* FileType = "File";
inline constexpr const char* DatabaseType = "Database";

// The name reserved for the context of type "Default".
inline constexpr const char* DefaultContextName = "DYADIC";

} // namespace dyadctx
