#include "tools/dyadctx/SettingsText.h"

#include "platform/VELFileSystem.h"
#include "platform/VELSysSettingRepository.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/ExitStatus.h"

#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>

namespace dyadctx::tool {

namespace {

// The library takes nothing larger.
constexpr std::uintmax_t LargestFile = std::uintmax_t{4} << 20U;

std::string Place(const std::string& file, const toml::source_position& position) {
    return Visible(file) + ":" + std::to_string(position.line) + ":" +
           std::to_string(position.column) + ": ";
}

std::string FaultOf(const std::string& file, const toml::parse_error& error) {
    return Place(file, error.source().begin) + Visible(error.description());
}

toml::table TableOf(const std::string& file, const std::string& text) {
    toml::parse_result result = toml::parse(text);
    if (!result)
        throw Failure(ExitStatus::NotLoadable, FaultOf(file, result.error()));
    return std::move(result).table();
}

std::string ContentOf(const std::string& file) {
    VELFileInfo info;
    if (VELGetFileInfo(VELUnicodeString(file), info) != 0)
        return "";
    if ((info.mode & VELFileInfo::RegularFile) == 0)
        throw Failure(ExitStatus::NoFile, Visible(file) + " is not a regular file");
    std::error_code unknown;
    if (std::filesystem::file_size(file, unknown) > LargestFile)
        throw Failure(ExitStatus::NotLoadable, Visible(file) + " is too large for settings");
    std::ifstream stream(file, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    if (!stream.is_open() || stream.bad())
        throw Failure(ExitStatus::NoFile, Visible(file) + " cannot be read");
    return text;
}

// The byte at which a line begins (from 1); the end of the text for lines behind it.
std::size_t StartOfLine(std::string_view text, std::size_t line) {
    std::size_t pos = 0;
    for (std::size_t i = 1; i < line; ++i) {
        const std::size_t end = text.find('\n', pos);
        if (end == std::string_view::npos)
            return text.size();
        pos = end + 1;
    }
    return pos;
}

// The byte of a place; its column counts characters.
std::size_t OffsetOf(std::string_view text, const toml::source_position& position) {
    std::size_t pos = StartOfLine(text, position.line);
    for (std::size_t column = 1; column < position.column && pos < text.size(); ++column) {
        ++pos;
        while (pos < text.size() && (static_cast<unsigned char>(text[pos]) & 0xC0U) == 0x80U)
            ++pos;
    }
    return pos;
}

bool IsBareKey(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), [](unsigned char letter) {
        return letter < 0x80 && (std::isalnum(letter) != 0 || letter == '_' || letter == '-');
    });
}

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char letter : text) {
        const auto code = static_cast<unsigned char>(letter);
        if (letter == '"' || letter == '\\') {
            quoted += '\\';
            quoted += letter;
        } else if (code < 0x20 || code == 0x7F) {
            constexpr std::string_view digits = "0123456789ABCDEF";
            quoted += "\\u00";
            quoted += digits[code >> 4U];
            quoted += digits[code & 0xFU];
        } else {
            quoted += letter;
        }
    }
    return quoted + "\"";
}

std::string LineBreakOf(std::string_view text) {
    const std::size_t end = text.find('\n');
    const bool windows = end != std::string_view::npos && end > 0 && text[end - 1] == '\r';
    return windows ? "\r\n" : "\n";
}

// Where a further attribute goes: behind the last one; without one before the first table, since
// what follows a table's heading belongs to it.
std::size_t PlaceOfNewLine(std::string_view text, const toml::table& table) {
    std::size_t lastLine = 0;
    for (const auto& [key, value] : table) {
        if (!value.is_table() && !value.is_array_of_tables())
            lastLine = std::max<std::size_t>(lastLine, value.source().end.line);
    }
    if (lastLine > 0)
        return StartOfLine(text, lastLine + 1);
    return table.empty() ? text.size() : 0;
}

} // namespace

std::string SettingsFile() {
    VELUnicodeString file;
    if (VELSysSettingRepository::GetRepositoryFile(SettingsRepository, file) < 0)
        return "";
    return std::string(file.AsView());
}

SettingsText SettingsText::Read(const std::string& file) {
    return {file, ContentOf(file)};
}

SettingsText::SettingsText(std::string file, std::string text)
    : file_(std::move(file)), text_(std::move(text)) {
    TableOf(file_, text_);
}

std::vector<std::pair<std::string, std::string>> SettingsText::All() const {
    const toml::table table = TableOf(file_, text_);
    std::vector<std::pair<toml::source_position, std::pair<std::string, std::string>>> found;
    for (const auto& [key, value] : table) {
        if (const auto text = value.value_exact<std::string>())
            found.emplace_back(value.source().begin, std::pair(std::string(key.str()), *text));
    }
    std::sort(found.begin(), found.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::pair<std::string, std::string>> attributes;
    for (const auto& [position, attribute] : found)
        attributes.push_back(attribute);
    return attributes;
}

std::optional<std::string> SettingsText::Get(const std::string& name) const {
    const toml::table table = TableOf(file_, text_);
    const toml::node* node = table.get(name);
    if (node == nullptr)
        return std::nullopt;
    if (const auto text = node->value_exact<std::string>())
        return text;
    std::ostringstream type;
    type << node->type();
    throw Failure(ExitStatus::NotLoadable, Place(file_, node->source().begin) + Visible(name) +
                                               " is no text (it is of the type " + type.str() +
                                               "); the library takes texts only");
}

int SettingsText::LineOf(const std::string& name) const {
    const toml::table table = TableOf(file_, text_);
    const auto entry = table.find(name);
    return entry == table.end() ? 0 : static_cast<int>(entry->first.source().begin.line);
}

void SettingsText::Set(const std::string& name, const std::string& value) {
    const toml::table table = TableOf(file_, text_);
    std::string newText = text_;
    if (const toml::node* node = table.get(name)) {
        const std::size_t from = OffsetOf(text_, node->source().begin);
        const std::size_t to = OffsetOf(text_, node->source().end);
        newText.replace(from, to - from, Quoted(value));
    } else {
        const std::string lineBreak = LineBreakOf(text_);
        const std::size_t place = PlaceOfNewLine(text_, table);
        const bool unfinished = place > 0 && text_[place - 1] != '\n';
        const std::string key = IsBareKey(name) ? name : Quoted(name);
        newText.insert(place,
                       (unfinished ? lineBreak : "") + key + " = " + Quoted(value) + lineBreak);
    }
    Accept(name, value, newText);
}

bool SettingsText::Unset(const std::string& name) {
    const toml::table table = TableOf(file_, text_);
    const auto entry = table.find(name);
    if (entry == table.end())
        return false;
    const std::size_t from = StartOfLine(text_, entry->first.source().begin.line);
    const std::size_t to = StartOfLine(text_, entry->second.source().end.line + 1);
    std::string newText = text_;
    newText.erase(from, to - from);
    Accept(name, std::nullopt, newText);
    return true;
}

void SettingsText::Accept(const std::string& name, const std::optional<std::string>& value,
                          const std::string& newText) {
    toml::table before = TableOf(file_, text_);
    toml::parse_result parsed = toml::parse(newText);
    if (parsed) {
        toml::table after = std::move(parsed).table();
        const bool asWanted = after.contains(name) == value.has_value() &&
                              after[name].value_exact<std::string>() == value;
        before.erase(name);
        after.erase(name);
        if (asWanted && before == after) {
            text_ = newText;
            return;
        }
    }
    throw Failure(ExitStatus::NotWritten, Visible(name) + " cannot be changed by itself in " +
                                              Visible(file_) + "; edit the file by hand");
}

} // namespace dyadctx::tool
