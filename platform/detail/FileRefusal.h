// How the steps of replacing a file say why they go no further.
#pragma once

#include "platform/VELFileSystem.h"

namespace dyadctx {

struct Refusal {
    using Kind = VELFileRefusal::Kind;

    Kind kind = Kind::None;
    // The system's error code; 0 when it has no part in this.
    int code = 0;
    // What the code alone does not tell; null when it tells enough.
    const char* what = nullptr;

    bool IsRefusal() const noexcept { return kind != Kind::None; }
};

// The answer of VELReplaceFile; `refusal` may be null.
VELResult Answer(const Refusal& result, VELFileRefusal* refusal) noexcept;

} // namespace dyadctx
