// SPDX-License-Identifier: MIT
#include "tools/dyadctx/explain/ExplanationPages.h"

#include <nlohmann/json.hpp>

namespace dyadctx::tool {

namespace {

constexpr const char* Schema = "dyadctx/explain/1";

Json Summary(const Explanation& explanation) {
    return {{"key", explanation.key},
            {"group", explanation.IsOfCatalog() ? "catalog" : "own"},
            {"kind", explanation.Kind()},
            {"text", explanation.Message()}};
}

Json ExampleAsJson(const ExplanationExample& example) {
    return {{"role", example.role},       {"caption", example.Caption()},
            {"remark", example.remark},   {"language", example.language},
            {"options", example.options}, {"byProgram", example.byProgram},
            {"text", example.text}};
}

} // namespace

Json ExplanationAsJson(const Explanation& explanation) {
    Json json = Summary(explanation);
    json["parameters"] = explanation.parameters;
    json["meaning"] = JoinedParagraphs(explanation.meaning);
    json["advice"] = JoinedParagraphs(explanation.advice);
    json["examples"] = Json::array();
    for (const ExplanationExample& example : explanation.examples)
        json["examples"].push_back(ExampleAsJson(example));
    return {{"schema", Schema}, {"explanation", std::move(json)}};
}

Json KeysAsJson() {
    Json keys = Json::array();
    for (const Explanation& explanation : Explanations())
        keys.push_back(Summary(explanation));
    return {{"schema", Schema}, {"keys", std::move(keys)}};
}

} // namespace dyadctx::tool
