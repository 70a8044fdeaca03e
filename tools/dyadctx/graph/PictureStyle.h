// SPDX-License-Identifier: MIT
// What all kinds of pictures show alike: colours and the entries of the legend.
#pragma once

#include "tools/dyadctx/graph/GraphModel.h"

#include <string>
#include <vector>

namespace dyadctx::tool {

// For a light background; "#rrggbb".
struct KindStyle {
    // Also the class of such a box: letters only.
    const char* name;
    // The ParameterType; empty for all others.
    const char* type;
    const char* fill;
    const char* line;
};

const KindStyle& StyleOf(NodeKind kind);

inline constexpr const char* TextColor = "#1c2430";
inline constexpr const char* FriendColor = "#5b6675";
inline constexpr const char* AssociatedColor = "#7a4fc0";
inline constexpr const char* CycleColor = "#cf2a27";
inline constexpr const char* FaultColor = CycleColor;
inline constexpr const char* UnresolvedColor = "#7c838d";
inline constexpr const char* UnresolvedFill = "#ffffff";

const char* ColorOf(const GraphLink& link);

// What a picture of this graph needs to explain.
struct Legend {
    std::vector<NodeKind> kinds;
    bool hasUnresolved = false;
    bool hasFaults = false;
    bool hasFriends = false;
    bool hasAssociated = false;
    bool hasCycles = false;
};

Legend LegendOf(const Graph& graph);

// The title of a kind of boxes in the legend.
std::string TitleOf(NodeKind kind);

} // namespace dyadctx::tool
