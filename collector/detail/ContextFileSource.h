// Where the context file of a collector may lie, and whether a file can be one.
#pragma once

#include "platform/VELUnicodeString.h"

#include <string_view>

namespace dyadctx {

// The default context file below an installation folder.
inline constexpr std::string_view DefaultContextFile =
    "\\resources\\xml\\DYAD\\CONTEXT\\Default.xml";

// The settings that name a context file.
inline constexpr const char* SettingsRepository = "DyadSettingsRep";
inline constexpr const char* SettingsAttribute = "DYAD_Ctx_XmlFile";
// The environment variable that names one.
inline constexpr const char* ExchangeChannelVariable = "ExchangeChannel";

bool ContainsDefaultContextFile(const VELUnicodeString& path) noexcept;

// The default context file below the first of `roots`, separated by ";", that holds one; empty when
// none does. A root is taken as it stands, also an empty one.
VELUnicodeString FindDefaultContextFile(const VELUnicodeString& roots);

// Why a path cannot be that of a context file, in the order in which that is looked at.
enum class ContextFileVerdict {
    Usable,
    NoFolder,
    FolderMissing,
    FolderUnreadable,
    NoName,
    WrongExtension,
    NoRegularFile,
    Unreadable
};

// Never opens the file.
ContextFileVerdict JudgeContextFile(const VELUnicodeString& path);

} // namespace dyadctx
