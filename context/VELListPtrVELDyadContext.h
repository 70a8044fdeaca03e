// SPDX-License-Identifier: MIT
// A list of contexts: friends, query results, the collector's own lists.
//
// Positions run from 1. The list never owns the contexts it holds; null is allowed.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELRawColl.h"

class VELDyadContext;

class VELDYADCTX_EXPORT VELListPtrVELDyadContext : public VELRawColl<VELDyadContext*> {
public:
    // Prepares storage for `initialSize` contexts.
    VELListPtrVELDyadContext(int initialSize = 0);
    VELListPtrVELDyadContext(const VELListPtrVELDyadContext&) = default;
    VELListPtrVELDyadContext(VELListPtrVELDyadContext&&) noexcept = default;
    VELListPtrVELDyadContext& operator=(const VELListPtrVELDyadContext& other);
    VELListPtrVELDyadContext& operator=(VELListPtrVELDyadContext&&) noexcept = default;
    ~VELListPtrVELDyadContext() override;

    // 1 when both hold the same contexts in the same order, else 0; != is the opposite.
    int operator==(const VELListPtrVELDyadContext& other) const noexcept;
    int operator!=(const VELListPtrVELDyadContext& other) const noexcept;
};
