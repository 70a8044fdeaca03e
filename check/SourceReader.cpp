// SPDX-License-Identifier: MIT
#include "check/detail/SourceReader.h"

#include "platform/detail/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace dyadctx {

namespace {

constexpr std::size_t PieceSize = std::size_t{64} << 10U;
constexpr char32_t FirstHighSurrogate = 0xD800;
constexpr char32_t FirstLowSurrogate = 0xDC00;
constexpr char32_t BehindSurrogates = 0xE000;
constexpr char32_t FirstSupplementary = 0x10000;

bool BeginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

bool BeginsSupplementary(char byte) {
    return static_cast<unsigned char>(byte) >= 0xF0U;
}

bool EndsLine(char byte) {
    return byte == '\n' || byte == '\r';
}

// Whether the XML declaration names the encoding in which each byte is a character.
bool DeclaresLatin1(std::string_view start) {
    constexpr std::string_view Name = "iso-8859-1";
    const std::string_view declaration = start.substr(0, start.find("?>"));
    return start.starts_with("<?xml") &&
           std::search(declaration.begin(), declaration.end(), Name.begin(), Name.end(),
                       [](char left, char right) {
                           return left == right ||
                                  (left >= 'A' && left <= 'Z' && left - 'A' + 'a' == right);
                       }) != declaration.end();
}

} // namespace

SourceReader::SourceReader(const VELUnicodeString& file) : isFile_(file_.Open(file)) {
    if (isFile_)
        buffer_.resize(PieceSize);
}

SourceReader::SourceReader(std::string_view text) : unread_(text) {}

void SourceReader::Pass() noexcept {
    const char byte = piece_[at_++];
    if (EndsLine(byte)) {
        // A line feed after a carriage return belongs to the same line end.
        if (byte == '\r' || !isAfterReturn_)
            ++line_;
        StartLine();
        isAfterReturn_ = byte == '\r';
        return;
    }
    isAfterReturn_ = false;
    const int characters = BeginsCharacter(byte) ? 1 : 0;
    column_ += characters;
    if (encoding_ == Encoding::Utf8)
        ++units_;
    else
        units_ += BeginsSupplementary(byte) ? 2 : characters;
}

void SourceReader::StartLine() noexcept {
    column_ = 1;
    units_ = 1;
}

bool SourceReader::MoveTo(VELPlace place) {
    MoveToLine(place.line);
    while (line_ == place.line && units_ < place.column && HasMore())
        Pass();
    // One unit may have become several bytes.
    while (encoding_ != Encoding::Utf8 && HasMore() && !BeginsCharacter(Next()))
        Pass();
    return line_ == place.line && units_ == place.column;
}

bool SourceReader::MoveToCharacter(VELPlace place) {
    MoveToLine(place.line);
    while (line_ == place.line && column_ < place.column && HasMore())
        Pass();
    return Here() == place;
}

void SourceReader::MoveToLine(int line) {
    while (line_ < line && HasMore())
        PassLine();
    if (isAfterReturn_ && HasMore() && Next() == '\n')
        Pass();
}

void SourceReader::PassLine() {
    const auto begin = piece_.begin() + static_cast<std::ptrdiff_t>(at_);
    at_ = static_cast<std::size_t>(std::find_if(begin, piece_.end(), EndsLine) - piece_.begin());
    if (at_ < piece_.size())
        Pass();
}

// False at the end of the text.
bool SourceReader::ReadPiece() {
    at_ = 0;
    do {
        std::string_view bytes = ReadBytes();
        if (bytes.empty()) {
            piece_ = {};
            return false;
        }
        if (isFirst_)
            bytes.remove_prefix(DetectEncoding(bytes));
        isFirst_ = false;
        Decode(bytes);
    } while (piece_.empty());
    return true;
}

// All but the last piece of a file have the full size.
std::string_view SourceReader::ReadBytes() {
    if (!isFile_)
        return std::exchange(unread_, {});
    bool failed = false;
    return {buffer_.data(), ReadFull(file_, buffer_.data(), buffer_.size(), failed)};
}

// The number of bytes of the byte order mark.
std::size_t SourceReader::DetectEncoding(std::string_view start) {
    using namespace std::string_view_literals;
    if (start.starts_with("\xFF\xFE"sv)) {
        encoding_ = Encoding::Utf16LittleEndian;
        return 2;
    }
    if (start.starts_with("\xFE\xFF"sv)) {
        encoding_ = Encoding::Utf16BigEndian;
        return 2;
    }
    if (start.starts_with("<\0"sv))
        encoding_ = Encoding::Utf16LittleEndian;
    else if (start.starts_with("\0<"sv))
        encoding_ = Encoding::Utf16BigEndian;
    else if (DeclaresLatin1(start))
        encoding_ = Encoding::Latin1;
    return start.starts_with("\xEF\xBB\xBF"sv) ? 3 : 0;
}

void SourceReader::Decode(std::string_view bytes) {
    if (encoding_ == Encoding::Utf8) {
        piece_ = bytes;
        return;
    }
    decoded_.clear();
    if (encoding_ == Encoding::Latin1) {
        for (const char byte : bytes)
            AppendCharacter(static_cast<unsigned char>(byte), decoded_);
    } else {
        const std::size_t high = encoding_ == Encoding::Utf16BigEndian ? 0 : 1;
        const auto byteAt = [bytes](std::size_t at) {
            return static_cast<char32_t>(static_cast<unsigned char>(bytes[at]));
        };
        for (std::size_t at = 0; at + 1 < bytes.size(); at += 2)
            DecodeUnit((byteAt(at + high) << 8U) | byteAt(at + 1 - high));
    }
    piece_ = decoded_;
}

void SourceReader::DecodeUnit(char32_t unit) {
    const char32_t high = std::exchange(highSurrogate_, U'\0');
    if (unit >= FirstHighSurrogate && unit < FirstLowSurrogate) {
        highSurrogate_ = unit;
    } else if (high != 0 && unit >= FirstLowSurrogate && unit < BehindSurrogates) {
        AppendCharacter(FirstSupplementary + ((high - FirstHighSurrogate) << 10U) +
                            (unit - FirstLowSurrogate),
                        decoded_);
    } else {
        AppendCharacter(unit, decoded_);
    }
}

} // namespace dyadctx
