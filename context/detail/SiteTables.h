// SPDX-License-Identifier: MIT
// The tables of sites a context holds.
//
// A table and its records belong to the contexts that share it; the last one destroys both.
#pragma once

#include "platform/VELSysSimpleHashTable.h"

#include <memory>
#include <vector>

namespace dyadctx {

struct SiteTables {
    using Table = std::shared_ptr<VELSysSimpleHashTable>;

    // A new, empty table. Throws std::bad_alloc.
    static Table NewTable();

    // The table in use; null when there is none.
    Table current;
    // Tables replaced by an assignment. Destroyed only with the context, as destroying their
    // records earlier would be visible.
    std::vector<Table> retired;

    // Replaces the current table. Throws std::bad_alloc and then changes nothing.
    void Replace(const Table& table);
};

} // namespace dyadctx
