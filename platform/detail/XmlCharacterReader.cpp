// SPDX-License-Identifier: MIT
#include "platform/detail/XmlCharacterReader.h"

#include "platform/detail/FileReader.h"
#include "platform/detail/Utf8.h"

#include <cstring>
#include <string_view>

namespace dyadctx {

namespace {

constexpr std::size_t LongestCharacter = 4;
constexpr std::uint32_t ByteOrderMark = 0xFEFF;

} // namespace

bool XmlCharacterReader::Next(XmlCharacter& character) {
    if (end_ - next_ < LongestCharacter && !isAtEnd_)
        Fill();
    character = {0, true, offset_, {line_, column_}};
    if (next_ == end_)
        return false;
    const std::size_t length = Decode(character);
    next_ += length;
    offset_ += length;
    const bool isFeed = character.number == '\n';
    const bool isReturn = character.number == '\r';
    if (isReturn || (isFeed && !isAfterReturn_))
        ++line_;
    if (isReturn || isFeed)
        column_ = 1;
    else if (character.number != ByteOrderMark || character.offset != 0)
        ++column_;
    isAfterReturn_ = isReturn;
    return true;
}

void XmlCharacterReader::Fill() {
    std::memmove(piece_.get(), piece_.get() + next_, end_ - next_);
    end_ -= next_;
    next_ = 0;
    const std::size_t before = end_;
    // A second reading that fails is as good as the end: why the first one failed is known.
    bool failed = false;
    end_ += ReadFull(source_, piece_.get() + end_, PieceSize - end_, failed);
    isAtEnd_ = end_ < PieceSize;
    positions_.Add(piece_.get() + before, end_ - before);
}

std::size_t XmlCharacterReader::Decode(XmlCharacter& character) const noexcept {
    if (positions_.GetUnits() != XmlPositions::Units::Bytes && end_ - next_ >= 2)
        return DecodeUnit(character);
    const std::string_view rest(piece_.get() + next_, end_ - next_);
    const std::size_t length = isUtf8_ ? CharacterLength(rest) : 1;
    character.number = CharacterNumber(rest.substr(0, length));
    character.isUtf8 = !isUtf8_ || length > 1 || character.number < 0x80;
    return length;
}

// One or two UTF-16 code units.
std::size_t XmlCharacterReader::DecodeUnit(XmlCharacter& character) const noexcept {
    character.number = UnitAt(next_);
    const bool isFirstOfTwo = (character.number & 0xFC00U) == 0xD800U;
    if (!isFirstOfTwo || end_ - next_ < 4 || (UnitAt(next_ + 2) & 0xFC00U) != 0xDC00U)
        return 2;
    character.number =
        0x10000U + ((character.number & 0x3FFU) << 10U | (UnitAt(next_ + 2) & 0x3FFU));
    return 4;
}

std::uint32_t XmlCharacterReader::UnitAt(std::size_t index) const noexcept {
    const std::uint32_t first = static_cast<unsigned char>(piece_[index]);
    const std::uint32_t second = static_cast<unsigned char>(piece_[index + 1]);
    return positions_.GetUnits() == XmlPositions::Units::LittleEndian ? second << 8U | first
                                                                      : first << 8U | second;
}

} // namespace dyadctx
