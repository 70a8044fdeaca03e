// The tables of sites a context holds on to.
//
// A table and its records belong to the contexts that share it; the last of them destroys both.
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
    // Tables an assignment put out of use. They go with the context, not earlier: what became of
    // their records would show otherwise.
    std::vector<Table> retired;

    // Puts another table in the place of the current one. Throws std::bad_alloc and then changes
    // nothing.
    void Replace(const Table& table);
};

} // namespace dyadctx
