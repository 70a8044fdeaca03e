// SPDX-License-Identifier: MIT
#include "platform/VELSysSimpleHashTable.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

struct Slot {
    void* record;
    unsigned int hash;
};

constexpr std::uint32_t NoSlot = UINT32_MAX;

} // namespace

struct VELSysSimpleHashTable::Storage {
    HashFunction hash;
    CompareFunction compare;
    // The records in insertion order; removed ones become null.
    std::vector<Slot> slots;
    std::size_t records = 0;
    // Open addressing with linear probing, holding slot numbers; a removed slot stays until the
    // next rebuild. The size is a power of two, at least twice the number of slots.
    std::vector<std::uint32_t> index;

    std::uint32_t Find(void* probe, unsigned int key) const;
    void Place(std::uint32_t slot);
    void MakeRoom();
    void Compact();
    void* RemoveSlot(std::uint32_t slot);
};

std::uint32_t VELSysSimpleHashTable::Storage::Find(void* probe, unsigned int key) const {
    if (index.empty())
        return NoSlot;
    const std::size_t mask = index.size() - 1;
    for (std::size_t at = key & mask; index[at] != NoSlot; at = (at + 1) & mask) {
        const Slot& slot = slots[index[at]];
        if (slot.record != nullptr && slot.hash == key && compare(probe, slot.record) == 1)
            return index[at];
    }
    return NoSlot;
}

void VELSysSimpleHashTable::Storage::Place(std::uint32_t slot) {
    const std::size_t mask = index.size() - 1;
    std::size_t at = slots[slot].hash & mask;
    while (index[at] != NoSlot)
        at = (at + 1) & mask;
    index[at] = slot;
}

// Makes room for one more slot; everything that may throw comes before any change.
void VELSysSimpleHashTable::Storage::MakeRoom() {
    if (slots.size() + 1 <= index.size() / 2) {
        if (slots.size() == slots.capacity())
            slots.reserve(2 * slots.size());
        return;
    }
    const std::size_t wanted = std::max<std::size_t>(4, 2 * slots.size());
    std::size_t size = 8;
    while (size < 2 * wanted)
        size *= 2;
    slots.reserve(wanted);
    index.assign(size, NoSlot);
    for (std::size_t slot = 0; slot < slots.size(); ++slot)
        Place(static_cast<std::uint32_t>(slot));
}

// Closes the gaps of removed records.
void VELSysSimpleHashTable::Storage::Compact() {
    std::erase_if(slots, [](const Slot& slot) { return slot.record == nullptr; });
    std::fill(index.begin(), index.end(), NoSlot);
    for (std::size_t slot = 0; slot < slots.size(); ++slot)
        Place(static_cast<std::uint32_t>(slot));
}

void* VELSysSimpleHashTable::Storage::RemoveSlot(std::uint32_t slot) {
    void* record = slots[slot].record;
    slots[slot].record = nullptr;
    --records;
    if (records < slots.size() / 2 || records == 0)
        Compact();
    return record;
}

VELSysSimpleHashTable::VELSysSimpleHashTable(int, HashFunction hash, CompareFunction compare)
    : storage_(std::make_unique<Storage>()) {
    storage_->hash = hash;
    storage_->compare = compare;
}

VELSysSimpleHashTable::~VELSysSimpleHashTable() = default;

int VELSysSimpleHashTable::Insert(void* record) {
    if (record == nullptr)
        return 0;
    const unsigned int key = storage_->hash(record);
    if (storage_->Find(record, key) != NoSlot)
        return 0;
    storage_->MakeRoom();
    storage_->slots.push_back({record, key});
    storage_->Place(static_cast<std::uint32_t>(storage_->slots.size() - 1));
    ++storage_->records;
    return 1;
}

void* VELSysSimpleHashTable::Locate(void* probe) const {
    const std::uint32_t slot = storage_->Find(probe, storage_->hash(probe));
    return slot == NoSlot ? nullptr : storage_->slots[slot].record;
}

void* VELSysSimpleHashTable::Remove(void* probe) {
    const std::uint32_t slot = storage_->Find(probe, storage_->hash(probe));
    return slot == NoSlot ? nullptr : storage_->RemoveSlot(slot);
}

int VELSysSimpleHashTable::Size() const noexcept {
    return static_cast<int>(storage_->slots.size());
}

void* VELSysSimpleHashTable::Get(int position) const noexcept {
    if (position < 0 || position >= Size())
        return nullptr;
    return storage_->slots[static_cast<std::size_t>(position)].record;
}
