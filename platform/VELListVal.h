// SPDX-License-Identifier: MIT
// A list of values at positions 1 to Size(); it owns copies of its elements.
//
// A position out of range is harmless: reading returns an empty value, writing is lost. Without
// memory, operations throw std::bad_alloc and change nothing.
#pragma once

#include "platform/VELUnicodeString.h"

#include <cstddef>
#include <utility>
#include <vector>

// Lists of these also need platform/VELIDyadDbProvider.h.
class VELIDyadDbProvider_var;

template<class T>
class VELListVal {
public:
    // Appends and returns the new size.
    int Append(const T& value) {
        values_.push_back(value);
        return Size();
    }
    int Append(T&& value) {
        values_.push_back(std::move(value));
        return Size();
    }

    int Size() const noexcept { return static_cast<int>(values_.size()); }
    void Reserve(int count) { values_.reserve(count > 0 ? static_cast<std::size_t>(count) : 0); }

    // Valid until the list next grows or shrinks.
    T& operator[](int pos) { return Holds(pos) ? values_[Index(pos)] : Scratch(); }
    const T& operator[](int pos) const { return Holds(pos) ? values_[Index(pos)] : Scratch(); }

    // The first position at or after `from` holding `value`; 0 if none.
    int Locate(const T& value, int from = 1) const {
        for (int pos = from < 1 ? 1 : from; pos <= Size(); ++pos) {
            if (values_[Index(pos)] == value)
                return pos;
        }
        return 0;
    }

    // Removes one value and moves later ones up; does nothing out of range.
    void RemovePosition(int pos) {
        if (Holds(pos))
            values_.erase(values_.begin() + (pos - 1));
    }
    void RemoveAll() noexcept { values_.clear(); }

private:
    static std::size_t Index(int pos) noexcept { return static_cast<std::size_t>(pos) - 1; }
    bool Holds(int pos) const noexcept { return pos >= 1 && pos <= Size(); }
    static T& Scratch() {
        thread_local T scratch;
        scratch = T();
        return scratch;
    }

    std::vector<T> values_;
};

using VELListValVELUnicodeString = VELListVal<VELUnicodeString>;
using VELListValVELIDyadDbProvider_var = VELListVal<VELIDyadDbProvider_var>;
