// SPDX-License-Identifier: MIT
// The text type of the whole interface: names, parameters, paths and messages.
//
// Holds UTF-8 bytes exactly as given, zero bytes included; nothing is normalised, trimmed or
// folded. Lengths and positions are in characters (code points), from 0; a byte that is not part of
// well-formed UTF-8 counts as one character.
//
// Texts of up to 15 bytes are stored inline, longer ones on the heap. Use one object from one
// thread at a time. Without memory, an operation throws std::bad_alloc and leaves its object
// unchanged.
#pragma once

#include "platform/VELExport.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

class VELDYADCTX_EXPORT VELUnicodeString {
public:
    enum Direction { Forward, Backward };

    VELUnicodeString() noexcept { SetInlineLength(0); }
    // Null gives the empty text.
    VELUnicodeString(const char* text);
    VELUnicodeString(const char* text, std::size_t length);
    explicit VELUnicodeString(std::string_view text);
    VELUnicodeString(const VELUnicodeString& other) {
        if (other.IsInline())
            CopyBytes(other);
        else
            Assign(other.AsView());
    }
    VELUnicodeString(VELUnicodeString&& other) noexcept { TakeBytes(other); }
    VELUnicodeString& operator=(const VELUnicodeString& other) {
        if (this != &other)
            *this = VELUnicodeString(other);
        return *this;
    }
    VELUnicodeString& operator=(VELUnicodeString&& other) noexcept {
        if (this == &other)
            return *this;
        Release();
        TakeBytes(other);
        return *this;
    }
    ~VELUnicodeString() { Release(); }

    bool operator==(const VELUnicodeString& other) const noexcept {
        return AsView() == other.AsView();
    }
    bool operator!=(const VELUnicodeString& other) const noexcept { return !(*this == other); }
    VELUnicodeString operator+(const VELUnicodeString& tail) const;

    // Appends; amortised constant time per byte. `tail` may be this object.
    VELUnicodeString& Append(const VELUnicodeString& tail) { return Append(tail.AsView()); }
    VELUnicodeString& Append(const char* tail);
    VELUnicodeString& Append(std::string_view tail);

    // The number of characters.
    int GetLengthInChar() const noexcept;
    bool IsEmpty() const noexcept { return AsView().empty(); }

    // The bytes, zero-terminated; valid until this object changes or is destroyed.
    const char* ConvertToChar() const noexcept { return AsView().data(); }
    std::string_view AsView() const noexcept {
        if (IsInline())
            return {reinterpret_cast<const char*>(bytes_), InlineCapacity - bytes_[InlineCapacity]};
        return {HeapData(), HeapLength()};
    }

    // Equal texts have equal keys, on every system and in every process.
    unsigned int ComputeHashKey() const noexcept;

    // The position of the first (Forward) or last (Backward) occurrence of `text` at or after
    // `from`; -1 if none.
    int SearchSubString(const VELUnicodeString& text, int from = 0,
                        Direction direction = Forward) const noexcept;

    // Up to `length` characters from position `pos`; only those inside the text.
    VELUnicodeString ExtractSubString(int pos, int length) const;

private:
    static constexpr std::size_t InlineCapacity = 15;

    bool IsInline() const noexcept { return bytes_[InlineCapacity] <= InlineCapacity; }
    void SetInlineLength(std::size_t length) noexcept {
        bytes_[length] = 0;
        bytes_[InlineCapacity] = static_cast<unsigned char>(InlineCapacity - length);
    }
    void CopyBytes(const VELUnicodeString& other) noexcept {
        std::memcpy(bytes_, other.bytes_, sizeof bytes_);
    }
    void TakeBytes(VELUnicodeString& other) noexcept {
        CopyBytes(other);
        other.SetInlineLength(0);
    }
    char* HeapData() const noexcept {
        char* data = nullptr;
        std::memcpy(&data, bytes_, sizeof data);
        return data;
    }
    std::uint32_t HeapLength() const noexcept {
        std::uint32_t length = 0;
        std::memcpy(&length, bytes_ + sizeof(char*), sizeof length);
        return length;
    }
    void SetHeap(char* data, std::size_t length) noexcept;
    void Assign(std::string_view text);
    void AppendGrowing(std::string_view tail);
    void Release() noexcept {
        if (!IsInline())
            FreeHeap();
    }
    void FreeHeap() noexcept;

    // Short: up to 15 bytes, then 15 minus their number, which doubles as the terminating zero of a
    // 15-byte text. Long: pointer, 32-bit length, and a last byte above 15.
    alignas(char*) unsigned char bytes_[InlineCapacity + 1];
};
