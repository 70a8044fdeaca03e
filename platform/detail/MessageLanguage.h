// SPDX-License-Identifier: MIT
// The languages in which to look up a text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dyadctx {

// The languages for a tag such as "fr_FR.UTF-8", "de-AT" or "ja", best first: the regional language
// (in both spellings, "de-AT" and "de_AT"), the language, English. For anything else ("C", "POSIX",
// a path) only English, so each entry is safe in a file name.
std::vector<std::string> LanguagesFor(std::string_view tag);

// The same without the final English fallback. Empty if the tag is invalid.
std::vector<std::string> OwnLanguagesOf(std::string_view tag);

// The tag requested by the environment: VELMessageLanguage, else the user's language on this
// system.
std::string RequestedLanguage();

} // namespace dyadctx
