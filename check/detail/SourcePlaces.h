// SPDX-License-Identifier: MIT
// The places of findings and of attributes in a source text.
#pragma once

#include "check/detail/ContextPlaces.h"
#include "check/detail/SourceReader.h"
#include "platform/VELPlace.h"

#include <cstddef>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace dyadctx {

// An element, at the place the parser reports, or one of its attributes. The attribute's name
// outlives the spot.
struct Spot {
    VELPlace element;
    const char* attribute = nullptr;
};

// From the first character to the one after the last.
struct SourceRange {
    VELPlace begin;
    VELPlace end;
};

// The range of each spot, in characters: the attribute with its value, or else the start of the
// element with its name, or else one character. If the text has changed, a range begins at the
// spot. Takes one pass through the text up to the last spot. Throws std::bad_alloc.
std::vector<SourceRange> FindRanges(const std::vector<Spot>& spots, SourceReader& reader);

// Where the attributes of contexts are written.
class AttributePlaces {
public:
    struct Entry {
        // Of the names below.
        std::size_t name;
        VELPlace place;
    };

    // `elements` are in characters. One pass through the text. Throws std::bad_alloc.
    AttributePlaces(std::vector<ContextPlaces::Entry> elements, SourceReader& reader);

    // In the order of the text; nothing for a context without an element.
    std::span<const Entry> Find(const VELDyadContext* context) const noexcept;
    const std::string& NameOf(const Entry& entry) const noexcept { return names_[entry.name]; }

private:
    struct Range {
        std::size_t first;
        std::size_t count;
    };

    void ReadElement(SourceReader& reader);
    std::size_t PositionOf(const std::string& name);

    std::vector<Entry> entries_;
    std::unordered_map<const VELDyadContext*, Range> ranges_;
    // A file has few different ones.
    std::vector<std::string> names_;
};

} // namespace dyadctx
