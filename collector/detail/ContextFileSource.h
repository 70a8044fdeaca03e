// Where the context file of a collector may lie, and whether a file can be one.
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

// What VELDyadCtxInit asks for: its own text as the path, no file at all, or the file that settings
// or installation name.
enum class InitChoice { Path, NoFile, Installed };
InitChoice InitChoiceOf(const VELUnicodeString& setting) noexcept;

// The file that the settings name; empty without one.
VELUnicodeString FileOfSettings();

// The entries of a list of installation folders, one after the other: each as it stands, also an
// empty one. The list itself is not empty.
class RootList {
public:
    explicit RootList(std::string_view roots) noexcept : rest_(roots) {}
    bool Next(std::string_view& root) noexcept;

private:
    std::string_view rest_;
    bool isDone_ = false;
};
VELUnicodeString DefaultFileBelow(std::string_view root);
// Whether there is a file or folder, which is all that is asked of a default file.
bool IsThere(const VELUnicodeString& path);

// The default context file below the first of `roots`, separated by ";", that holds one; empty when
// none does.
VELUnicodeString FindDefaultContextFile(const VELUnicodeString& roots);

// Never opens the file.
VELDyadCtxPathVerdict JudgeContextFile(const VELUnicodeString& path);

} // namespace dyadctx
