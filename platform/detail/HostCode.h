// Whether a host's own code can run in the middle of an operation of the library.
#pragma once

#include "platform/VELDyadTrace.h"

#include <atomic>

namespace dyadctx {

// The services that call a host back.
enum class HostService : unsigned int { Environment = 1, Messages = 2, Providers = 4 };

inline constinit std::atomic<unsigned int> hostServices{0};

inline void NoteHostService(HostService service, bool isHosts) noexcept {
    if (isHosts)
        hostServices.fetch_or(static_cast<unsigned int>(service), std::memory_order_relaxed);
    // Contexts may keep a host's providers although new ones are the library's again.
    else if (service != HostService::Providers)
        hostServices.fetch_and(~static_cast<unsigned int>(service), std::memory_order_relaxed);
}

// False while nobody can see, or change anything, between two steps of an operation. The trace
// counts as soon as it is on.
inline bool HostCodeCanRun() noexcept {
    return VELIsTraceActive() || hostServices.load(std::memory_order_relaxed) != 0;
}

} // namespace dyadctx
