// SPDX-License-Identifier: MIT
#include "context/VELListPtrVELDyadContext.h"

VELListPtrVELDyadContext::VELListPtrVELDyadContext(int initialSize) : VELRawColl(initialSize) {}

VELListPtrVELDyadContext&
VELListPtrVELDyadContext::operator=(const VELListPtrVELDyadContext& other) {
    if (this != &other)
        VELRawColl::operator=(other);
    return *this;
}

VELListPtrVELDyadContext::~VELListPtrVELDyadContext() = default;

int VELListPtrVELDyadContext::operator==(const VELListPtrVELDyadContext& other) const noexcept {
    return (*this != other) != 0 ? 0 : 1;
}

int VELListPtrVELDyadContext::operator!=(const VELListPtrVELDyadContext& other) const noexcept {
    return VELRawColl::operator!=(other);
}
