// SPDX-License-Identifier: MIT
#include "platform/detail/XmlPositions.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace dyadctx {

namespace {

const char* FindByte(const char* begin, const char* end, char byte) noexcept {
    if (begin == end)
        return end;
    const void* found = std::memchr(begin, byte, static_cast<std::size_t>(end - begin));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

std::uint32_t Limited(std::uint64_t value) noexcept {
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(value, INT_MAX));
}

} // namespace

DomPosition LimitedPosition(std::uint64_t line, std::uint64_t column) noexcept {
    return {Limited(line), Limited(column)};
}

void XmlPositions::Add(const char* bytes, std::size_t count) {
    if (added_ == 0)
        DetectUnits(reinterpret_cast<const unsigned char*>(bytes), count);
    ForgetPassed();
    if (units_ == Units::Bytes)
        AddBytes(bytes, bytes + count);
    else
        AddUnits(bytes, bytes + count);
    added_ += count;
}

DomPosition XmlPositions::At(std::uint64_t offset) noexcept {
    while (next_ < starts_.size() && starts_[next_] <= offset) {
        lineStart_ = starts_[next_++];
        ++line_;
    }
    const std::uint64_t bytes = offset > lineStart_ ? offset - lineStart_ : 0;
    return LimitedPosition(line_, (units_ == Units::Bytes ? bytes : bytes / 2) + 1);
}

void XmlPositions::DetectUnits(const unsigned char* bytes, std::size_t count) noexcept {
    const auto startsWith = [bytes, count](const std::initializer_list<unsigned char>& mark) {
        return count >= mark.size() && std::equal(mark.begin(), mark.end(), bytes);
    };
    if (startsWith({0xFF, 0xFE}) || startsWith({'<', 0}))
        units_ = Units::LittleEndian;
    else if (startsWith({0xFE, 0xFF}) || startsWith({0, '<'}))
        units_ = Units::BigEndian;
    if (startsWith({0xEF, 0xBB, 0xBF}))
        lineStart_ = 3;
    else if (startsWith({0xFF, 0xFE}) || startsWith({0xFE, 0xFF}))
        lineStart_ = 2;
}

void XmlPositions::ForgetPassed() {
    starts_.erase(starts_.begin(), starts_.begin() + static_cast<std::ptrdiff_t>(next_));
    next_ = 0;
}

void XmlPositions::AddBytes(const char* begin, const char* end) {
    const auto offsetAfter = [this, begin](const char* byte) {
        return added_ + static_cast<std::uint64_t>(byte - begin) + 1;
    };
    const char* feed = FindByte(begin, end, '\n');
    const char* carriageReturn = FindByte(begin, end, '\r');
    while (feed != end || carriageReturn != end) {
        if (feed < carriageReturn) {
            StartLineAfterFeed(offsetAfter(feed));
            feed = FindByte(feed + 1, end, '\n');
        } else {
            StartLineAfterReturn(offsetAfter(carriageReturn));
            carriageReturn = FindByte(carriageReturn + 1, end, '\r');
        }
    }
}

void XmlPositions::AddUnits(const char* begin, const char* end) {
    const int low = units_ == Units::LittleEndian ? 0 : 1;
    for (const char* unit = begin; end - unit >= 2; unit += 2) {
        if (unit[1 - low] != 0)
            continue;
        const std::uint64_t after = added_ + static_cast<std::uint64_t>(unit - begin) + 2;
        if (unit[low] == '\n')
            StartLineAfterFeed(after);
        else if (unit[low] == '\r')
            StartLineAfterReturn(after);
    }
}

void XmlPositions::StartLineAfterReturn(std::uint64_t offset) {
    starts_.push_back(offset);
    afterReturn_ = offset;
}

// In CR LF, the line end began with the CR.
void XmlPositions::StartLineAfterFeed(std::uint64_t offset) {
    const std::uint64_t unit = units_ == Units::Bytes ? 1 : 2;
    const bool isPair = afterReturn_ != 0 && afterReturn_ + unit == offset;
    if (isPair && next_ < starts_.size())
        starts_.back() = offset;
    else if (isPair)
        lineStart_ = offset;
    else
        starts_.push_back(offset);
}

} // namespace dyadctx
