// SPDX-License-Identifier: MIT
// Reads the characters and places of an XML source, even of a malformed one.
#pragma once

#include "platform/detail/XmlParser.h"
#include "platform/detail/XmlPositions.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace dyadctx {

struct XmlCharacter {
    // The byte itself if it is not UTF-8.
    std::uint32_t number = 0;
    bool isUtf8 = true;
    // Its first byte, and its place with columns counting characters.
    std::uint64_t offset = 0;
    DomPosition place;
};

class XmlCharacterReader {
public:
    XmlCharacterReader(XmlSource& source, bool isUtf8) noexcept
        : source_(source), isUtf8_(isUtf8) {}

    // False at the end or if the source cannot be read; `character` then has the place of the end.
    bool Next(XmlCharacter& character);
    // The place of a byte already read, as in XmlPositions; never before that of the last call.
    DomPosition PositionAt(std::uint64_t offset) noexcept { return positions_.At(offset); }

private:
    void Fill();
    std::size_t Decode(XmlCharacter& character) const noexcept;
    std::size_t DecodeUnit(XmlCharacter& character) const noexcept;
    std::uint32_t UnitAt(std::size_t index) const noexcept;

    static constexpr std::size_t PieceSize = std::size_t{64} << 10U;

    XmlSource& source_;
    bool isUtf8_;
    bool isAtEnd_ = false;
    std::unique_ptr<char[]> piece_ = std::make_unique<char[]>(PieceSize);
    std::size_t next_ = 0;
    std::size_t end_ = 0;
    std::uint64_t offset_ = 0;
    std::uint32_t line_ = 1;
    std::uint32_t column_ = 1;
    bool isAfterReturn_ = false;
    XmlPositions positions_;
};

} // namespace dyadctx
