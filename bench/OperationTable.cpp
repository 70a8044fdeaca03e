// SPDX-License-Identifier: MIT
#include "bench/OperationTable.h"

#include "bench/operations/LibraryOperations.h"
#include "bench/peers/PeerOperations.h"

#include <algorithm>

namespace dyadctx::bench {

namespace {

OperationList MakeList() {
    OperationList list;
    AddCollectorOperations(list);
    AddLookupOperations(list);
    AddQueryOperations(list);
    if constexpr (DYADCTX_BENCH_STAGES)
        AddStageOperations(list);
    AddExpatOperations(list);
    if constexpr (DYADCTX_BENCH_LIBXML2)
        AddLibXml2Operations(list);
    if constexpr (DYADCTX_BENCH_PUGIXML) {
        AddPugiXmlOperations(list);
        AddHandWrittenOperations(list);
    }
    return list;
}

} // namespace

const OperationList& AllOperations() {
    static const OperationList list = MakeList();
    return list;
}

const OperationEntry* OperationNamed(std::string_view name) {
    const OperationList& list = AllOperations();
    const auto found = std::find_if(list.begin(), list.end(), [name](const OperationEntry& entry) {
        return entry.name == name;
    });
    return found == list.end() ? nullptr : &*found;
}

} // namespace dyadctx::bench
