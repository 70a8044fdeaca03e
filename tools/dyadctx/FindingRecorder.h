// SPDX-License-Identifier: MIT
// What the library says while it loads a file, message by message.
#pragma once

#include "platform/VELMsgCatalog.h"
#include "trace/VELDyadCtxFinding.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace dyadctx::tool {

using Finding = VELDyadCtxFinding;
using Severity = VELDyadCtxSeverity;

// "error", "warning" or "note".
const char* NameOf(Severity severity);

// From construction to destruction notes the messages of the library's own catalog, in order and
// each once: the library may repeat one many times. The headings of a failed creation and the
// labels of parameter types are no findings.
class FindingRecorder : private VELMsgCatalogSource {
public:
    FindingRecorder();
    ~FindingRecorder() override;
    FindingRecorder(const FindingRecorder&) = delete;
    FindingRecorder& operator=(const FindingRecorder&) = delete;

    const std::vector<Finding>& Findings() const noexcept { return findings_; }

private:
    VELResult Build(const VELString& catalog, const VELString& key,
                    const VELUnicodeString* parameters, int count, VELUnicodeString& text) override;

    VELMsgCatalogSource* former_;
    std::vector<Finding> findings_;
    // What each of them says.
    std::unordered_set<std::string> said_;
};

// Whether the key is that of the heading of a failed creation, or of the label of a parameter type.
bool IsHeadingKey(std::string_view key);
bool IsLabelKey(std::string_view key);

// Whether the message says that no file was chosen or that the chosen one cannot be read.
bool IsAboutFileChoice(const Finding& finding);
// Whether it says that the file is no XML.
bool IsSyntaxError(const Finding& finding);

// "FILE:LINE:COLUMN: ", without what is not known.
std::string PlacePrefix(const std::string& file, const VELPlace& place);

// The id and the parameters: equal for findings that say the same.
std::string IdentityOf(const Finding& finding);

// The text, and for a consequence that it is one.
std::string MarkedText(const Finding& finding);

// "FILE:LINE:COLUMN: error: TEXT [KEY]" with the text on one line.
std::string FindingLine(const std::string& file, const std::string& severity,
                        const Finding& finding);

} // namespace dyadctx::tool
