// What the library says while it loads a file, message by message.
#pragma once

#include "platform/VELMsgCatalog.h"

#include <optional>
#include <string>
#include <vector>

namespace dyadctx::tool {

struct Finding {
    std::string key;
    std::vector<std::string> parameters;
    std::string text;
    // The context the message is about, where the message names one.
    std::optional<std::string> context;
};

// From construction to destruction notes the messages of the library's own catalog, in order. The
// headings of a failed creation and the labels of parameter types are no findings.
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
};

// Whether the message says that no file was chosen or that the chosen one cannot be read.
bool IsAboutFileChoice(const Finding& finding);

// "FILE: error: TEXT [KEY]" with the text on one line.
std::string FindingLine(const std::string& file, const std::string& severity,
                        const Finding& finding);

} // namespace dyadctx::tool
