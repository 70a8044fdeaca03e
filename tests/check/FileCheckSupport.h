// SPDX-License-Identifier: MIT
// Checks of whole files, and what they find as text to compare.
#pragma once

#include "check/VELDyadCtxFileCheck.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::test {

// Runs a check over a document in a file of its own.
std::unique_ptr<VELDyadCtxFileCheck> CheckText(std::string_view document);
// The same for this content of CtxData, which begins at line 3.
std::unique_ptr<VELDyadCtxFileCheck> CheckLines(std::string_view contexts);

// "LINE:COLUMN ID" of each finding, in order.
std::vector<std::string> PlacesOf(const VELDyadCtxFileCheck& check);
// The same of the findings of one severity.
std::vector<std::string> PlacesOf(const VELDyadCtxFileCheck& check, VELDyadCtxSeverity severity);
// "LINE:COLUMN TEXT" of each related place of the first finding with that id.
std::vector<std::string> RelatedOf(const VELDyadCtxFileCheck& check, std::string_view id);
// The text of the first finding with that id; empty without one.
std::string TextOf(const VELDyadCtxFileCheck& check, std::string_view id);

} // namespace dyadctx::test
