// What the reader and writer of files and the check of a file may do with a collector beyond its
// public operations.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "collector/detail/CollectorState.h"

namespace dyadctx {

struct CollectorAccess {
    using Collector = VELDyadCtxCollector;

    // The caller owns the collector. Throws std::bad_alloc.
    static Collector* New(const VELUnicodeString& file, unsigned char isDefault) {
        return new Collector(file, isDefault);
    }
    // What a factory makes of a file.
    static Collector* CreateCollectorFromXMLFile(const VELUnicodeString& file,
                                                 unsigned char isDefault,
                                                 VELUnicodeString& message) {
        return Collector::CreateCollectorFromXMLFile(file, isDefault, message);
    }
    // The same of a file whose path is known to be that of a context file. Where `text` is not null
    // it is read instead of the file. Defined in Creation.cpp.
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
    // Prepares for about that many declared contexts.
    static void Reserve(Collector& c, int count) noexcept { c.state_->index.Reserve(count); }
    // Tells that a context of that name is about to be declared.
    static void PrefetchName(Collector& c, const VELUnicodeString& name) noexcept {
        c.state_->index.Prefetch(name);
    }
    // For what an operation still means to look at when a host's code has run.
    static ContextWatches& Watches(Collector& c) noexcept { return c.state_->watches; }
};

} // namespace dyadctx
