// SPDX-License-Identifier: MIT
#include "tools/dyadctx/Words.h"

#include "platform/VELMsgCatalog.h"

#include <new>

namespace dyadctx::tool {

std::string Words(std::string_view key, const std::vector<std::string>& parameters) {
    std::vector<VELUnicodeString> values;
    for (const std::string& parameter : parameters)
        values.emplace_back(parameter);
    const std::string name(key);
    const VELUnicodeString text =
        VELMsgCatalog::BuildMessage(VELMsgCatalog::OwnCatalog, name.c_str(), values.data(),
                                    static_cast<int>(values.size()), VELUnicodeString(name));
    // No text of the catalog is empty.
    if (text.IsEmpty())
        throw std::bad_alloc();
    return std::string(text.AsView());
}

std::string CountedWords(std::ptrdiff_t count, const std::string& key,
                         const std::string& parameter) {
    return Words(key + (count == 1 ? ".one" : ".many"), {std::to_string(count), parameter});
}

} // namespace dyadctx::tool
