// SPDX-License-Identifier: MIT
// Chains of friends that lead back to their start.
#include "check/detail/FileHints.h"
#include "check/detail/StrongComponents.h"

#include "collector/detail/CollectorAccess.h"
#include "context/detail/ContextAccess.h"
#include "trace/detail/FindingIds.h"
#include "trace/detail/UserMessage.h"
#include "xml/detail/ContextFileFormat.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace dyadctx {

namespace {

// At most this many contexts of a ring are named.
constexpr std::size_t NamesShown = 10;

template<class Values>
auto IteratorAt(Values& values, std::size_t index) noexcept {
    return values.begin() + static_cast<std::ptrdiff_t>(index);
}

// Friends as positions among the declared contexts; a friend that is not linked leads nowhere.
class FriendGraph {
public:
    explicit FriendGraph(VELDyadCtxCollector& collector)
        : collector_(collector), declared_(CollectorAccess::Declared(collector)) {
        for (int pos = 1; pos <= declared_.Size(); ++pos) {
            starts_.push_back(targets_.size());
            AddFriendsOf(pos);
        }
        starts_.push_back(targets_.size());
        sorted_ = targets_;
        for (std::size_t i = 1; i < starts_.size(); ++i)
            std::sort(IteratorAt(sorted_, starts_[i - 1]), IteratorAt(sorted_, starts_[i]));
    }

    int Size() const noexcept { return declared_.Size(); }
    int FriendCount(int pos) const noexcept {
        return static_cast<int>(starts_[At(pos) + 1] - starts_[At(pos)]);
    }
    // The target of the friend at `slot`, from 1; 0 for one that leads nowhere.
    int Friend(int pos, int slot) const noexcept {
        return targets_[starts_[At(pos)] + static_cast<std::size_t>(slot) - 1];
    }
    bool HasFriend(int pos, int friendPos) const noexcept {
        return std::binary_search(IteratorAt(sorted_, starts_[At(pos)]),
                                  IteratorAt(sorted_, starts_[At(pos) + 1]), friendPos);
    }
    // The slot of a friend; 0 when it is none.
    int SlotOf(int pos, int friendPos) const noexcept {
        for (int slot = 1; slot <= FriendCount(pos); ++slot) {
            if (Friend(pos, slot) == friendPos)
                return slot;
        }
        return 0;
    }
    // From position to position.
    std::vector<Arc> Arcs() const {
        std::vector<Arc> arcs;
        for (int pos = 1; pos <= Size(); ++pos) {
            for (int slot = 1; slot <= FriendCount(pos); ++slot) {
                if (Friend(pos, slot) != 0)
                    arcs.push_back({pos, Friend(pos, slot)});
            }
        }
        return arcs;
    }
    const VELUnicodeString& Name(int pos) const { return declared_[pos]->GetName(); }

private:
    static std::size_t At(int pos) noexcept { return static_cast<std::size_t>(pos) - 1; }

    void AddFriendsOf(int pos) {
        const FriendView friends = ContextAccess::Friends(*declared_[pos]);
        for (int slot = 1; slot <= friends.Size(); ++slot) {
            const int target =
                CollectorAccess::PositionOfName(collector_, friends[slot]->GetName());
            targets_.push_back(target != 0 && declared_[target] == friends[slot] ? target : 0);
        }
    }

    VELDyadCtxCollector& collector_;
    const VELListPtrVELDyadContext& declared_;
    std::vector<std::size_t> starts_;
    std::vector<int> targets_;
    // The targets of each context, sorted for look-ups.
    std::vector<int> sorted_;
};

// The contexts on a shortest path from `from` to `to` within their component, both included.
std::vector<int> ShortestWay(const FriendGraph& graph, const std::vector<int>& component, int from,
                             int to, std::vector<int>& cameFrom) {
    std::vector<int> reached{from};
    const auto at = [&cameFrom](int pos) -> int& {
        return cameFrom[static_cast<std::size_t>(pos)];
    };
    const auto componentOf = [&component](int pos) {
        return component[static_cast<std::size_t>(pos)];
    };
    at(from) = from;
    for (std::size_t i = 0; i < reached.size() && at(to) == 0; ++i) {
        const int pos = reached[i];
        for (int slot = 1; slot <= graph.FriendCount(pos); ++slot) {
            const int next = graph.Friend(pos, slot);
            if (next == 0 || at(next) != 0 || componentOf(next) != componentOf(from))
                continue;
            at(next) = pos;
            reached.push_back(next);
        }
    }
    std::vector<int> way{to};
    while (way.back() != from)
        way.push_back(at(way.back()));
    std::reverse(way.begin(), way.end());
    return way;
}

VELUnicodeString TextOfRing(const FriendGraph& graph, const std::vector<int>& ring) {
    VELUnicodeString text;
    for (std::size_t i = 0; i < ring.size() && i < NamesShown; ++i)
        text.Append(graph.Name(ring[i])).Append(" -> ");
    if (ring.size() > NamesShown)
        text.Append("... -> ");
    return text.Append(graph.Name(ring.front()));
}

class RingHints {
public:
    RingHints(const FriendGraph& graph, const ReferencePlaces& references,
              const ContextPlaces& places, FindingList& findings)
        : graph_(graph), references_(references), places_(places), findings_(findings) {}

    void Report(const std::vector<int>& ring) {
        const VELUnicodeString text = TextOfRing(graph_, ring);
        FindingList::Entry& entry =
            findings_.AddAbout(graph_.Name(ring.front()), id::FriendRing, {&text, 1},
                               SpotOfFriend(ring.front(), ring[1]));
        for (std::size_t i = 1; i < ring.size() && i < NamesShown; ++i) {
            const int next = i + 1 < ring.size() ? ring[i + 1] : ring.front();
            entry.related.push_back({SpotOfFriend(ring[i], next), TextOfStep(ring[i], next)});
        }
    }

private:
    Spot SpotOfFriend(int pos, int friendPos) const {
        const VELPlace* place =
            places_.Find(references_.FriendAt(pos, graph_.SlotOf(pos, friendPos)));
        return place != nullptr ? Spot{*place, format::NameAttribute} : Spot{};
    }
    VELUnicodeString TextOfStep(int pos, int friendPos) const {
        const std::array names{graph_.Name(pos), graph_.Name(friendPos)};
        return OwnText("related.ring-step", names.data(), static_cast<int>(names.size()));
    }

    const FriendGraph& graph_;
    const ReferencePlaces& references_;
    const ContextPlaces& places_;
    FindingList& findings_;
};

} // namespace

// A friendship within a component that is not mutual begins a ring of three or more. Two that name
// each other are an error, not a hint.
void HintAtFriendRings(VELDyadCtxCollector& collector, const ReferencePlaces& references,
                       const ContextPlaces& places, FindingList& findings) {
    const FriendGraph graph(collector);
    // By position.
    const std::vector<int> component = StrongComponents(graph.Size() + 1, graph.Arcs());
    const auto componentOf = [&component](int pos) {
        return static_cast<std::size_t>(component[static_cast<std::size_t>(pos)]);
    };
    RingHints hints(graph, references, places, findings);
    std::vector<bool> isTold(component.size());
    std::vector<int> cameFrom(component.size());
    for (int pos = 1; pos <= graph.Size(); ++pos) {
        for (int slot = 1; !isTold[componentOf(pos)] && slot <= graph.FriendCount(pos); ++slot) {
            const int next = graph.Friend(pos, slot);
            if (next == 0 || next == pos || componentOf(next) != componentOf(pos) ||
                graph.HasFriend(next, pos))
                continue;
            isTold[componentOf(pos)] = true;
            std::vector<int> ring = ShortestWay(graph, component, next, pos, cameFrom);
            std::rotate(ring.begin(), ring.end() - 1, ring.end());
            hints.Report(ring);
        }
    }
}

} // namespace dyadctx
