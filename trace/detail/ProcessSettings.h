// What the library reads from the environment once, when it is loaded.
#pragma once

#include "platform/VELUnicodeString.h"

namespace dyadctx {

// TE_MULTISITE_DBCONTEXT: on when set at all.
bool MultisiteFlag() noexcept;
struct TextSetting {
    bool isSet = false;
    VELUnicodeString text;
};
inline constexpr const char* InitVariable = "VELDyadCtxInit";
inline constexpr const char* RootsVariable = "VELInstallPath";
// VELDyadCtxInit: which context file to read; "2" when not set.
const TextSetting& InitSetting() noexcept;
// VELDyadCtxOut: where to write the collector; empty when not set.
const VELUnicodeString& OutputSetting() noexcept;
// VELInstallPath: installation folders separated by ";"; empty when not set.
const TextSetting& InstallationRoots() noexcept;
// VELDyadCtxTracer: the leading decimal number of its value; 0 means that the console trace is off.
int TracerLevel() noexcept;

// Whether VELDyadCtxTracer is set now, to whatever value.
bool IsTracerVariableSet();

} // namespace dyadctx
