// The files of resources/explanations, built into the tool.
#pragma once

#include <span>
#include <string_view>

namespace dyadctx::tool {

struct ExplanationFile {
    // The key it explains.
    std::string_view key;
    // The file as it stands.
    std::string_view text;
};

// In alphabetical order of the keys.
std::span<const ExplanationFile> ExplanationFiles() noexcept;

} // namespace dyadctx::tool
