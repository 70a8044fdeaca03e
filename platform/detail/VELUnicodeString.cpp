// SPDX-License-Identifier: MIT
#include "platform/VELUnicodeString.h"

#include "platform/detail/Utf8.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>

namespace {

constexpr unsigned char HeapMark = 0xFF;
// A long text is preceded by the number of bytes that fit there.
constexpr std::size_t HeaderSize = sizeof(std::size_t);
constexpr std::size_t MaxLength = INT_MAX;

char* AllocateText(std::size_t capacity) {
    if (capacity > MaxLength)
        throw std::bad_alloc();
    void* block = ::operator new(HeaderSize + capacity + 1);
    std::memcpy(block, &capacity, HeaderSize);
    return static_cast<char*>(block) + HeaderSize;
}

void FreeText(char* text) noexcept {
    ::operator delete(text - HeaderSize);
}

std::size_t CapacityOf(const char* text) noexcept {
    std::size_t capacity = 0;
    std::memcpy(&capacity, text - HeaderSize, HeaderSize);
    return capacity;
}

void CopyText(char* target, std::string_view text) noexcept {
    if (!text.empty())
        std::memcpy(target, text.data(), text.size());
    target[text.size()] = '\0';
}

} // namespace

VELUnicodeString::VELUnicodeString(const char* text)
    : VELUnicodeString(text != nullptr ? std::string_view(text) : std::string_view()) {}

VELUnicodeString::VELUnicodeString(const char* text, std::size_t length)
    : VELUnicodeString(text != nullptr ? std::string_view(text, length) : std::string_view()) {}

VELUnicodeString::VELUnicodeString(std::string_view text) {
    Assign(text);
}

VELUnicodeString VELUnicodeString::operator+(const VELUnicodeString& tail) const {
    VELUnicodeString result(*this);
    result.Append(tail);
    return result;
}

VELUnicodeString& VELUnicodeString::Append(const char* tail) {
    return tail != nullptr ? Append(std::string_view(tail)) : *this;
}

VELUnicodeString& VELUnicodeString::Append(std::string_view tail) {
    if (tail.empty())
        return *this;
    const std::string_view current = AsView();
    const std::size_t capacity = IsInline() ? InlineCapacity : CapacityOf(HeapData());
    if (tail.size() > capacity - current.size()) {
        AppendGrowing(tail);
        return *this;
    }
    const std::size_t length = current.size() + tail.size();
    char* data = IsInline() ? reinterpret_cast<char*>(bytes_) : HeapData();
    // The tail may be part of this text, but never overlaps the copy, which starts at its end.
    std::memcpy(data + current.size(), tail.data(), tail.size());
    if (IsInline())
        SetInlineLength(length);
    else
        SetHeap(data, length);
    return *this;
}

void VELUnicodeString::AppendGrowing(std::string_view tail) {
    const std::string_view current = AsView();
    if (tail.size() > MaxLength - current.size())
        throw std::bad_alloc();
    const std::size_t length = current.size() + tail.size();
    char* data = AllocateText(std::min(MaxLength, std::max(length, 2 * current.size())));
    CopyText(data, current);
    CopyText(data + current.size(), tail);
    Release();
    SetHeap(data, length);
}

int VELUnicodeString::GetLengthInChar() const noexcept {
    return dyadctx::CountCharacters(AsView());
}

unsigned int VELUnicodeString::ComputeHashKey() const noexcept {
    // FNV-1a, 32 bits.
    std::uint32_t key = 2166136261U;
    for (const char byte : AsView())
        key = (key ^ static_cast<unsigned char>(byte)) * 16777619U;
    return key;
}

int VELUnicodeString::SearchSubString(const VELUnicodeString& text, int from,
                                      Direction direction) const noexcept {
    const std::string_view whole = AsView();
    const std::string_view wanted = text.AsView();
    std::size_t offset = dyadctx::OffsetOfCharacter(whole, from);
    if (offset == std::string_view::npos || whole.find(wanted, offset) == std::string_view::npos)
        return -1;
    int found = -1;
    for (int position = from;; ++position) {
        if (dyadctx::BeginsWithCharacters(whole.substr(offset), wanted)) {
            found = position;
            if (direction == Forward)
                return found;
        }
        if (offset == whole.size())
            return found;
        offset += dyadctx::CharacterLength(whole.substr(offset));
    }
}

VELUnicodeString VELUnicodeString::ExtractSubString(int pos, int length) const {
    const std::string_view whole = AsView();
    const std::size_t start = dyadctx::OffsetOfCharacter(whole, pos);
    if (start == std::string_view::npos || length <= 0)
        return {};
    const std::string_view rest = whole.substr(start);
    return VELUnicodeString(rest.substr(0, dyadctx::OffsetOfCharacter(rest, length)));
}

void VELUnicodeString::SetHeap(char* data, std::size_t length) noexcept {
    data[length] = '\0';
    const auto length32 = static_cast<std::uint32_t>(length);
    std::memcpy(bytes_, &data, sizeof data);
    std::memcpy(bytes_ + sizeof(char*), &length32, sizeof length32);
    bytes_[InlineCapacity] = HeapMark;
}

void VELUnicodeString::Assign(std::string_view text) {
    if (text.size() <= InlineCapacity) {
        if (!text.empty())
            std::memcpy(bytes_, text.data(), text.size());
        SetInlineLength(text.size());
        return;
    }
    char* data = AllocateText(text.size());
    CopyText(data, text);
    SetHeap(data, text.size());
}

void VELUnicodeString::FreeHeap() noexcept {
    FreeText(HeapData());
}
