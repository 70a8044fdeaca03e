// SPDX-License-Identifier: MIT
// Help beyond the rules: what looks like a mistake although the library accepts it.
#pragma once

#include "check/detail/ContextPlaces.h"
#include "check/detail/FindingList.h"
#include "collector/VELDyadCtxCollector.h"
#include "platform/VELIXMLDOM.h"
#include "xml/detail/FormatNames.h"

#include <new>

namespace dyadctx {

inline VELIDOMNodeList ChildrenOf(const VELIDOMNode& node) {
    VELIDOMNodeList children;
    if (node.GetChildNodes(children) < 0)
        throw std::bad_alloc();
    return children;
}

// Elements and attributes below the root that nothing is read from.
void HintAtWhatIsNotRead(const VELIDOMElement& root, FindingList& findings);

// Friends, associated contexts, scenarios and options that a context has more than once.
void HintAtRepetitions(const VELIDOMElement& data, const FormatIds& ids, FindingList& findings);

// One ring of more than two friends for each group of contexts that reach one another.
void HintAtFriendRings(VELDyadCtxCollector& collector, const ReferencePlaces& references,
                       const ContextPlaces& places, FindingList& findings);

// Paths and files that contexts name and that do not exist.
void HintAtMissingTargets(VELDyadCtxCollector& collector, const ContextPlaces& places,
                          FindingList& findings);

// The longest line of contexts directly inside one another.
struct NestedContexts {
    VELIDOMElement outermost;
    int depth = 0;
};
NestedContexts FindDeepestNesting(const VELIDOMElement& root, const FormatIds& ids);

} // namespace dyadctx
