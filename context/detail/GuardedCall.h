// SPDX-License-Identifier: MIT
// Calls that must not let an exception through: into a host's objects, or that may run out of
// memory.
#pragma once

#include "platform/VELListVal.h"
#include "platform/VELResult.h"

#include <exception>
#include <utility>

namespace dyadctx {

// Returns the code of `call`; E_FAIL when it throws.
template<class Call>
VELResult CodeOf(Call&& call) noexcept {
    try {
        return std::forward<Call>(call)();
    } catch (const std::exception&) {
        return E_FAIL;
    } catch (...) {
        // A host's provider may throw anything.
        return E_FAIL;
    }
}

// Shrinks a list back to an earlier size.
template<class T>
void CutTo(VELListVal<T>& list, int size) noexcept {
    while (list.Size() > size)
        list.RemovePosition(list.Size());
}

} // namespace dyadctx
