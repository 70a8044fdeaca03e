// SPDX-License-Identifier: MIT
#include "tools/dyadctx/graph/PictureStyle.h"

#include "platform/VELMsgCatalog.h"
#include "tools/dyadctx/Words.h"
#include "trace/VELDyadMessageKeys.h"

#include <algorithm>
#include <array>

namespace dyadctx::tool {

namespace {

constexpr std::array<KindStyle, 5> Styles{{{"default", "Default", "#e9edf3", "#66758a"},
                                           {"path", "Path", "#e1eefc", "#3173b8"},
                                           {"file", "File", "#e2f4e6", "#338450"},
                                           {"database", "Database", "#fcf0d2", "#a87412"},
                                           {"other", "", "#f4e6f3", "#95508f"}}};

constexpr std::array<NodeKind, 5> Kinds{NodeKind::Default, NodeKind::Path, NodeKind::File,
                                        NodeKind::Database, NodeKind::Other};

} // namespace

const KindStyle& StyleOf(NodeKind kind) {
    return Styles[static_cast<std::size_t>(kind)];
}

std::string TitleOf(NodeKind kind) {
    const std::string type = StyleOf(kind).type;
    if (type.empty())
        return Words("picture.other-type");
    const std::string label = key::ParameterTypePrefix + type;
    return std::string(
        VELMsgCatalog::BuildMessage(key::Catalog, label.c_str(), nullptr, 0, VELUnicodeString(type))
            .AsView());
}

const char* ColorOf(const GraphLink& link) {
    if (link.isOnCycle)
        return CycleColor;
    return link.kind == LinkKind::Friend ? FriendColor : AssociatedColor;
}

Legend LegendOf(const Graph& graph) {
    Legend legend;
    for (const NodeKind kind : Kinds) {
        if (std::any_of(graph.nodes.begin(), graph.nodes.end(), [kind](const GraphNode& node) {
                return !node.isUnresolved && node.kind == kind;
            }))
            legend.kinds.push_back(kind);
    }
    for (const GraphNode& node : graph.nodes) {
        legend.hasUnresolved = legend.hasUnresolved || node.isUnresolved;
        legend.hasFaults = legend.hasFaults || !node.faults.empty();
    }
    for (const GraphLink& link : graph.links) {
        bool& hasKind = link.kind == LinkKind::Friend ? legend.hasFriends : legend.hasAssociated;
        hasKind = true;
        legend.hasCycles = legend.hasCycles || link.isOnCycle;
    }
    return legend;
}

} // namespace dyadctx::tool
