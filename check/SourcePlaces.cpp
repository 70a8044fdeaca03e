// SPDX-License-Identifier: MIT
#include "check/detail/SourcePlaces.h"

#include "check/detail/SourceTokenizer.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace dyadctx {

namespace {

// Positions among the spots, in the order of the text.
std::vector<std::size_t> OrderOf(const std::vector<Spot>& spots) {
    std::vector<std::size_t> order(spots.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&spots](std::size_t left, std::size_t right) {
        return spots[left].element < spots[right].element;
    });
    return order;
}

// An empty range for a null place.
SourceRange OneCharacter(const VELPlace& place) {
    return {place, place.line > 0 ? VELPlace{place.line, place.column + 1} : VELPlace()};
}

class RangeSearch {
public:
    RangeSearch(const std::vector<Spot>& spots, SourceReader& reader)
        : spots_(spots), reader_(reader), tokenizer_(reader), ranges_(spots.size()) {}

    std::vector<SourceRange> Run() {
        const std::vector<std::size_t> order = OrderOf(spots_);
        for (auto begin = order.begin(); begin != order.end();) {
            const auto end = std::find_if(begin, order.end(), [&](std::size_t at) {
                return spots_[at].element != spots_[*begin].element;
            });
            PlaceElement({begin, end});
            begin = end;
        }
        return std::move(ranges_);
    }

private:
    // All spots of one element.
    void PlaceElement(std::span<const std::size_t> group) {
        const VELPlace element = spots_[group.front()].element;
        SourceRange range = OneCharacter(element);
        const bool isElement = element.line > 0 && reader_.MoveTo(element) && ReadElement(range);
        attributes_.clear();
        for (const std::size_t at : group) {
            ranges_[at] = range;
            if (spots_[at].attribute != nullptr)
                attributes_.emplace(spots_[at].attribute, range);
        }
        if (!isElement || attributes_.empty())
            return;
        PlaceAttributes();
        for (const std::size_t at : group) {
            if (spots_[at].attribute != nullptr)
                ranges_[at] = attributes_.at(spots_[at].attribute);
        }
    }

    // False where there is no element.
    bool ReadElement(SourceRange& range) {
        range = OneCharacter(reader_.Here());
        if (!tokenizer_.ReadElement(attribute_.name))
            return false;
        range.end = reader_.Here();
        return true;
    }

    void PlaceAttributes() {
        std::size_t sought = attributes_.size();
        while (sought > 0 && tokenizer_.ReadAttribute(attribute_)) {
            const auto found = attributes_.find(attribute_.name);
            if (found == attributes_.end())
                continue;
            found->second = {attribute_.place, reader_.Here()};
            --sought;
        }
    }

    const std::vector<Spot>& spots_;
    SourceReader& reader_;
    SourceTokenizer tokenizer_;
    std::vector<SourceRange> ranges_;
    // Of the current element.
    std::unordered_map<std::string_view, SourceRange> attributes_;
    SourceTokenizer::Attribute attribute_;
};

} // namespace

std::vector<SourceRange> FindRanges(const std::vector<Spot>& spots, SourceReader& reader) {
    return RangeSearch(spots, reader).Run();
}

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
