// The schemas of the context file. They are files of resources/schema, built into the tool.
#pragma once

#include <span>
#include <string_view>

namespace dyadctx::tool {

struct ContextSchema {
    // "rnc", "rng" and "xsd"; "catalog" for the catalog that tells where they stand.
    std::string_view kind;
    // The file as it stands, with the ending line feed.
    std::string_view text;
};

// The first is the one the others are made from.
std::span<const ContextSchema> ContextSchemas() noexcept;

} // namespace dyadctx::tool
