#include "tools/dyadctx/FindingRecorder.h"

#include "tools/dyadctx/DisplayText.h"
#include "trace/VELDyadMessageKeys.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace dyadctx::tool {

namespace {

// The first parameter of any other message is the name of the context it is about.
constexpr std::array<std::string_view, 3> AboutNoContext{key::XMLFileNotValid, key::TagNotFound,
                                                         key::NotAValidTag};

bool IsFinding(std::string_view catalog, std::string_view name) {
    return catalog == key::Catalog && !IsHeadingKey(name) && !IsLabelKey(name);
}

std::optional<std::string> ContextOf(const Finding& finding) {
    const bool aboutNone = std::find(AboutNoContext.begin(), AboutNoContext.end(), finding.key) !=
                           AboutNoContext.end();
    if (aboutNone || finding.parameters.empty())
        return std::nullopt;
    return finding.parameters.front();
}

} // namespace

FindingRecorder::FindingRecorder() : former_(VELMsgCatalog::SetSource(this)) {}

FindingRecorder::~FindingRecorder() {
    VELMsgCatalog::SetSource(former_);
}

VELResult FindingRecorder::Build(const VELString& catalog, const VELString& key,
                                 const VELUnicodeString* parameters, int count,
                                 VELUnicodeString& text) {
    const VELResult result =
        VELMsgCatalog::BuiltInSource().Build(catalog, key, parameters, count, text);
    if (!IsFinding(catalog.AsView(), key.AsView()))
        return result;
    Finding finding;
    finding.key = key.AsView();
    if (result >= 0)
        finding.text = text.AsView();
    for (int i = 0; parameters != nullptr && i < count; ++i)
        finding.parameters.emplace_back(parameters[i].AsView());
    finding.context = ContextOf(finding);
    findings_.push_back(std::move(finding));
    return result;
}

bool IsHeadingKey(std::string_view key) {
    return key.starts_with(key::StepPrefix) && key.ends_with(key::StepSuffix) &&
           key != key::InternalError;
}

bool IsLabelKey(std::string_view key) {
    return key.starts_with(key::ParameterTypePrefix);
}

bool IsAboutFileChoice(const Finding& finding) {
    return finding.key == key::XMLFileNotSet || finding.key == key::XMLFileNotValid;
}

const char* NameOf(Severity severity) {
    switch (severity) {
    case Severity::Error:
        return "error";
    case Severity::Warning:
        return "warning";
    case Severity::Note:
        break;
    }
    return "note";
}

std::string PlacePrefix(const std::string& file, const FilePlace& place) {
    if (file.empty())
        return "";
    std::string prefix = Visible(file) + ":";
    if (place.line > 0)
        prefix += std::to_string(place.line) + ":" + std::to_string(place.column) + ":";
    return prefix + " ";
}

std::string FindingLine(const std::string& file, const std::string& severity,
                        const Finding& finding) {
    return PlacePrefix(file, finding.place) + severity + ": " + Visible(finding.text) + " [" +
           finding.key + "]";
}

} // namespace dyadctx::tool
