#include "check/detail/AttributePlaces.h"

#include "check/detail/SourceTokenizer.h"

#include <algorithm>

namespace dyadctx {

AttributePlaces::AttributePlaces(std::vector<ContextPlaces::Entry> elements, SourceReader& reader) {
    std::sort(elements.begin(), elements.end(),
              [](const ContextPlaces::Entry& left, const ContextPlaces::Entry& right) {
                  return left.second < right.second;
              });
    for (const auto& [context, place] : elements) {
        const std::size_t first = entries_.size();
        if (place.line > 0 && reader.MoveToCharacter(place))
            ReadElement(reader);
        ranges_.emplace(context, Range{first, entries_.size() - first});
    }
}

std::span<const AttributePlaces::Entry>
AttributePlaces::Find(const VELDyadContext* context) const noexcept {
    const auto found = ranges_.find(context);
    if (found == ranges_.end())
        return {};
    return std::span(entries_).subspan(found->second.first, found->second.count);
}

void AttributePlaces::ReadElement(SourceReader& reader) {
    SourceTokenizer tokenizer(reader);
    SourceTokenizer::Attribute attribute;
    if (!tokenizer.ReadElement(attribute.name))
        return;
    while (tokenizer.ReadAttribute(attribute))
        entries_.push_back({PositionOf(attribute.name), attribute.place});
}

std::size_t AttributePlaces::PositionOf(const std::string& name) {
    const auto found = std::find(names_.begin(), names_.end(), name);
    if (found != names_.end())
        return static_cast<std::size_t>(found - names_.begin());
    names_.push_back(name);
    return names_.size() - 1;
}

} // namespace dyadctx
