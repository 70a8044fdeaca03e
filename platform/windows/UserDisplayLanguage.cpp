// SPDX-License-Identifier: MIT
#include "platform/detail/UserDisplayLanguage.h"

#include "platform/windows/WindowsApi.h"

namespace dyadctx {

std::string UserDisplayLanguage() {
    wchar_t name[LOCALE_NAME_MAX_LENGTH];
    const LCID locale = MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT);
    const int size = LCIDToLocaleName(locale, name, LOCALE_NAME_MAX_LENGTH, 0);
    return size > 0 ? Utf8Text(name) : std::string();
}

} // namespace dyadctx
