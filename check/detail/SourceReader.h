// SPDX-License-Identifier: MIT
// Reads the characters of a source text, each with its place.
#pragma once

#include "platform/VELPlace.h"
#include "platform/VELUnicodeString.h"
#include "platform/detail/FileReader.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace dyadctx {

// Reads a text in UTF-8, UTF-16 or ISO-8859-1 from its beginning, piece by piece, and converts it
// to UTF-8. Reads no more of a file than needed. Throws std::bad_alloc.
class SourceReader {
public:
    // A file that cannot be read is an empty text.
    explicit SourceReader(const VELUnicodeString& file);
    // The text outlives the reader.
    explicit SourceReader(std::string_view text);
    SourceReader(const SourceReader&) = delete;
    SourceReader& operator=(const SourceReader&) = delete;

    // The next byte of the text in UTF-8; call Next only if HasMore().
    bool HasMore() { return at_ < piece_.size() || ReadPiece(); }
    char Next() const noexcept { return piece_[at_]; }
    void Pass() noexcept;
    // The place of the next byte, in characters.
    VELPlace Here() const noexcept { return {line_, column_}; }

    // Advances to a place whose column counts as the parser does: bytes, or in UTF-16 units of two
    // bytes. False if there is no such place ahead; the reader may have advanced all the same.
    bool MoveTo(VELPlace place);
    // The same for a place in characters.
    bool MoveToCharacter(VELPlace place);

private:
    enum class Encoding { Utf8, Latin1, Utf16LittleEndian, Utf16BigEndian };

    bool ReadPiece();
    std::string_view ReadBytes();
    std::size_t DetectEncoding(std::string_view start);
    void Decode(std::string_view bytes);
    void DecodeUnit(char32_t unit);
    void PassLine();
    void MoveToLine(int line);
    void StartLine() noexcept;

    FileReader file_;
    // The last bytes read from the file.
    std::string buffer_;
    std::string_view unread_;
    bool isFile_ = false;
    bool isFirst_ = true;
    Encoding encoding_ = Encoding::Utf8;
    // The first half of a character in UTF-16 whose second half is in the next piece.
    char32_t highSurrogate_ = 0;

    std::string decoded_;
    std::string_view piece_;
    std::size_t at_ = 0;
    int line_ = 1;
    int column_ = 1;
    int units_ = 1;
    bool isAfterReturn_ = false;
};

} // namespace dyadctx
