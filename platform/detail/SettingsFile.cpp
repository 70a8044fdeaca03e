#include "platform/detail/SettingsFile.h"

#include "platform/VELEnvironment.h"
#include "platform/VELFileSystem.h"
#include "platform/detail/FileReader.h"
#include "platform/detail/NativePath.h"
#include "platform/detail/Toml.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace dyadctx {

namespace {

constexpr std::string_view FileEnding = ".toml";
// Far more than settings need; nothing larger is taken into memory.
constexpr std::size_t LargestFile = std::size_t{4} << 20;

VELUnicodeString SettingsFolder() {
    const char* named = VELGetEnv("VELSettingPath");
    if (named != nullptr && *named != '\0')
        return VELUnicodeString(named);
    return DefaultSettingsFolder();
}

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

std::string Describe(const toml::parse_error& error) {
    const toml::source_position place = error.source().begin;
    return "line " + std::to_string(place.line) + ", column " + std::to_string(place.column) +
           ": " + std::string(error.description());
}

SettingsAnswer ParseFile(const VELUnicodeString& path, toml::table& settings, std::string& reason) {
    std::string content;
    const SettingsAnswer answer = ReadContent(path, content, reason);
    if (answer != SettingsAnswer::Found)
        return answer;
    try {
        settings = toml::parse(std::string_view(content));
        return SettingsAnswer::Found;
    } catch (const toml::parse_error& error) {
        reason = Describe(error);
    } catch (const TomlFault&) {
        reason = "the file is not TOML";
    }
    return SettingsAnswer::Broken;
}

} // namespace

VELUnicodeString SettingsFilePath(const VELUnicodeString& repository) {
    const VELUnicodeString folder = SettingsFolder();
    if (folder.IsEmpty() || !IsPlainName(repository.AsView()))
        return {};
    VELUnicodeString path(folder);
    path.Append("/").Append(repository).Append(FileEnding);
    return path;
}

SettingsAnswer CheckSettingsFile(const VELUnicodeString& path, std::string& reason) {
    toml::table settings;
    return ParseFile(path, settings, reason);
}

SettingsAnswer ReadSettingsFile(const VELUnicodeString& path, const char* attribute,
                                VELUnicodeString& value, std::string& reason) {
    toml::table settings;
    const SettingsAnswer answer = ParseFile(path, settings, reason);
    if (answer != SettingsAnswer::Found)
        return answer;
    const toml::node* node = settings.get(attribute);
    if (node == nullptr) {
        reason = "the attribute is not set";
        return SettingsAnswer::NoAttribute;
    }
    const auto* text = node->as_string();
    if (text == nullptr) {
        reason = "line " + std::to_string(node->source().begin.line) + ": the value is not a text";
        return SettingsAnswer::NotText;
    }
    value = VELUnicodeString(std::string_view(text->get()));
    return SettingsAnswer::Found;
}

} // namespace dyadctx
