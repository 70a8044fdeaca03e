// SPDX-License-Identifier: MIT
#include "tools/dyadctx/ContextFindings.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace dyadctx::tool {

namespace {

// Where the elements of contexts begin, and the positions of these.
using Starts = std::vector<std::pair<VELPlace, std::size_t>>;

class Sorter {
public:
    Sorter(const std::vector<VELDyadContext*>& declared, const VELDyadCtxFileCheck& check)
        : declared_(declared), findings_(declared.size()) {
        for (std::size_t i = 0; i < declared.size(); ++i) {
            VELPlace place;
            if (check.GetPlace(declared[i], place) >= 0)
                starts_.emplace_back(place, i);
            byName_.emplace(NameOf(i), i);
        }
        std::sort(starts_.begin(), starts_.end());
    }

    void Add(const VELDyadCtxFinding& finding) {
        if (!finding.hasContext) {
            AddToElement(finding);
            return;
        }
        const std::string_view name = finding.context.AsView();
        std::set<std::size_t> contexts;
        AddContextAt(finding.place, name, contexts);
        for (int i = 1; i <= finding.related.Size(); ++i)
            AddContextAt(finding.related[i].place, name, contexts);
        const auto first = byName_.find(name);
        if (contexts.empty() && first != byName_.end())
            contexts.insert(first->second);
        for (const std::size_t context : contexts)
            findings_[context].push_back(&finding);
    }

    std::vector<FindingsOfContext> Take() { return std::move(findings_); }

private:
    std::string_view NameOf(std::size_t context) const {
        return declared_[context]->GetName().AsView();
    }

    // To the context whose element is at that very place: one without a name.
    void AddToElement(const VELDyadCtxFinding& finding) {
        const auto next = FirstAfter(finding.place);
        if (next != starts_.begin() && std::prev(next)->first == finding.place)
            findings_[std::prev(next)->second].push_back(&finding);
    }

    // The context in whose element that place is, if it has the name.
    void AddContextAt(const VELPlace& place, std::string_view name,
                      std::set<std::size_t>& contexts) const {
        const auto next = FirstAfter(place);
        if (next != starts_.begin() && NameOf(std::prev(next)->second) == name)
            contexts.insert(std::prev(next)->second);
    }

    Starts::const_iterator FirstAfter(const VELPlace& place) const {
        return std::upper_bound(
            starts_.begin(), starts_.end(), place,
            [](const VELPlace& wanted, const auto& start) { return wanted < start.first; });
    }

    const std::vector<VELDyadContext*>& declared_;
    std::vector<FindingsOfContext> findings_;
    // In the order of the file.
    Starts starts_;
    std::unordered_map<std::string_view, std::size_t> byName_;
};

} // namespace

std::vector<FindingsOfContext> FindingsByContext(const std::vector<VELDyadContext*>& declared,
                                                 const VELDyadCtxFileCheck& check) {
    Sorter sorter(declared, check);
    for (int i = 1; i <= check.GetNbFindings(); ++i)
        sorter.Add(check.GetFindingAt(i));
    return sorter.Take();
}

} // namespace dyadctx::tool
