// SPDX-License-Identifier: MIT
// Which positions of a list have a key: for each key the chain of its positions, ascending.
//
// Takes about 20 bytes per position and stores only hashes; the caller keeps the keys and says
// whether a position has one. Finding a chain, each step along it and appending take constant time,
// even when all keys are equal.
#pragma once

#include "platform/detail/Prefetch.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace dyadctx {

class PositionChains {
public:
    // The number of positions; the next one appended is Size() + 1.
    int Size() const noexcept { return static_cast<int>(next_.size()); }
    // Reserves for that many positions in that many chains.
    void Reserve(int positions, int chains);
    void Clear() noexcept;

    // Adds a position to the chain of its key. `hasKey` says whether an earlier position has the
    // key. Throws std::bad_alloc and then changes nothing.
    template<class HasKey>
    void Append(std::uint64_t hash, HasKey hasKey) {
        MakeRoom();
        Slot& slot = slots_[SlotOf(Short(hash), hasKey)];
        const int pos = Size() + 1;
        if (slot.IsFree()) {
            ++chains_;
            next_.push_back(pos);
            slot = {Short(hash), -pos};
            return;
        }
        next_.push_back(At(slot.Last()));
        At(slot.Last()) = pos;
        slot.end = pos;
    }
    // Adds a position that is in no chain.
    void AppendWithoutKey() { next_.push_back(0); }

    // The first and the last position of a chain; both 0 when there is no such chain.
    struct Ends {
        int first = 0;
        int last = 0;
    };
    template<class HasKey>
    Ends Find(std::uint64_t hash, HasKey hasKey) const {
        if (slots_.empty())
            return {};
        const Slot& slot = slots_[SlotOf(Short(hash), hasKey)];
        return {slot.IsAlone() ? slot.Last() : At(slot.Last()), slot.Last()};
    }
    // Prefetches for looking up or appending a key.
    void Prefetch(std::uint64_t hash) const noexcept {
        if (!slots_.empty())
            dyadctx::Prefetch(&slots_[Home(Short(hash), slots_.size())]);
    }
    // A position that probably is in the chain of a key; 0 without one.
    int Guess(std::uint64_t hash) const noexcept {
        if (slots_.empty())
            return 0;
        const Slot& slot = slots_[Home(Short(hash), slots_.size())];
        return slot.hash == Short(hash) ? slot.Last() : 0;
    }
    // The position after `pos` in its chain; 0 at the end.
    int Next(int pos) const noexcept { return At(pos) > pos ? At(pos) : 0; }

private:
    // The last position of a chain, negative when it is the only one, which saves most look-ups the
    // step to the first; 0 in a free slot.
    struct Slot {
        std::uint32_t hash = 0;
        int end = 0;

        bool IsFree() const noexcept { return end == 0; }
        bool IsAlone() const noexcept { return end <= 0; }
        int Last() const noexcept { return end < 0 ? -end : end; }
    };

    static std::uint32_t Short(std::uint64_t hash) noexcept {
        return static_cast<std::uint32_t>(hash >> 32);
    }
    int& At(int pos) noexcept { return next_[static_cast<std::size_t>(pos) - 1]; }
    int At(int pos) const noexcept { return next_[static_cast<std::size_t>(pos) - 1]; }

    static std::size_t Home(std::uint32_t hash, std::size_t slots) noexcept {
        return static_cast<std::size_t>((std::uint64_t{hash} * slots) >> 32);
    }

    // The slot of a key, or the free one where it belongs. There always is a free slot.
    template<class HasKey>
    std::size_t SlotOf(std::uint32_t hash, HasKey& hasKey) const {
        std::size_t at = Home(hash, slots_.size());
        while (!slots_[at].IsFree() && !(slots_[at].hash == hash && hasKey(slots_[at].Last())))
            at = at + 1 == slots_.size() ? 0 : at + 1;
        return at;
    }

    void MakeRoom();
    void Resize(std::size_t slots);

    std::vector<Slot> slots_;
    // Per position the next one of its chain; the last one leads back to the first. 0 if the
    // position is in none.
    std::vector<int> next_;
    std::size_t chains_ = 0;
};

} // namespace dyadctx
