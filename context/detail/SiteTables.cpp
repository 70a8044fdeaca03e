// SPDX-License-Identifier: MIT
#include "context/detail/SiteTables.h"

#include "context/detail/DyadMultiSiteHashTableElement.h"

#include <algorithm>

namespace dyadctx {

namespace {

constexpr int InitialTableSize = 50;

void DestroyTable(VELSysSimpleHashTable* table) noexcept {
    for (int position = 0; position < table->Size(); ++position)
        delete static_cast<DyadMultiSiteHashTableElement*>(table->Get(position));
    delete table;
}

} // namespace

SiteTables::Table SiteTables::NewTable() {
    return Table(new VELSysSimpleHashTable(InitialTableSize,
                                           &DyadMultiSiteHashTableElement::GetHashKey,
                                           &DyadMultiSiteHashTableElement::Compare),
                 &DestroyTable);
}

void SiteTables::Replace(const Table& table) {
    if (table == current)
        return;
    const bool isKept = std::find(retired.begin(), retired.end(), current) != retired.end();
    if (current != nullptr && !isKept)
        retired.push_back(current);
    current = table;
}

} // namespace dyadctx
