// SPDX-License-Identifier: MIT
#include "tools/dyadctx/FindingRecorder.h"

#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Words.h"
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

bool IsAboutContext(const Finding& finding) {
    return finding.parameters.Size() > 0 && std::find(AboutNoContext.begin(), AboutNoContext.end(),
                                                      finding.id.AsView()) == AboutNoContext.end();
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
    finding.id = VELUnicodeString(key.AsView());
    if (result >= 0)
        finding.text = text;
    for (int i = 0; parameters != nullptr && i < count; ++i)
        finding.parameters.Append(parameters[i]);
    finding.hasContext = IsAboutContext(finding);
    if (finding.hasContext)
        finding.context = finding.parameters[1];
    if (said_.insert(IdentityOf(finding)).second)
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
    const std::string_view id = finding.id.AsView();
    return id == key::XMLFileNotSet || id == key::XMLFileNotValid;
}

bool IsSyntaxError(const Finding& finding) {
    return finding.id.AsView() == key::XMLSyntaxError;
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

std::string PlacePrefix(const std::string& file, const VELPlace& place) {
    if (file.empty())
        return "";
    std::string prefix = Visible(file) + ":";
    for (const int number : {place.line, place.column}) {
        if (number > 0)
            prefix += std::to_string(number) + ":";
    }
    return prefix + " ";
}

std::string IdentityOf(const Finding& finding) {
    std::string identity(finding.id.AsView());
    for (int i = 1; i <= finding.parameters.Size(); ++i)
        identity.append(1, '\0').append(finding.parameters[i].AsView());
    return identity;
}

std::string MarkedText(const Finding& finding) {
    const std::string text(finding.text.AsView());
    return finding.cause > 0 ? Words("finding.consequence", {text}) : text;
}

std::string FindingLine(const std::string& file, const std::string& severity,
                        const Finding& finding) {
    return PlacePrefix(file, finding.place) + severity + ": " + Visible(MarkedText(finding)) +
           " [" + std::string(finding.id.AsView()) + "]";
}

} // namespace dyadctx::tool
