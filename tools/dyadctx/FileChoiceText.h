// SPDX-License-Identifier: MIT
// The choice of the context file in words.
#pragma once

#include "collector/VELDyadCtxFileChoice.h"

#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::tool {

inline constexpr const char* SettingsRepository = "DyadSettingsRep";
// Names the context file.
inline constexpr const char* FileAttribute = "DYAD_Ctx_XmlFile";

// Looks at every source. Throws std::bad_alloc.
void MakeChoice(VELDyadCtxFileChoice& choice);

// "VELDyadCtxInit", "settings" or "VELInstallPath".
const char* NameOf(VELDyadCtxFileOrigin origin);
// "chosen", "rejected", "absent" or "ignored".
const char* NameOf(VELDyadCtxFileVerdict verdict);

// Why the candidate has its verdict.
std::string ReasonOf(const VELDyadCtxFileCandidate& candidate);
// What would keep the library from reading the path; empty for nothing and without a path.
std::string FaultOf(const VELDyadCtxFileCandidate& candidate);

// Why the library would not open this file; empty when it would.
std::string ReasonAgainst(std::string_view file);

// What to say of an attribute of the settings that the library does not read, and of all those in
// the settings file whose name is near to that of the one it reads.
std::string RemarkOnUnreadAttribute(std::string_view name);
std::vector<std::string> RemarksOnMisspeltAttributes();

} // namespace dyadctx::tool
