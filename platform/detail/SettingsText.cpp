// SPDX-License-Identifier: MIT
#include "platform/detail/SettingsText.h"

#include "platform/detail/Toml.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

namespace dyadctx {

namespace {

using Kind = VELSettingRefusal::Kind;

VELSettingRefusal RefusalAt(Kind kind, std::string_view reason,
                            const toml::source_position& place = {}) {
    return {kind, VELUnicodeString(reason), static_cast<int>(place.line),
            static_cast<int>(place.column)};
}

VELSettingRefusal Parse(std::string_view text, toml::table& table) {
    try {
        table = toml::parse(text);
        return {};
    } catch (const toml::parse_error& error) {
        return RefusalAt(Kind::NotToml, error.description(), error.source().begin);
    } catch (const TomlFault&) {
        return RefusalAt(Kind::NotToml, "the file is not TOML");
    }
}

VELSettingRefusal NoAttribute(std::string_view name) {
    return RefusalAt(Kind::NoAttribute, std::string(name) + " is not set");
}

VELSetting SettingOf(std::string_view name, const toml::value<std::string>& value) {
    const toml::source_position place = value.source().begin;
    return {VELUnicodeString(name), VELUnicodeString(std::string_view(value.get())),
            static_cast<int>(place.line), static_cast<int>(place.column)};
}

// The byte offset of a line (from 1), after a byte order mark; the end of the text for lines after
// it.
std::size_t StartOfLine(std::string_view text, std::size_t line) {
    std::size_t pos = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    for (std::size_t i = 1; i < line; ++i) {
        const std::size_t end = text.find('\n', pos);
        if (end == std::string_view::npos)
            return text.size();
        pos = end + 1;
    }
    return pos;
}

// The byte offset of a place, whose column counts characters.
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

// Where a new attribute goes: after the last one, or without one before the first table, since what
// follows a table's heading belongs to it.
std::size_t PlaceOfNewLine(std::string_view text, const toml::table& table) {
    std::size_t lastLine = 0;
    for (const auto& [key, value] : table) {
        if (!value.is_table() && !value.is_array_of_tables())
            lastLine = std::max<std::size_t>(lastLine, value.source().end.line);
    }
    if (lastLine > 0)
        return StartOfLine(text, lastLine + 1);
    return table.empty() ? text.size() : StartOfLine(text, 1);
}

// Accepts the new text only if this attribute has that value (or is gone) and nothing else differs.
VELSettingRefusal Accept(std::string& text, std::string newText, std::string_view name,
                         const std::optional<std::string_view>& value) {
    toml::table before;
    toml::table after;
    Parse(text, before);
    if (!Parse(newText, after).IsRefusal()) {
        const bool asWanted = after.contains(name) == value.has_value() &&
                              after[name].value_exact<std::string_view>() == value;
        before.erase(name);
        after.erase(name);
        if (asWanted && before == after) {
            text.swap(newText);
            return {};
        }
    }
    return RefusalAt(Kind::NotAlone,
                     std::string(name) + " cannot be changed by itself; edit the file by hand");
}

bool IsText(std::string_view value) {
    toml::table table;
    return !Parse("a = " + Quoted(value), table).IsRefusal();
}

std::string WithNewLine(std::string_view text, const toml::table& table, std::string_view name,
                        std::string_view value) {
    const std::string lineBreak = LineBreakOf(text);
    const std::size_t place = PlaceOfNewLine(text, table);
    const bool unfinished = place > 0 && text[place - 1] != '\n';
    const std::string key = IsBareKey(name) ? std::string(name) : Quoted(name);
    return std::string(text).insert(place, (unfinished ? lineBreak : "") + key + " = " +
                                               Quoted(value) + lineBreak);
}

} // namespace

VELSettingRefusal CheckSettings(std::string_view text) {
    toml::table table;
    return Parse(text, table);
}

VELSettingRefusal ReadSetting(std::string_view text, std::string_view name, VELSetting& setting) {
    toml::table table;
    VELSettingRefusal refusal = Parse(text, table);
    if (refusal.IsRefusal())
        return refusal;
    const toml::node* node = table.get(name);
    if (node == nullptr)
        return NoAttribute(name);
    if (const auto* found = node->as_string()) {
        setting = SettingOf(name, *found);
        return {};
    }
    std::ostringstream reason;
    reason << name << " is no text (it is of the type " << node->type() << ")";
    return RefusalAt(Kind::NotText, reason.str(), node->source().begin);
}

VELSettingRefusal ListSettings(std::string_view text, VELListVal<VELSetting>& settings) {
    toml::table table;
    VELSettingRefusal refusal = Parse(text, table);
    if (refusal.IsRefusal())
        return refusal;
    std::vector<VELSetting> found;
    for (const auto& [key, value] : table) {
        if (const auto* attribute = value.as_string())
            found.push_back(SettingOf(key.str(), *attribute));
    }
    std::sort(found.begin(), found.end(), [](const VELSetting& one, const VELSetting& other) {
        return std::pair(one.line, one.column) < std::pair(other.line, other.column);
    });
    VELListVal<VELSetting> listed;
    for (VELSetting& setting : found)
        listed.Append(std::move(setting));
    settings = std::move(listed);
    return {};
}

VELSettingRefusal SetSetting(std::string& text, std::string_view name, std::string_view value) {
    toml::table table;
    VELSettingRefusal refusal = Parse(text, table);
    if (refusal.IsRefusal())
        return refusal;
    if (!IsText(name) || !IsText(value))
        return RefusalAt(Kind::BadValue, "it is no UTF-8 text");
    const toml::node* node = table.get(name);
    if (node == nullptr)
        return Accept(text, WithNewLine(text, table, name, value), name, value);
    const std::size_t from = OffsetOf(text, node->source().begin);
    const std::size_t to = OffsetOf(text, node->source().end);
    std::string newText = text;
    newText.replace(from, to - from, Quoted(value));
    return Accept(text, std::move(newText), name, value);
}

VELSettingRefusal RemoveSetting(std::string& text, std::string_view name) {
    toml::table table;
    VELSettingRefusal refusal = Parse(text, table);
    if (refusal.IsRefusal())
        return refusal;
    const auto entry = table.find(name);
    if (entry == table.end())
        return NoAttribute(name);
    const std::size_t from = StartOfLine(text, entry->first.source().begin.line);
    const std::size_t to = StartOfLine(text, entry->second.source().end.line + 1);
    std::string newText = text;
    newText.erase(from, to - from);
    return Accept(text, std::move(newText), name, std::nullopt);
}

} // namespace dyadctx
