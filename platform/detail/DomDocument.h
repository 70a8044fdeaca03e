// SPDX-License-Identifier: MIT
// The tree underlying the handles of platform/VELIXMLDOM.h.
//
// Everything lives in the document's arenas. In a child list, non-elements are null. Without
// memory, operations throw std::bad_alloc and leave the tree unchanged.
#pragma once

#include "platform/detail/DomArena.h"
#include "platform/detail/DomNames.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace dyadctx {

// Line and column in a file, from 1; 0 if unknown.
struct DomPosition {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

struct DomAttribute {
    std::uint32_t name;
    std::uint32_t length;
    // Values as short as most types, roles and ports are stored inline.
    union {
        const char* bytes;
        char shortBytes[sizeof(const char*)];
    };

    bool IsShort() const noexcept { return length <= sizeof shortBytes; }
    std::string_view Value() const noexcept { return {IsShort() ? shortBytes : bytes, length}; }
};

struct DomNode {
    enum Flag : std::uint32_t {
        // By CreateElement: has a parent pointer and no position.
        Created = 1,
        // Has a parent, or is the document element.
        Attached = 2,
        // A list that has grown has room up to a power of two; one that was read has none.
        GrownAttributes = 4,
        GrownChildren = 8,
    };

    DomAttribute* attributes = nullptr;
    DomNode** children = nullptr;
    std::uint32_t attributeCount = 0;
    std::uint32_t childCount = 0;
    std::uint32_t name = DomNames::None;
    std::uint32_t flags = 0;
    union Origin {
        DomPosition position{};
        DomNode* parent;
    } origin;

    bool Is(Flag flag) const noexcept { return (flags & flag) != 0; }
    DomPosition Position() const noexcept { return Is(Created) ? DomPosition{} : origin.position; }
};

// An attribute read from a file, its name as a number.
struct DomReadAttribute {
    std::uint32_t name;
    std::string_view value;
};

// A list of nodes in an arena.
struct DomNodeSpan {
    DomNode* const* nodes = nullptr;
    std::uint32_t length = 0;
};

// The siblings still to be walked.
struct DomSiblings {
    DomNode* const* next;
    DomNode* const* end;
};

class DomDocument {
public:
    // When making, chunks are large; when reading, they can be freed one by one.
    enum class Purpose { Scanning, Parsing, Making };
    explicit DomDocument(Purpose purpose)
        : purpose_(purpose), nodes_(ChunkFor(purpose)), bytes_(ChunkFor(purpose)) {}

    // Whether it was read by the scanner of plain documents rather than the parser.
    bool IsFromScanner() const noexcept { return purpose_ == Purpose::Scanning; }

    // Counted without locks: a document is used from one thread at a time.
    void AddReference() noexcept { ++references_; }
    void Release() noexcept {
        if (--references_ == 0)
            delete this;
    }

    const DomNames& Names() const noexcept { return names_; }
    DomNode* Root() const noexcept { return root_; }
    std::string_view TagName(const DomNode& node) const noexcept { return names_.Text(node.name); }
    // Roughly the length of the document as text, to reserve memory at once.
    std::size_t EstimatedTextSize() const noexcept { return estimatedTextSize_; }

    // Null if there is none.
    const DomAttribute* FindAttribute(const DomNode& node, std::string_view name) const noexcept;
    // The same by the name's number.
    static DomAttribute* FindAttribute(const DomNode& node, std::uint32_t name) noexcept {
        DomAttribute* end = node.attributes + node.attributeCount;
        for (DomAttribute* attribute = node.attributes; attribute != end; ++attribute) {
            if (attribute->name == name)
                return attribute;
        }
        return nullptr;
    }
    // The descendants of that name in document order; at most `atMost` when that is above 0.
    DomNodeSpan ElementsByTagName(const DomNode& node, std::string_view name, int atMost);

    // Making a document. Null or false for an invalid name, for a child that already has a parent,
    // and for a child that would be its own descendant.
    DomNode* CreateElement(std::string_view name);
    bool SetAttribute(DomNode& node, std::string_view name, std::string_view value);
    bool AppendChild(DomNode& parent, DomNode& child);
    bool AppendRoot(DomNode& root) noexcept;

    // Reading a document: the number of a name known to be valid, and an element with values known
    // to be valid. The first is the document element.
    std::uint32_t InternReadName(std::string_view name) { return names_.Intern(name); }
    DomNode* AddReadElement(std::uint32_t name, std::span<const DomReadAttribute> attributes,
                            DomPosition position);
    void SetReadChildren(DomNode& node, DomNode* const* children, std::uint32_t count);

    // Frees memory of elements that ended before `node` in a document that was read, and their
    // descendants. The caller holds no handle to them and requests none. Ancestors of `node` keep
    // their child lists but lose their names and attributes; the document may lose its document
    // element.
    void ForgetBefore(const DomNode& node) noexcept;

private:
    static std::size_t ChunkFor(Purpose purpose) noexcept {
        return purpose == Purpose::Making ? DomArena::LargeChunk : DomArena::ReusableChunk;
    }

    std::uint32_t InternValid(std::string_view name);
    DomNode* NewElement(std::uint32_t name);
    void SetValue(DomAttribute& attribute, std::string_view value);
    template<class T>
    T* WithRoomForOneMore(T* items, std::uint32_t count, bool grown);

    Purpose purpose_;
    DomArena nodes_;
    DomArena bytes_;
    // For each chunk of nodes, the first chunk of bytes its nodes may use.
    std::vector<std::size_t> bytesOf_;
    std::size_t nodesForgotten_ = 0;
    std::size_t bytesForgotten_ = 0;
    DomNames names_;
    DomNode* root_ = nullptr;
    std::size_t estimatedTextSize_ = 0;
    std::size_t references_ = 0;
    // Reused because searches are many and short.
    std::vector<DomSiblings> open_;
    std::vector<DomNode*> found_;
};

} // namespace dyadctx
