// SPDX-License-Identifier: MIT
#include "platform/PoFile.h"

#include <fstream>
#include <stdexcept>
#include <string_view>

namespace dyadctx::test {

namespace {

// The text of a quoted string: what is between its first and last quote.
std::string Unquoted(std::string_view line) {
    const std::size_t first = line.find('"');
    const std::size_t last = line.rfind('"');
    if (first == std::string_view::npos || last <= first)
        throw std::runtime_error("no quoted text: " + std::string(line));
    const std::string_view quoted = line.substr(first + 1, last - first - 1);
    std::string text;
    for (std::size_t i = 0; i < quoted.size(); ++i) {
        if (quoted[i] == '\\' && i + 1 < quoted.size()) {
            ++i;
            text += quoted[i] == 'n' ? '\n' : quoted[i];
        } else {
            text += quoted[i];
        }
    }
    return text;
}

bool BeginsWith(std::string_view line, std::string_view start) {
    return line.substr(0, start.size()) == start;
}

} // namespace

std::vector<PoEntry> ReadPoFile(const std::string& path) {
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    std::vector<PoEntry> entries;
    PoEntry entry;
    std::string* current = nullptr;
    const auto finish = [&] {
        if (!entry.context.empty())
            entries.push_back(entry);
        entry = PoEntry();
        current = nullptr;
    };
    for (std::string line; std::getline(file, line);) {
        if (line.empty()) {
            finish();
            continue;
        }
        if (BeginsWith(line, "#")) {
            entry.isCheckedFormat |=
                BeginsWith(line, "#,") && line.find("csharp-format") != line.npos;
            continue;
        }
        if (BeginsWith(line, "msgctxt "))
            current = &entry.context;
        else if (BeginsWith(line, "msgid "))
            current = &entry.original;
        else if (BeginsWith(line, "msgstr "))
            current = &entry.translation;
        if (current == nullptr)
            throw std::runtime_error("unexpected line: " + line);
        *current += Unquoted(line);
    }
    finish();
    return entries;
}

} // namespace dyadctx::test
