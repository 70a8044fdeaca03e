// SPDX-License-Identifier: MIT
// Environment settings read once, at load.
#pragma once

#include "platform/VELUnicodeString.h"

namespace dyadctx {

// TE_MULTISITE_DBCONTEXT: on if set at all.
bool MultisiteFlag() noexcept;
struct TextSetting {
    bool isSet = false;
    VELUnicodeString text;
};
inline constexpr const char* InitVariable = "VELDyadCtxInit";
inline constexpr const char* RootsVariable = "VELInstallPath";
// VELDyadCtxInit: which context file to read; "2" if unset.
const TextSetting& InitSetting() noexcept;
// VELDyadCtxOut: where to write the collector; empty if unset.
const VELUnicodeString& OutputSetting() noexcept;
// VELInstallPath: installation folders separated by ";"; empty if unset.
const TextSetting& InstallationRoots() noexcept;
// VELDyadCtxTracer: its leading decimal number; 0 turns the console trace off.
int TracerLevel() noexcept;

// Whether VELDyadCtxTracer is currently set, to any value.
bool IsTracerVariableSet();

} // namespace dyadctx
