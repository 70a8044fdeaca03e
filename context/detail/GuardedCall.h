// Calls that must not let an exception through: calls of a host's objects, and operations that may
// run out of memory.
#pragma once

#include "platform/VELListVal.h"
#include "platform/VELResult.h"

#include <exception>
#include <utility>

namespace dyadctx {

// The code `call` answers; E_FAIL when it throws.
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

// Takes back what a list gained since it had that size.
template<class T>
void CutTo(VELListVal<T>& list, int size) noexcept {
    while (list.Size() > size)
        list.RemovePosition(list.Size());
}

} // namespace dyadctx
