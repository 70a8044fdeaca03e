#include "tools/dyadctx/Suggestion.h"

#include "check/VELDyadCtxFileCheck.h"
#include "tools/dyadctx/DisplayText.h"

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
    return nearest.empty() ? "" : "; did you mean '" + Visible(nearest) + "'?";
}

} // namespace dyadctx::tool
