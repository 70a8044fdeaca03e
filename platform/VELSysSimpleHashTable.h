// A hash table of records it does not own, keyed by two functions of its user.
//
// Records keep the order in which they were inserted. Their table positions run from 0 to
// Size() - 1; a position whose record was removed is empty until the table next tidies up, which
// may move later records to lower positions.
#pragma once

#include "platform/VELExport.h"

#include <cstddef>
#include <memory>

class VELDYADCTX_EXPORT VELSysSimpleHashTable {
public:
    using HashFunction = unsigned int (*)(void* record);
    // Answers 1 when both records are equal, anything else when they are not.
    using CompareFunction = int (*)(void* first, void* second);

    // `initialSize` is a hint at how many records will come; memory is taken only as they do.
    VELSysSimpleHashTable(int initialSize, HashFunction hash, CompareFunction compare);
    VELSysSimpleHashTable(const VELSysSimpleHashTable&) = delete;
    VELSysSimpleHashTable& operator=(const VELSysSimpleHashTable&) = delete;
    // The records stay alive.
    ~VELSysSimpleHashTable();

    // 1 when the record was taken; 0 when an equal one is present (it stays) or the record is null.
    // May throw std::bad_alloc; the record is then not taken.
    int Insert(void* record);
    // The record equal to the probe, or null.
    void* Locate(void* probe) const;
    // The same, taken out of the table.
    void* Remove(void* probe);

    int Size() const noexcept;
    // The record at a table position; null when the position is empty or outside the table.
    void* Get(int position) const noexcept;

private:
    struct VELDYADCTX_LOCAL Storage;
    std::unique_ptr<Storage> storage_;
};
