// SPDX-License-Identifier: MIT
// The files of resources/ that are built into the tool.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::tool {

struct EmbeddedFile {
    std::string_view name;
    // The whole file, with the ending line feed.
    std::string_view text;
};
using EmbeddedFiles = std::span<const EmbeddedFile>;

// The JSON schemas of the documents that commands write with --format json, each under the name of
// its command, in alphabetical order.
EmbeddedFiles JsonSchemas() noexcept;
// The schemas of the context file: "rnc", from which the others are made, "rng" and "xsd";
// "catalog" for the catalog with their places.
EmbeddedFiles ContextSchemas() noexcept;
// The frames of the completion scripts, each under the name of its shell.
EmbeddedFiles CompletionFrames() noexcept;
// The explanations, each under the key it explains, in alphabetical order.
EmbeddedFiles ExplanationFiles() noexcept;

inline std::vector<std::string> NamesOf(EmbeddedFiles files) {
    std::vector<std::string> names;
    for (const EmbeddedFile& file : files)
        names.emplace_back(file.name);
    return names;
}

// Null when there is none of that name.
inline const EmbeddedFile* FindFile(EmbeddedFiles files, std::string_view name) noexcept {
    for (const EmbeddedFile& file : files) {
        if (file.name == name)
            return &file;
    }
    return nullptr;
}

} // namespace dyadctx::tool
