// SPDX-License-Identifier: MIT
// A hash table of records it does not own, using the caller's hash and compare functions.
//
// Records keep insertion order, at table positions 0 to Size() - 1. The position of a removed
// record is empty until the table next compacts, which may move later records to lower positions.
#pragma once

#include "platform/VELExport.h"

#include <cstddef>
#include <memory>

class VELDYADCTX_EXPORT VELSysSimpleHashTable {
public:
    using HashFunction = unsigned int (*)(void* record);
    // Returns 1 when both records are equal, else anything else.
    using CompareFunction = int (*)(void* first, void* second);

    // `initialSize` is only a hint; memory is allocated as records are inserted.
    VELSysSimpleHashTable(int initialSize, HashFunction hash, CompareFunction compare);
    VELSysSimpleHashTable(const VELSysSimpleHashTable&) = delete;
    VELSysSimpleHashTable& operator=(const VELSysSimpleHashTable&) = delete;
    // Does not free the records.
    ~VELSysSimpleHashTable();

    // 1 when inserted; 0 when the record is null or an equal one is present, which stays. May throw
    // std::bad_alloc; nothing is then inserted.
    int Insert(void* record);
    // The record equal to `probe`, or null.
    void* Locate(void* probe) const;
    // Removes and returns the record equal to `probe`, or null.
    void* Remove(void* probe);

    int Size() const noexcept;
    // The record at a table position; null when it is empty or out of range.
    void* Get(int position) const noexcept;

private:
    struct VELDYADCTX_LOCAL Storage;
    std::unique_ptr<Storage> storage_;
};
