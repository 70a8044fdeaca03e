// The text type of the whole interface: names, parameters, paths and messages.
//
// Holds UTF-8 bytes exactly as given; nothing is normalised, trimmed or folded. Zero bytes inside
// the text are kept and count. Lengths and positions are in characters (code points), from 0; a
// byte that is not part of well-formed UTF-8 counts as one character.
//
// Texts of up to 15 bytes live inside the object, longer ones in memory the object owns. One object
// is used from one thread at a time; different objects are independent. An operation that needs
// memory it cannot get throws std::bad_alloc and leaves its object as it was.
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

    // Adds at the end; amortised constant time per byte. The tail may be this very text.
    VELUnicodeString& Append(const VELUnicodeString& tail) { return Append(tail.AsView()); }
    VELUnicodeString& Append(const char* tail);
    VELUnicodeString& Append(std::string_view tail);

    // The number of characters.
    int GetLengthInChar() const noexcept;
    bool IsEmpty() const noexcept { return AsView().empty(); }

    // The bytes, ended by a zero byte; valid until this object changes or goes.
    const char* ConvertToChar() const noexcept { return AsView().data(); }
    std::string_view AsView() const noexcept {
        if (IsInline())
            return {reinterpret_cast<const char*>(bytes_), InlineCapacity - bytes_[InlineCapacity]};
        return {HeapData(), HeapLength()};
    }

    // Equal texts have equal keys, on every system and in every process.
    unsigned int ComputeHashKey() const noexcept;

    // The position of the first (Forward) or last (Backward) occurrence of `text` that begins at or
    // after `from`; -1 when there is none.
    int SearchSubString(const VELUnicodeString& text, int from = 0,
                        Direction direction = Forward) const noexcept;

    // Up to `length` characters from position `pos`; what lies outside the text is left out.
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

    // Up to 15 bytes of text, then 15 minus their number, which is also the ending zero of a text
    // of 15. Or: pointer, 32-bit length, and a last byte above 15.
    alignas(char*) unsigned char bytes_[InlineCapacity + 1];
};
