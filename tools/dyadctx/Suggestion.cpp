// SPDX-License-Identifier: MIT
#include "tools/dyadctx/Suggestion.h"

#include "check/VELDyadCtxFileCheck.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Source.h"
#include "tools/dyadctx/Words.h"

namespace dyadctx::tool {

std::string Nearest(std::string_view word, const std::vector<std::string>& known) {
    VELListValVELUnicodeString names;
    for (const std::string& name : known)
        names.Append(VELUnicodeString(name));
    const VELUnicodeString found =
        VELDyadCtxFileCheck::GetNearestName(VELUnicodeString(word), names);
    return std::string(found.AsView());
}

std::string DidYouMean(std::string_view word, const std::vector<std::string>& known) {
    const std::string nearest = Nearest(word, known);
    return nearest.empty() ? "" : Words("did-you-mean", {Visible(nearest)});
}

Failure NoSuchContext(const std::string& name, const std::string& file,
                      const std::vector<std::string>& known) {
    return Failure(ExitStatus::NotFound,
                   Words("show.no-context", {Visible(name), Visible(file)}) +
                       DidYouMean(name, known) +
                       (IsDbContextEnvironmentOn() ? "" : Words("show.without-databases")));
}

} // namespace dyadctx::tool
