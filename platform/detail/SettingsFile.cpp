#include "platform/detail/SettingsFile.h"

#include "platform/VELEnvironment.h"
#include "platform/VELFileSystem.h"
#include "platform/detail/FileReader.h"
#include "platform/detail/NativePath.h"
#include "platform/detail/Toml.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace dyadctx {

namespace {

constexpr std::string_view FileEnding = ".toml";
// Far more than settings need; nothing larger is taken into memory.
constexpr std::size_t LargestFile = std::size_t{4} << 20;

bool IsPlainName(std::string_view name) {
    return !name.empty() && name.find('\0') == std::string_view::npos &&
           std::none_of(name.begin(), name.end(), IsSeparator);
}

// False when reading fails or the file is larger than settings may be.
bool ReadAll(FileReader& file, std::string& content) {
    std::array<char, 16384> buffer;
    for (;;) {
        const std::int64_t got = file.Read(buffer.data(), buffer.size());
        if (got <= 0)
            return got == 0;
        content.append(buffer.data(), static_cast<std::size_t>(got));
        if (content.size() > LargestFile)
            return false;
    }
}

SettingsAnswer ReadContent(const VELUnicodeString& path, std::string& content,
                           std::string& reason) {
    if (path.IsEmpty() || VELFileAccess(path, 0) != 0) {
        reason = "the file does not exist";
        return SettingsAnswer::NoFile;
    }
    FileReader file;
    if (file.Open(path) && ReadAll(file, content))
        return SettingsAnswer::Found;
    reason = "the file cannot be read";
    return SettingsAnswer::NotReadable;
}

void SetPlace(SettingsEntry& entry, const toml::source_position& place) {
    entry.line = static_cast<int>(place.line);
    entry.column = static_cast<int>(place.column);
}

// Leaves in `entry` what keeps the file from being settings, or Found.
void ParseFile(const VELUnicodeString& path, toml::table& settings, SettingsEntry& entry) {
    std::string content;
    entry.answer = ReadContent(path, content, entry.reason);
    if (entry.answer != SettingsAnswer::Found)
        return;
    try {
        settings = toml::parse(std::string_view(content));
        return;
    } catch (const toml::parse_error& error) {
        SetPlace(entry, error.source().begin);
        entry.reason = error.description();
    } catch (const TomlFault&) {
        entry.reason = "the file is not TOML";
    }
    entry.answer = SettingsAnswer::Broken;
}

// The reason with its place.
std::string Describe(const SettingsEntry& entry) {
    if (entry.reason.empty() || entry.line == 0)
        return entry.reason;
    const bool isBroken = entry.answer == SettingsAnswer::Broken;
    return "line " + std::to_string(entry.line) +
           (isBroken ? ", column " + std::to_string(entry.column) : "") + ": " + entry.reason;
}

} // namespace

SettingsFolder FindSettingsFolder() {
    constexpr const char* variable = "VELSettingPath";
    const char* named = VELGetEnv(variable);
    if (named != nullptr && *named != '\0')
        return {VELUnicodeString(named), variable};
    return UserSettingsFolder();
}

VELUnicodeString SettingsFilePath(const VELUnicodeString& repository) {
    VELUnicodeString path = FindSettingsFolder().path;
    if (path.IsEmpty() || !IsPlainName(repository.AsView()))
        return {};
    path.Append("/").Append(repository).Append(FileEnding);
    return path;
}

SettingsAnswer CheckSettingsFile(const VELUnicodeString& path, std::string& reason) {
    toml::table settings;
    SettingsEntry entry;
    ParseFile(path, settings, entry);
    reason = Describe(entry);
    return entry.answer;
}

SettingsEntry FindSetting(const VELUnicodeString& path, const char* attribute) {
    toml::table settings;
    SettingsEntry entry;
    ParseFile(path, settings, entry);
    if (entry.answer != SettingsAnswer::Found)
        return entry;
    const toml::node* node = settings.get(attribute);
    if (node == nullptr) {
        entry.answer = SettingsAnswer::NoAttribute;
        entry.reason = "the attribute is not set";
        return entry;
    }
    SetPlace(entry, node->source().begin);
    if (const auto* text = node->as_string()) {
        entry.value = VELUnicodeString(std::string_view(text->get()));
        return entry;
    }
    entry.answer = SettingsAnswer::NotText;
    entry.reason = "the value is not a text";
    return entry;
}

SettingsAnswer ReadSettingsFile(const VELUnicodeString& path, const char* attribute,
                                VELUnicodeString& value, std::string& reason) {
    SettingsEntry entry = FindSetting(path, attribute);
    if (entry.answer == SettingsAnswer::Found)
        value = std::move(entry.value);
    else
        reason = Describe(entry);
    return entry.answer;
}

} // namespace dyadctx
