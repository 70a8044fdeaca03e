// A list of values. Positions run from 1 to Size(); the list owns copies of what is put into it.
//
// A position outside the list is harmless: reading it gives an empty value, writing through it is
// lost. Operations that need memory they cannot get throw std::bad_alloc and change nothing.
#pragma once

#include "platform/VELUnicodeString.h"

#include <cstddef>
#include <utility>
#include <vector>

// Its lists need platform/VELIDyadDbProvider.h as well.
class VELIDyadDbProvider_var;

template<class T>
class VELListVal {
public:
    // Adds at the end and gives the new size.
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

    // The reference is valid until the list next grows or shrinks.
    T& operator[](int pos) { return Holds(pos) ? values_[Index(pos)] : Scratch(); }
    const T& operator[](int pos) const { return Holds(pos) ? values_[Index(pos)] : Scratch(); }

    // The first position at or after `from` whose value equals `value`; 0 when there is none.
    int Locate(const T& value, int from = 1) const {
        for (int pos = from < 1 ? 1 : from; pos <= Size(); ++pos) {
            if (values_[Index(pos)] == value)
                return pos;
        }
        return 0;
    }

    // Removes one value; later ones move up. A position outside the list removes nothing.
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
