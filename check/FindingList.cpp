#include "check/detail/FindingList.h"

#include "platform/detail/MessagePlaceholders.h"
#include "trace/detail/FindingIds.h"
#include "trace/detail/UserMessage.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace dyadctx {

namespace {

VELUnicodeString TextOf(const char* id, const FindingKind* kind,
                        std::span<const VELUnicodeString> parameters) {
    const VELUnicodeString* first = parameters.empty() ? nullptr : parameters.data();
    const int count = static_cast<int>(parameters.size());
    return kind != nullptr ? FillPlaceholders(kind->text, first, count)
                           : CatalogText(id, first, count);
}

VELPlace PlaceOfSpot(const Spot& spot, const SourceText& text) {
    return spot.attribute != nullptr ? text.OfAttribute(spot.element, spot.attribute)
                                     : text.InCharacters(spot.element);
}

void SetPlaces(FindingList::Entry& entry, const SourceText& text) {
    entry.finding.place = PlaceOfSpot(entry.spot, text);
    for (const FindingList::Related& related : entry.related)
        entry.finding.related.Append({related.text, PlaceOfSpot(related.spot, text)});
}

bool StandsBefore(const FindingList::Entry& left, const FindingList::Entry& right) {
    return left.finding.place < right.finding.place;
}

bool HaveSameParameters(const VELDyadCtxFinding& left, const VELDyadCtxFinding& right) {
    if (left.parameters.Size() != right.parameters.Size())
        return false;
    for (int pos = 1; pos <= left.parameters.Size(); ++pos) {
        if (!(left.parameters[pos] == right.parameters[pos]))
            return false;
    }
    return true;
}

bool SaysTheSame(const VELDyadCtxFinding& left, const VELDyadCtxFinding& right) {
    return left.place == right.place && left.id == right.id && HaveSameParameters(left, right);
}

// The entries of one place stand together; there are few of them.
bool IsSaid(const VELListVal<VELDyadCtxFinding>& findings, const VELDyadCtxFinding& finding) {
    for (int pos = findings.Size(); pos > 0; --pos) {
        const VELDyadCtxFinding& said = findings[pos];
        if (said.place != finding.place)
            return false;
        if (SaysTheSame(said, finding))
            return true;
    }
    return false;
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
    entry.finding.text.Append(FillPlaceholders(" Did you mean \"{0}\"?", &suggestion, 1));
    return entry;
}

void FindingList::LeaveOut(const VELListValVELUnicodeString& ids) {
    if (ids.Size() > 0)
        std::erase_if(entries_,
                      [&](const Entry& entry) { return ids.Locate(entry.finding.id) > 0; });
}

VELListVal<VELDyadCtxFinding> FindingList::Finish(const SourceText& text) {
    for (Entry& entry : entries_)
        SetPlaces(entry, text);
    std::stable_sort(entries_.begin(), entries_.end(), StandsBefore);
    VELListVal<VELDyadCtxFinding> findings;
    for (Entry& entry : entries_) {
        if (entry.finding.place == VELPlace() || !IsSaid(findings, entry.finding))
            findings.Append(std::move(entry.finding));
    }
    entries_.clear();
    return findings;
}

} // namespace dyadctx
