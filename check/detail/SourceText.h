// The text of a file in which findings stand, to name their places exactly.
#pragma once

#include "check/detail/ContextPlaces.h"
#include "platform/VELUnicodeString.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace dyadctx {

// Places that come in count columns in bytes, places that go out in characters. Where the file
// cannot be read again, or is not made of bytes, a place stays as it is. Throws std::bad_alloc.
class SourceText {
public:
    explicit SourceText(const VELUnicodeString& file);
    // The text outlives the object.
    explicit SourceText(std::string_view text);

    VELPlace InCharacters(VELPlace place) const;
    // Where an attribute of the element at `element` begins; the element where it is not written
    // there.
    VELPlace OfAttribute(VELPlace element, std::string_view attribute) const;

private:
    static constexpr std::size_t Nowhere = static_cast<std::size_t>(-1);

    void Read(const VELUnicodeString& file);
    void Index();
    void FindLines();
    void CountCharacters();
    std::size_t OffsetOf(VELPlace place) const noexcept;
    VELPlace PlaceAt(std::size_t offset, int line) const noexcept;
    std::size_t CharactersBefore(std::size_t offset) const noexcept;
    std::size_t FindInTag(std::size_t tag, std::string_view attribute) const noexcept;

    std::unique_ptr<char[]> bytes_;
    // What was read of the file; empty where it is not made of bytes.
    std::string_view text_;
    std::vector<std::size_t> lines_;
    // The characters before each block of the text.
    std::vector<std::size_t> blocks_;
};

} // namespace dyadctx
