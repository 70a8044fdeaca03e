// SPDX-License-Identifier: MIT
#include "check/detail/FindingList.h"

#include "check/detail/Consequences.h"
#include "trace/detail/FindingIds.h"
#include "trace/detail/UserMessage.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace dyadctx {

namespace {

VELUnicodeString TextOf(const char* id, const FindingKind* kind,
                        std::span<const VELUnicodeString> parameters) {
    const VELUnicodeString* first = parameters.empty() ? nullptr : parameters.data();
    const int count = static_cast<int>(parameters.size());
    return kind != nullptr ? OwnText(id, first, count) : CatalogText(id, first, count);
}

bool StandsBefore(const FindingList::Entry& left, const FindingList::Entry& right) {
    return left.finding.place < right.finding.place;
}

// Equal for findings at one place that say the same.
std::string IdentityOf(const VELDyadCtxFinding& finding) {
    std::string identity(finding.id.AsView());
    for (int pos = 1; pos <= finding.parameters.Size(); ++pos) {
        const std::string_view parameter = finding.parameters[pos].AsView();
        identity += ' ' + std::to_string(parameter.size()) + ' ';
        identity += parameter;
    }
    return identity;
}

// Faults in order, each followed by its consequences.
std::vector<std::size_t> OrderByFault(const std::vector<std::size_t>& faults) {
    std::vector<std::size_t> order(faults.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&faults](std::size_t left, std::size_t right) {
        return std::tuple(faults[left], faults[left] != left, left) <
               std::tuple(faults[right], faults[right] != right, right);
    });
    return order;
}

} // namespace

FindingList::Entry& FindingList::Add(const char* id, std::span<const VELUnicodeString> parameters,
                                     const Spot& spot) {
    const FindingKind* kind = FindOwnKind(id);
    Entry& entry = entries_.emplace_back();
    entry.finding.id = id;
    entry.finding.severity = kind != nullptr ? kind->severity : VELDyadCtxSeverity::Error;
    for (const VELUnicodeString& parameter : parameters)
        entry.finding.parameters.Append(parameter);
    entry.finding.text = TextOf(id, kind, parameters);
    entry.spot = spot;
    hasErrors_ = hasErrors_ || entry.finding.severity == VELDyadCtxSeverity::Error;
    return entry;
}

FindingList::Entry& FindingList::AddAbout(const VELUnicodeString& context, const char* id,
                                          std::span<const VELUnicodeString> parameters,
                                          const Spot& spot) {
    Entry& entry = Add(id, parameters, spot);
    entry.finding.hasContext = true;
    entry.finding.context = context;
    return entry;
}

FindingList::Entry& FindingList::AddWithSuggestion(const char* id,
                                                   std::span<const VELUnicodeString> parameters,
                                                   const Spot& spot) {
    const VELUnicodeString& suggestion = parameters.back();
    if (suggestion.IsEmpty())
        return Add(id, parameters.first(parameters.size() - 1), spot);
    Entry& entry = Add(id, parameters, spot);
    entry.finding.text.Append(" ").Append(OwnText("finding.did-you-mean", &suggestion, 1));
    return entry;
}

// Those at one place are next to each other.
void FindingList::DropRepeated() {
    VELPlace place;
    std::unordered_set<std::string> said;
    std::erase_if(entries_, [&](const Entry& entry) {
        if (entry.finding.place != std::exchange(place, entry.finding.place))
            said.clear();
        return place != VELPlace() && !said.insert(IdentityOf(entry.finding)).second;
    });
}

VELListVal<VELDyadCtxFinding> FindingList::Finish(SourceReader& text,
                                                  const VELListValVELUnicodeString& silenced) {
    SetPlaces(text);
    std::stable_sort(entries_.begin(), entries_.end(), StandsBefore);
    DropRepeated();
    const std::vector<std::size_t> faults = FindFaults(entries_);
    VELListVal<VELDyadCtxFinding> findings;
    int fault = 0;
    for (const std::size_t index : OrderByFault(faults)) {
        VELDyadCtxFinding& finding = entries_[index].finding;
        if (faults[index] != index) {
            finding.severity = VELDyadCtxSeverity::Note;
            finding.cause = fault;
        } else if (silenced.Locate(finding.id) > 0) {
            continue;
        } else {
            fault = findings.Size() + 1;
        }
        findings.Append(std::move(finding));
    }
    entries_.clear();
    return findings;
}

void FindingList::SetPlaces(SourceReader& text) {
    std::vector<Spot> spots;
    for (const Entry& entry : entries_) {
        spots.push_back(entry.spot);
        for (const Related& related : entry.related)
            spots.push_back(related.spot);
    }
    const std::vector<SourceRange> ranges = FindRanges(spots, text);
    auto range = ranges.begin();
    for (Entry& entry : entries_) {
        entry.finding.place = range->begin;
        entry.finding.end = range->end;
        ++range;
        for (const Related& related : entry.related) {
            entry.finding.related.Append({related.text, range->begin, range->end});
            ++range;
        }
    }
}

} // namespace dyadctx
