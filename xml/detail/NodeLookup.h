// Finds the nodes that one pass of the reader walks.
#pragma once

#include "platform/VELIXMLDOM.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"
#include "xml/detail/ContextValues.h"
#include "xml/detail/ReadState.h"

namespace dyadctx {

// All children of the container: `parent` itself, or for the outermost pass its only descendant
// named `tag`. For an inner container that holds neither a Context nor `tag`: no nodes, and
// success.
VELResult GetNodeListByTagName(const VELIDOMElement& parent, const VELUnicodeString& tag,
                               ContextLevels levels, VELIDOMNodeList& nodes, int& count,
                               const ReadState& state);

// Which walks below a Context element find something to read.
struct WalksBelow {
    bool associated = true;
    bool friends = true;
    bool scenarios = true;
};
WalksBelow FindWalksBelow(const VELIDOMElement& context, const FormatIds& ids);

} // namespace dyadctx
