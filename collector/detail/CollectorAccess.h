// SPDX-License-Identifier: MIT
// What a collector keeps besides its fields, and what reader, writer and file check may do with it
// beyond its public operations.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "collector/detail/CollectorIndex.h"
#include "collector/detail/ContextWatch.h"
#include "collector/detail/Fault.h"

namespace dyadctx {

struct CollectorState {
    // Derived from the collector's lists; rebuilt when it is out of date.
    CollectorIndex index;
    // Of the operations in progress.
    ContextWatches watches;
};

struct CollectorAccess {
    using Collector = VELDyadCtxCollector;

    // The caller owns the collector. Throws std::bad_alloc.
    static Collector* New(const VELUnicodeString& file, unsigned char isDefault) {
        return new Collector(file, isDefault);
    }
    // The collector a factory makes from a file.
    static Collector* CreateCollectorFromXMLFile(const VELUnicodeString& file,
                                                 unsigned char isDefault,
                                                 VELUnicodeString& message) {
        return Collector::CreateCollectorFromXMLFile(file, isDefault, message);
    }
    // The same for a path already known to be that of a context file. `text`, unless null, is read
    // instead of the file. Defined in Creation.cpp.
    static Collector* CreateCollectorFromContents(const VELUnicodeString& file,
                                                  unsigned char isDefault,
                                                  const VELUnicodeString* text,
                                                  VELUnicodeString& message);

    // The declared contexts; the list may hold null and repeated ones.
    static const VELListPtrVELDyadContext& Declared(const Collector& c) noexcept {
        return c._MainContexts;
    }
    // The position of the first declared context of that name; 0 without one. Throws
    // std::bad_alloc.
    static int PositionOfName(Collector& c, const VELUnicodeString& name) {
        return c.state_->index.PositionOfName(c._MainContexts, name);
    }
    // Reserves for about that many declared contexts.
    static void Reserve(Collector& c, int count) noexcept { c.state_->index.Reserve(count); }
    // Prefetches for a context of that name that is about to be declared.
    static void PrefetchName(Collector& c, const VELUnicodeString& name) noexcept {
        c.state_->index.Prefetch(name);
    }
    // For contexts an operation still needs after a host's code has run.
    static ContextWatches& Watches(Collector& c) noexcept { return c.state_->watches; }
};

// How far to go when a name is not declared: as far as the collector does for its clients, or
// through everything. What cannot be linked stays as it is.
enum class LinkExtent { AsCollector, Everything };

// Whether everything is linked. Considers the first `count` declared contexts.
bool LinkFriendsAndAssociated(VELDyadCtxCollector& collector, int count, LinkExtent extent,
                              FaultReporter& reporter);

} // namespace dyadctx
