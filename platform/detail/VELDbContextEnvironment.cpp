// SPDX-License-Identifier: MIT
#include "platform/VELDbContextEnvironment.h"

#include "platform/VELEnvironment.h"
#include "platform/detail/HostCode.h"

#include <atomic>
#include <string_view>

namespace {

constexpr std::string_view Active = "1";
constexpr std::string_view NotActive = "0";

bool IsActiveAtLoad() {
    const char* value = VELGetEnv("VELDbContextEnvironment");
    return value != nullptr && value == Active;
}

std::atomic<VELDbContextEnvironmentSource*> hostSource{nullptr};
std::atomic<bool> builtInSwitch{IsActiveAtLoad()};

} // namespace

VELDbContextEnvironmentSource::~VELDbContextEnvironmentSource() = default;

VELUnicodeString IsDbContextEnvironmentActivated() {
    VELDbContextEnvironmentSource* source = hostSource.load(std::memory_order_acquire);
    const bool active =
        source != nullptr ? source->IsActive() : builtInSwitch.load(std::memory_order_relaxed);
    return VELUnicodeString(active ? Active : NotActive);
}

void SetDbContextEnvironment(bool active) {
    builtInSwitch.store(active, std::memory_order_relaxed);
}

VELDbContextEnvironmentSource*
SetDbContextEnvironmentSource(VELDbContextEnvironmentSource* source) noexcept {
    dyadctx::NoteHostService(dyadctx::HostService::Environment, source != nullptr);
    return hostSource.exchange(source, std::memory_order_acq_rel);
}
