// SPDX-License-Identifier: MIT
// Lists of plain elements: untyped pointers (VELRawCollPV), positions (VELRawCollint), and the base
// of typed pointer lists. Positions run from 1 to Size(). A list never owns what its pointers point
// to.
#pragma once

#include <algorithm>
#include <cstddef>
#include <exception>
#include <vector>

struct VELCollec {
    // What RemoveAll does with the elements' storage.
    enum MemoryHandling { ReleaseMemory = 0, KeepMemory = 1 };
};

template<class E>
class VELRawColl {
public:
    // Reserves storage for `initialSize` elements; a negative number counts as 0. If that fails,
    // storage is allocated when needed.
    explicit VELRawColl(int initialSize = 0) {
        try {
            elements_.reserve(initialSize > 0 ? static_cast<std::size_t>(initialSize) : 0);
        } catch (const std::exception&) {
        }
    }
    VELRawColl(const VELRawColl&) = default;
    VELRawColl(VELRawColl&&) noexcept = default;
    VELRawColl& operator=(const VELRawColl&) = default;
    VELRawColl& operator=(VELRawColl&&) noexcept = default;
    virtual ~VELRawColl() = default;

    // Appends and returns the new size; 0 without memory.
    int Append(E element) noexcept {
        try {
            if (elements_.capacity() == 0)
                elements_.reserve(FewestElements);
            elements_.push_back(element);
        } catch (const std::exception&) {
            return 0;
        }
        return Size();
    }

    // Inserts at 1 to Size() + 1 and returns the position; 0 if out of range or without memory.
    int InsertAt(int pos, E element) noexcept {
        if (pos < 1 || pos > Size() + 1)
            return 0;
        try {
            elements_.insert(elements_.begin() + (pos - 1), element);
        } catch (const std::exception&) {
            return 0;
        }
        return pos;
    }

    // The first position at or after `from` holding `element`; 0 if none.
    int Locate(E element, int from = 1) const noexcept {
        const auto start = std::clamp(from, 1, Size() + 1) - 1;
        const auto found = std::find(elements_.begin() + start, elements_.end(), element);
        return found == elements_.end() ? 0 : static_cast<int>(found - elements_.begin()) + 1;
    }

    // Removes the first occurrence and returns its position; 0 if none.
    int RemoveValue(E element) noexcept {
        const int pos = Locate(element);
        RemovePosition(pos);
        return pos;
    }

    // Removes up to `count` elements from `pos` on and returns how many.
    int RemovePosition(int pos, unsigned int count) noexcept {
        if (!Holds(pos))
            return 0;
        const auto first = elements_.begin() + (pos - 1);
        const auto rest = static_cast<std::size_t>(elements_.end() - first);
        const auto removed = std::min<std::size_t>(count, rest);
        elements_.erase(first, first + static_cast<std::ptrdiff_t>(removed));
        return static_cast<int>(removed);
    }
    void RemovePosition(int pos) noexcept { RemovePosition(pos, 1U); }

    void RemoveAll(VELCollec::MemoryHandling mode) noexcept {
        elements_.clear();
        if (mode == VELCollec::ReleaseMemory)
            std::vector<E>().swap(elements_);
    }

    int Size() const noexcept { return static_cast<int>(elements_.size()); }

    // Out of range: a scratch slot of this list, cleared at each such use.
    E& operator[](int pos) noexcept {
        if (Holds(pos))
            return elements_[Index(pos)];
        scratch_ = E();
        return scratch_;
    }
    // Out of range: null or 0.
    E operator[](int pos) const noexcept { return Holds(pos) ? elements_[Index(pos)] : E(); }

    // 1 when the sizes or any elements differ, else 0.
    int operator!=(const VELRawColl& other) const noexcept {
        return elements_ == other.elements_ ? 0 : 1;
    }
    int operator==(const VELRawColl& other) const noexcept { return (*this != other) ? 0 : 1; }

private:
    // Fills the smallest block of common allocators, so that a short list needs one allocation.
    static constexpr std::size_t FewestElements = 3;

    static std::size_t Index(int pos) noexcept { return static_cast<std::size_t>(pos) - 1; }
    bool Holds(int pos) const noexcept { return pos >= 1 && pos <= Size(); }

    std::vector<E> elements_;
    E scratch_ = E();
};

using VELRawCollPV = VELRawColl<void*>;
using VELRawCollint = VELRawColl<int>;
