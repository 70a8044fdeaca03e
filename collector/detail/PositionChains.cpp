// SPDX-License-Identifier: MIT
#include "collector/detail/PositionChains.h"

#include <utility>

namespace dyadctx {

namespace {

constexpr std::size_t FewestSlots = 16;

} // namespace

void PositionChains::Reserve(int positions, int chains) {
    const auto wanted = static_cast<std::size_t>(chains);
    next_.reserve(static_cast<std::size_t>(positions));
    Resize(wanted + wanted / 2);
}

void PositionChains::Clear() noexcept {
    std::vector<Slot>().swap(slots_);
    std::vector<int>().swap(next_);
    chains_ = 0;
}

// Makes room for one more position in a new chain.
void PositionChains::MakeRoom() {
    if (next_.size() == next_.capacity())
        next_.reserve(std::max(FewestSlots, 2 * next_.size()));
    if (4 * (chains_ + 1) > 3 * slots_.size())
        Resize(slots_.size() + slots_.size() / 2);
}

void PositionChains::Resize(std::size_t slots) {
    if (slots_.size() >= std::max(slots, FewestSlots))
        return;
    std::vector<Slot> larger(std::max(slots, FewestSlots));
    for (const Slot& slot : slots_) {
        if (slot.IsFree())
            continue;
        std::size_t at = Home(slot.hash, larger.size());
        while (!larger[at].IsFree())
            at = at + 1 == larger.size() ? 0 : at + 1;
        larger[at] = slot;
    }
    slots_ = std::move(larger);
}

} // namespace dyadctx
