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

class PlaceSearch {
public:
    PlaceSearch(const std::vector<Spot>& spots, SourceReader& reader)
        : spots_(spots), reader_(reader), places_(spots.size()) {}

    std::vector<VELPlace> Run() {
        const std::vector<std::size_t> order = OrderOf(spots_);
        for (auto begin = order.begin(); begin != order.end();) {
            const auto end = std::find_if(begin, order.end(), [&](std::size_t at) {
                return spots_[at].element != spots_[*begin].element;
            });
            PlaceElement({begin, end});
            begin = end;
        }
        return std::move(places_);
    }

private:
    // All spots of one element.
    void PlaceElement(std::span<const std::size_t> group) {
        const VELPlace element = spots_[group.front()].element;
        const bool isFound = element.line > 0 && reader_.MoveTo(element);
        const VELPlace place = isFound ? reader_.Here() : element;
        attributes_.clear();
        for (const std::size_t at : group) {
            places_[at] = place;
            if (spots_[at].attribute != nullptr)
                attributes_.emplace(spots_[at].attribute, place);
        }
        if (!isFound || attributes_.empty())
            return;
        PlaceAttributes();
        for (const std::size_t at : group) {
            if (spots_[at].attribute != nullptr)
                places_[at] = attributes_.at(spots_[at].attribute);
        }
    }

    void PlaceAttributes() {
        SourceTokenizer tokenizer(reader_);
        std::size_t sought = attributes_.size();
        if (!tokenizer.ReadElement(attribute_.name))
            return;
        while (sought > 0 && tokenizer.ReadAttribute(attribute_)) {
            const auto found = attributes_.find(attribute_.name);
            if (found == attributes_.end())
                continue;
            found->second = attribute_.place;
            --sought;
        }
    }

    const std::vector<Spot>& spots_;
    SourceReader& reader_;
    std::vector<VELPlace> places_;
    // Of the element at hand.
    std::unordered_map<std::string_view, VELPlace> attributes_;
    SourceTokenizer::Attribute attribute_;
};

} // namespace

std::vector<VELPlace> FindPlaces(const std::vector<Spot>& spots, SourceReader& reader) {
    return PlaceSearch(spots, reader).Run();
}

} // namespace dyadctx
