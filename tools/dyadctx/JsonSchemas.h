// The JSON schemas of the documents that commands write with --format json. They are files of
// resources/schema, built into the tool.
#pragma once

#include <span>
#include <string_view>

namespace dyadctx::tool {

struct JsonSchema {
    // The command whose documents it describes.
    std::string_view command;
    // The schema as it stands in its file, with the ending line feed.
    std::string_view text;
};

// In alphabetical order of the commands.
std::span<const JsonSchema> JsonSchemas() noexcept;

} // namespace dyadctx::tool
