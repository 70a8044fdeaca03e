// SPDX-License-Identifier: MIT
#include "platform/detail/MessageLanguage.h"

#include "platform/VELEnvironment.h"
#include "platform/detail/UserDisplayLanguage.h"

#include <algorithm>

namespace dyadctx {

namespace {

constexpr const char* English = "en";

// Not std::isalpha, which depends on the locale: a tag is ASCII.
bool IsLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

bool AreLetters(std::string_view text) {
    return std::all_of(text.begin(), text.end(), IsLetter);
}

bool IsLanguage(std::string_view part) {
    return (part.size() == 2 || part.size() == 3) && AreLetters(part);
}

bool IsRegion(std::string_view part) {
    return (part.size() == 2 && AreLetters(part)) ||
           (part.size() == 3 && std::all_of(part.begin(), part.end(), IsDigit));
}

std::string Lower(std::string_view letters) {
    std::string text(letters);
    for (char& letter : text)
        letter = static_cast<char>(letter | 0x20);
    return text;
}

std::string Upper(std::string_view part) {
    std::string text(part);
    for (char& character : text)
        character = IsLetter(character) ? static_cast<char>(character & ~0x20) : character;
    return text;
}

// Removes and returns the next part of a tag.
std::string_view TakePart(std::string_view& tag) {
    const std::size_t end = std::min(tag.find_first_of("-_"), tag.size());
    const std::string_view part = tag.substr(0, end);
    tag.remove_prefix(std::min(end + 1, tag.size()));
    return part;
}

std::string_view FindRegion(std::string_view parts) {
    while (!parts.empty()) {
        const std::string_view part = TakePart(parts);
        if (IsRegion(part))
            return part;
    }
    return {};
}

} // namespace

std::vector<std::string> OwnLanguagesOf(std::string_view tag) {
    std::vector<std::string> languages;
    // Drops character set and modifier, as in "sr_RS.UTF-8@latin".
    tag = tag.substr(0, tag.find_first_of(".@"));
    const std::string_view first = TakePart(tag);
    if (IsLanguage(first)) {
        const std::string language = Lower(first);
        const std::string region = Upper(FindRegion(tag));
        if (!region.empty()) {
            languages.push_back(language + "-" + region);
            languages.push_back(language + "_" + region);
        }
        languages.push_back(language);
    }
    return languages;
}

std::vector<std::string> LanguagesFor(std::string_view tag) {
    std::vector<std::string> languages = OwnLanguagesOf(tag);
    if (languages.empty() || languages.back() != English)
        languages.emplace_back(English);
    return languages;
}

std::string RequestedLanguage() {
    const char* value = VELGetEnv("VELMessageLanguage");
    if (value != nullptr && *value != '\0')
        return value;
    return UserDisplayLanguage();
}

} // namespace dyadctx
