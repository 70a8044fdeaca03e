// SPDX-License-Identifier: MIT
#include "platform/detail/FileRefusal.h"

#include "platform/detail/SystemMessage.h"

#include <exception>
#include <string>

namespace dyadctx {

namespace {

std::string ReasonOf(const Refusal& result) {
    std::string system = result.code != 0 ? SystemMessage(result.code) : std::string();
    if (result.what == nullptr)
        return system;
    return system.empty() ? result.what : std::string(result.what) + " (" + system + ")";
}

} // namespace

VELResult Answer(const Refusal& result, VELFileRefusal* refusal) noexcept {
    if (refusal != nullptr) {
        *refusal = VELFileRefusal();
        refusal->kind = result.kind;
        try {
            refusal->reason = VELUnicodeString(ReasonOf(result));
        } catch (const std::exception&) {
            refusal->reason = VELUnicodeString();
        }
    }
    return result.IsRefusal() ? E_FAIL : S_OK;
}

} // namespace dyadctx
