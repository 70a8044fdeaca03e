// SPDX-License-Identifier: MIT
#include "tools/dyadctx/ContextFacts.h"
#include "tools/dyadctx/report/Report.h"

#include <nlohmann/json.hpp>

namespace dyadctx::tool {

namespace {

constexpr const char* Schema = "dyadctx/check/1";

Json ToJson(const VELDyadCtxRelatedPlace& related) {
    return {{"text", ToText(related.text)},
            {"line", NumberOrNull(related.place.line)},
            {"column", NumberOrNull(related.place.column)}};
}

Json ToJson(const Finding& finding) {
    Json json;
    json["key"] = ToText(finding.id);
    json["parameters"] = Json::array();
    for (int i = 1; i <= finding.parameters.Size(); ++i)
        json["parameters"].push_back(ToText(finding.parameters[i]));
    json["severity"] = NameOf(finding.severity);
    json["cause"] = NumberOrNull(finding.cause);
    json["text"] = ToText(finding.text);
    json["context"] = finding.hasContext ? Json(ToText(finding.context)) : Json(nullptr);
    json["line"] = NumberOrNull(finding.place.line);
    json["column"] = NumberOrNull(finding.place.column);
    json["related"] = Json::array();
    for (int i = 1; i <= finding.related.Size(); ++i)
        json["related"].push_back(ToJson(finding.related[i]));
    return json;
}

Json ToJson(const CheckedFile& file) {
    const Source& source = file.source;
    Json json;
    json["file"] = source.file.empty() ? Json(nullptr) : Json(source.file);
    json["valid"] = source.collector != nullptr;
    json["message"] = source.message;
    json["findings"] = Json::array();
    for (const Finding& finding : file.findings)
        json["findings"].push_back(ToJson(finding));
    return json;
}

} // namespace

Json JsonReport(const std::vector<CheckedFile>& files) {
    Json document;
    document["schema"] = Schema;
    document["files"] = Json::array();
    for (const CheckedFile& file : files)
        document["files"].push_back(ToJson(file));
    return document;
}

} // namespace dyadctx::tool
