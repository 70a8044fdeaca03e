// SPDX-License-Identifier: MIT
// Whether a host's code can run during an operation of the library.
#pragma once

#include "platform/VELDyadTrace.h"

#include <atomic>

namespace dyadctx {

// The services that call the host.
enum class HostService : unsigned int { Environment = 1, Messages = 2, Providers = 4 };

inline constinit std::atomic<unsigned int> hostServices{0};

inline void NoteHostService(HostService service, bool isHosts) noexcept {
    if (isHosts)
        hostServices.fetch_or(static_cast<unsigned int>(service), std::memory_order_relaxed);
    // Contexts may keep a host's providers after the built-in factory is restored.
    else if (service != HostService::Providers)
        hostServices.fetch_and(~static_cast<unsigned int>(service), std::memory_order_relaxed);
}

// False while no host can observe or change anything between two steps of an operation. An active
// trace counts too.
inline bool HostCodeCanRun() noexcept {
    return VELIsTraceActive() || hostServices.load(std::memory_order_relaxed) != 0;
}

} // namespace dyadctx
