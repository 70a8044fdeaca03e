// SPDX-License-Identifier: MIT
#include "platform/VELBaseUnknown_var.h"

#include "platform/VELIDyadDbProvider.h"

#include <utility>

VELNullHandleError::~VELNullHandleError() = default;

const char* VELNullHandleError::what() const noexcept {
    return "a null handle was used";
}

unsigned int VELBaseUnknown::AddRef() noexcept {
    return references_.fetch_add(1, std::memory_order_relaxed) + 1;
}

unsigned int VELBaseUnknown::Release() noexcept {
    const unsigned int left = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0)
        delete this;
    return left;
}

VELBaseUnknown::~VELBaseUnknown() = default;

VELBaseUnknown_var& VELBaseUnknown_var::operator=(const VELBaseUnknown_var& other) noexcept {
    return *this = VELBaseUnknown_var(other);
}

VELBaseUnknown_var& VELBaseUnknown_var::operator=(VELBaseUnknown_var&& other) noexcept {
    VELBaseUnknown* taken = std::exchange(other.object_, nullptr);
    VELBaseUnknown* released = std::exchange(object_, taken);
    if (released != nullptr)
        released->Release();
    return *this;
}

void VELBaseUnknown_var::Reset() noexcept {
    *this = VELBaseUnknown_var();
}

void VELBaseUnknown_var::ThrowErrorNullVar() {
    throw VELNullHandleError();
}

VELIDyadDbProvider::~VELIDyadDbProvider() = default;
