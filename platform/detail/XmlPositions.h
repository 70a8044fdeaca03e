// Turns places in a file, counted in bytes, into lines and columns.
//
// Fed with the pieces of the file in turn, it remembers only the line starts that have not been
// asked about yet. Lines end with LF, CR LF or CR, as in XML. Columns count bytes, in UTF-16 code
// units; a byte order mark does not count.
#pragma once

#include "platform/detail/DomDocument.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace dyadctx {

// Both are counted from 1; what is larger than an int becomes the largest int.
DomPosition LimitedPosition(std::uint64_t line, std::uint64_t column) noexcept;

class XmlPositions {
public:
    // The next piece of the file. The first one holds at least four bytes if the file does, and all
    // but the last have an even length.
    void Add(const char* bytes, std::size_t count);
    // A place in the pieces added so far, never before the place of the last call.
    DomPosition At(std::uint64_t offset) noexcept;

    // What the file is made of: bytes, or units of UTF-16.
    enum class Units { Bytes, LittleEndian, BigEndian };
    Units GetUnits() const noexcept { return units_; }

private:
    void DetectUnits(const unsigned char* bytes, std::size_t count) noexcept;
    void ForgetPassed();
    void AddBytes(const char* begin, const char* end);
    void AddUnits(const char* begin, const char* end);
    void StartLineAfterReturn(std::uint64_t offset);
    void StartLineAfterFeed(std::uint64_t offset);

    Units units_ = Units::Bytes;
    std::uint64_t added_ = 0;
    std::uint64_t afterReturn_ = 0;
    std::uint64_t line_ = 1;
    std::uint64_t lineStart_ = 0;
    // Where later lines start, from `next_` on.
    std::vector<std::uint64_t> starts_;
    std::size_t next_ = 0;
};

} // namespace dyadctx
