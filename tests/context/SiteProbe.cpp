// SPDX-License-Identifier: MIT
// Goes through the operations of a table of sites, step by step, so that a test can read what the
// console trace says at each of them.
#include "context/VELDyadContext.h"

#include <cstdio>
#include <memory>

namespace {

void Step(const char* name) {
    std::printf("-- %s\n", name);
    std::fflush(stdout);
}

void End() {
    std::puts("end");
    std::fflush(stdout);
}

void UseTable(VELDyadContext& context) {
    VELIDyadDbProvider_var provider;
    VELListValVELUnicodeString sites;
    VELListValVELIDyadDbProvider_var providers;
    Step("add first");
    context.AddRecordInMultiSiteHash("srv", provider);
    Step("add its like");
    context.AddRecordInMultiSiteHash("srv", provider);
    Step("locate it");
    context.LocateInMultisiteHash("srv", provider);
    Step("locate none");
    context.LocateInMultisiteHash("other", provider);
    Step("list sites");
    context.GetListOfSites(sites);
    Step("ask for several");
    context.isContainsMultisites();
    Step("list providers");
    context.GetListOfMultisiteDbProvider(providers);
    Step("remove it");
    context.RemoveRecordFromMultiSiteHash("srv");
}

} // namespace

// The table of `target` goes out of use when `source` is assigned to it, the one of `source` is
// then shared by both: the records of either go with `target` only.
int main() {
    auto source = std::make_unique<VELDyadContext>("Source", "KRL", "Database");
    auto target = std::make_unique<VELDyadContext>("Target", "KRL", "Database");
    UseTable(*source);
    Step("add second");
    source->AddRecordInMultiSiteHash("second", {});
    Step("add displaced");
    target->AddRecordInMultiSiteHash("displaced", {});
    Step("assign");
    *target = *source;
    End();
    Step("delete source");
    source.reset();
    End();
    Step("delete target");
    target.reset();
    End();
    return 0;
}
