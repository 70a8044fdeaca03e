#include "tools/dyadctx/Words.h"

#include "platform/VELMsgCatalog.h"
#include "trace/VELDyadMessageKeys.h"

#include <new>

namespace dyadctx::tool {

std::string Words(std::string_view key, const std::vector<std::string>& parameters) {
    std::vector<VELUnicodeString> values;
    for (const std::string& parameter : parameters)
        values.emplace_back(parameter);
    const std::string name(key);
    const VELUnicodeString text =
        VELMsgCatalog::BuildMessage(key::OwnCatalog, name.c_str(), values.data(),
                                    static_cast<int>(values.size()), VELUnicodeString(name));
    // No text of the catalog is empty.
    if (text.IsEmpty())
        throw std::bad_alloc();
    return std::string(text.AsView());
}

} // namespace dyadctx::tool
