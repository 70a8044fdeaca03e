// SPDX-License-Identifier: MIT
// Where a collector's context file may be, and whether a file can be one.
#pragma once

#include "collector/VELDyadCtxFileChoice.h"
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

// What VELDyadCtxInit selects: its own text as the path, no file, or the file named by settings or
// installation.
enum class InitChoice { Path, NoFile, Installed };
InitChoice InitChoiceOf(const VELUnicodeString& setting) noexcept;

// The file named by the settings; empty without one.
VELUnicodeString FileOfSettings();

// Iterates over a list of installation folders: each entry as written, even if empty. The list
// itself is not empty.
class RootList {
public:
    explicit RootList(std::string_view roots) noexcept : rest_(roots) {}
    bool Next(std::string_view& root) noexcept;

private:
    std::string_view rest_;
    bool isDone_ = false;
};
VELUnicodeString DefaultFileBelow(std::string_view root);
// Whether there is a file or folder; a default file needs no more.
bool IsThere(const VELUnicodeString& path);

// The default context file below the first of `roots`, separated by ";", that has one; empty when
// none does.
VELUnicodeString FindDefaultContextFile(const VELUnicodeString& roots);

// Never opens the file.
VELDyadCtxPathVerdict JudgeContextFile(const VELUnicodeString& path);

} // namespace dyadctx
