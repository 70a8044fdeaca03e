// SPDX-License-Identifier: MIT
// Turns byte offsets in a file into lines and columns.
//
// Given the file in consecutive pieces, it keeps only line starts not yet passed by a query. Lines
// end with LF, CR LF or CR, as in XML. Columns count bytes, in UTF-16 code units; a byte order mark
// does not count.
#pragma once

#include "platform/detail/DomDocument.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace dyadctx {

// Both count from 1 and are limited to the largest int.
DomPosition LimitedPosition(std::uint64_t line, std::uint64_t column) noexcept;

class XmlPositions {
public:
    // Adds the next piece. The first has at least four bytes if the file does, and all but the last
    // an even length.
    void Add(const char* bytes, std::size_t count);
    // A place in the pieces added so far, never before that of the last call.
    DomPosition At(std::uint64_t offset) noexcept;

    // The file's units: bytes, or UTF-16 code units.
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
    // Starts of later lines, from `next_` on.
    std::vector<std::uint64_t> starts_;
    std::size_t next_ = 0;
};

} // namespace dyadctx
