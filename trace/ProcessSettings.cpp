// SPDX-License-Identifier: MIT
#include "trace/detail/ProcessSettings.h"

#include "platform/VELEnvironment.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <limits>

namespace dyadctx {

namespace {

constexpr const char* TracerVariable = "VELDyadCtxTracer";

TextSetting ReadText(const char* variable, const char* textWhenNotSet) noexcept {
    const char* value = VELGetEnv(variable);
    try {
        return {value != nullptr, VELUnicodeString(value != nullptr ? value : textWhenNotSet)};
    } catch (const std::exception&) {
        // Loading must not end the process: without memory the setting counts as empty.
        return {value != nullptr, {}};
    }
}

int ReadLeadingNumber(const char* variable) noexcept {
    const char* value = VELGetEnv(variable);
    if (value == nullptr)
        return 0;
    constexpr long lowest = std::numeric_limits<int>::min();
    constexpr long highest = std::numeric_limits<int>::max();
    // A number too large for an int must not become 0.
    return static_cast<int>(std::clamp(std::strtol(value, nullptr, 10), lowest, highest));
}

// Read once, at load, in this order. They use no other static object, so the initialisation order
// of files does not matter.
const bool multisiteFlag = VELGetEnv("TE_MULTISITE_DBCONTEXT") != nullptr;
const TextSetting initSetting = ReadText(InitVariable, "2");
const TextSetting outputSetting = ReadText("VELDyadCtxOut", "");
const TextSetting installationRoots = ReadText(RootsVariable, "");
const int tracerLevel = ReadLeadingNumber(TracerVariable);

} // namespace

bool MultisiteFlag() noexcept {
    return multisiteFlag;
}

const TextSetting& InitSetting() noexcept {
    return initSetting;
}

const VELUnicodeString& OutputSetting() noexcept {
    return outputSetting.text;
}

const TextSetting& InstallationRoots() noexcept {
    return installationRoots;
}

int TracerLevel() noexcept {
    return tracerLevel;
}

bool IsTracerVariableSet() {
    return VELGetEnv(TracerVariable) != nullptr;
}

} // namespace dyadctx
