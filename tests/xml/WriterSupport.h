// SPDX-License-Identifier: MIT
// Collectors made by hand, and what the writer makes of them.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "support/TemporaryFolder.h"

#include <memory>
#include <string>
#include <vector>

namespace dyadctx::test {

using CollectorPtr = std::unique_ptr<VELDyadCtxCollector>;

CollectorPtr EmptyCollector();
// Declares a context; the collector owns it.
VELDyadContext& Declare(VELDyadCtxCollector& collector, const std::string& name,
                        const std::string& parameter, const std::string& type);
VELIDyadDbProvider_var ProviderWith(const std::string& connector,
                                    const std::vector<std::string>& keys,
                                    const std::vector<std::string>& values);

// The code of Stream and what the target holds afterwards; "absent" when there is no such file.
struct Writing {
    VELResult result = 0;
    std::string text;
};
Writing Write(VELDyadCtxCollector& collector);
// Writes over a file with that content.
Writing WriteOver(VELDyadCtxCollector& collector, const std::string& former);

// The document with these lines in CtxData; an empty CtxData without lines.
std::string WrittenDocument(const std::vector<std::string>& lines);

} // namespace dyadctx::test
