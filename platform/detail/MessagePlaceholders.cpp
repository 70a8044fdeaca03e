// SPDX-License-Identifier: MIT
#include "platform/detail/MessagePlaceholders.h"

#include <algorithm>
#include <cstddef>

namespace dyadctx {

namespace {

constexpr std::size_t PlaceholderSize = 3;

bool BeginsWithDoubledBrace(std::string_view text) {
    return text.size() >= 2 && text[0] == text[1];
}

// The number of the placeholder at the start of the text; -1 if none.
int PlaceholderNumber(std::string_view text) {
    if (text.size() < PlaceholderSize || text[0] != '{' || text[2] != '}')
        return -1;
    return text[1] >= '0' && text[1] <= '9' ? text[1] - '0' : -1;
}

} // namespace

VELUnicodeString FillPlaceholders(std::string_view text, const VELUnicodeString* parameters,
                                  int count) {
    const bool isFilled = parameters != nullptr || count <= 0;
    VELUnicodeString filled;
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find_first_of("{}"), text.size());
        filled.Append(text.substr(0, plain));
        text.remove_prefix(plain);
        const int number = isFilled ? PlaceholderNumber(text) : -1;
        std::size_t used = std::min<std::size_t>(text.size(), 1);
        if (BeginsWithDoubledBrace(text)) {
            filled.Append(text.substr(0, 1));
            used = 2;
        } else if (number >= 0) {
            if (number < count)
                filled.Append(parameters[number]);
            used = PlaceholderSize;
        } else {
            filled.Append(text.substr(0, used));
        }
        text.remove_prefix(used);
    }
    return filled;
}

} // namespace dyadctx
