// SPDX-License-Identifier: MIT
// Paths and files that contexts name and that do not exist.
#include "check/detail/FileHints.h"

#include "collector/detail/CollectorAccess.h"
#include "context/detail/ParameterTypes.h"
#include "platform/VELFileSystem.h"
#include "trace/detail/FindingIds.h"
#include "xml/detail/ContextFileFormat.h"

#include <array>
#include <string_view>

namespace dyadctx {

namespace {

constexpr int Exists = 0;

const char* KindOf(const VELDyadContext& context) {
    const std::string_view type = context.GetParameterType().AsView();
    if (type == PathType)
        return id::MissingPath;
    return type == FileType ? id::MissingFile : nullptr;
}

} // namespace

void HintAtMissingTargets(VELDyadCtxCollector& collector, const ContextPlaces& places,
                          FindingList& findings) {
    const VELListPtrVELDyadContext& declared = CollectorAccess::Declared(collector);
    for (int pos = 1; pos <= declared.Size(); ++pos) {
        const VELDyadContext& context = *declared[pos];
        const char* kind = KindOf(context);
        if (kind == nullptr || context.GetParameter().IsEmpty() ||
            VELFileAccess(context.GetParameter(), Exists) == 0)
            continue;
        const std::array parameters{context.GetName(), context.GetParameter()};
        findings.AddAbout(context.GetName(), kind, parameters,
                          {*places.Find(&context), format::ParameterAttribute});
    }
}

} // namespace dyadctx
