// SPDX-License-Identifier: MIT
// Why a step of replacing a file failed.
#pragma once

#include "platform/VELFileSystem.h"

namespace dyadctx {

struct Refusal {
    using Kind = VELFileRefusal::Kind;

    Kind kind = Kind::None;
    // The system's error code; 0 if it does not apply.
    int code = 0;
    // What the code alone does not say; null if it says enough.
    const char* what = nullptr;

    bool IsRefusal() const noexcept { return kind != Kind::None; }
};

// The result of VELReplaceFile; `refusal` may be null.
VELResult Answer(const Refusal& result, VELFileRefusal* refusal) noexcept;

} // namespace dyadctx
