// Which languages to look for a text in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dyadctx {

// The languages for a tag such as "fr_FR.UTF-8", "de-AT" or "ja", best first: the language of the
// region (in both spellings, "de-AT" and "de_AT"), the language, English. What is no language tag
// ("C", "POSIX", a path) gives English alone, so each entry is safe as part of a file name.
std::vector<std::string> LanguagesFor(std::string_view tag);

// The same without the English at the end that stands in for a language without texts. Empty for
// what is no language tag.
std::vector<std::string> OwnLanguagesOf(std::string_view tag);

// The tag the environment asks for: VELMessageLanguage, else the language of the user's system.
std::string RequestedLanguage();

} // namespace dyadctx
