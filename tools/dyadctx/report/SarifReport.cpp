// SPDX-License-Identifier: MIT
#include "platform/VELDyadCtxVersion.h"
#include "tools/dyadctx/ContextFacts.h"
#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/explain/ExplanationPages.h"
#include "tools/dyadctx/report/Report.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <string_view>

namespace dyadctx::tool {

namespace {

constexpr const char* Version = "2.1.0";
constexpr const char* Schema =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/os/schemas/sarif-schema-2.1.0.json";
constexpr const char* Unexplained = "unexplained-failure";

bool IsPlain(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= '0' && letter <= '9') ||
           std::string_view("-._~/").find(letter) != std::string_view::npos;
}

bool IsSeparator(char letter) {
    return letter == '/' || letter == '\\';
}

// A relative reference for a relative path, so that the report means the same on another machine.
std::string UriOf(std::string_view path) {
    const bool hasDrive = path.size() > 2 && path[1] == ':' && IsSeparator(path[2]);
    std::string uri = path.starts_with('/') ? "file://" : hasDrive ? "file:///" : "";
    for (char letter : path) {
        if (letter == '\\')
            letter = '/';
        uri += IsPlain(letter) ? std::string(1, letter) : PercentEscape(letter);
    }
    return uri;
}

Json PhysicalLocation(const std::string& file, const VELPlace& place, const VELPlace& end) {
    Json location = {{"artifactLocation", {{"uri", UriOf(file)}}}};
    if (place.line > 0)
        location["region"] = {{"startLine", place.line},
                              {"startColumn", place.column},
                              {"endLine", end.line},
                              {"endColumn", end.column}};
    return location;
}

// A consequence is less than its kind. What is no kind of its own is a message of the library.
Severity UsualSeverity(const std::string& id) {
    for (const VELDyadCtxFindingKind& kind : FindingKinds()) {
        if (kind.id.AsView() == id)
            return kind.severity;
    }
    return Severity::Error;
}

// The kinds of findings that occur, each once, in the order in which they first do.
class Rules {
public:
    std::size_t IndexOf(const std::string& id) {
        const auto [place, isNew] = indexes_.try_emplace(id, indexes_.size());
        if (isNew)
            Add(id);
        return place->second;
    }
    const Json& AsJson() const noexcept { return rules_; }

private:
    void Add(const std::string& id) {
        Json rule = {{"id", id}};
        if (const Explanation* explanation = FindExplanation(id)) {
            rule["shortDescription"] = {{"text", explanation->Message()}};
            rule["fullDescription"] = {
                {"text", WithoutMarks(JoinedParagraphs(explanation->meaning))}};
            rule["help"] = {{"text", HelpText(*explanation)},
                            {"markdown", HelpMarkdown(*explanation)}};
        }
        rule["defaultConfiguration"] = {{"level", NameOf(UsualSeverity(id))}};
        rules_.push_back(std::move(rule));
    }

    std::map<std::string, std::size_t> indexes_;
    Json rules_ = Json::array();
};

Json RelatedLocations(const std::string& file, const Finding& finding) {
    Json locations = Json::array();
    for (int i = 1; i <= finding.related.Size(); ++i) {
        const VELDyadCtxRelatedPlace& related = finding.related[i];
        locations.push_back(
            {{"physicalLocation", PhysicalLocation(file, related.place, related.end)},
             {"message", {{"text", Visible(related.text.AsView())}}}});
    }
    return locations;
}

Json ResultOf(const std::string& file, const Finding& finding, Rules& rules) {
    Json result;
    const std::string id = ToText(finding.id);
    result["ruleId"] = id;
    result["ruleIndex"] = rules.IndexOf(id);
    result["level"] = NameOf(finding.severity);
    result["message"] = {{"text", Visible(MarkedText(finding))}};
    if (!file.empty()) {
        Json location = {{"physicalLocation", PhysicalLocation(file, finding.place, finding.end)}};
        if (finding.hasContext)
            location["logicalLocations"] =
                Json::array({{{"name", Visible(finding.context.AsView())}, {"kind", "element"}}});
        result["locations"] = Json::array({std::move(location)});
    }
    if (finding.related.Size() > 0)
        result["relatedLocations"] = RelatedLocations(file, finding);
    return result;
}

Finding SilentFailure(const CheckedFile& file) {
    Finding finding;
    finding.id = Unexplained;
    finding.text = VELUnicodeString(ReasonOfSilentFailure(file.source));
    return finding;
}

Json ResultsOf(const std::vector<CheckedFile>& files, Rules& rules) {
    Json results = Json::array();
    for (const CheckedFile& file : files) {
        for (const Finding& finding : file.findings)
            results.push_back(ResultOf(file.source.file, finding, rules));
        if (FailedSilently(file))
            results.push_back(ResultOf(file.source.file, SilentFailure(file), rules));
    }
    return results;
}

} // namespace

Json SarifReport(const std::vector<CheckedFile>& files, ExitStatus status) {
    Rules rules;
    Json results = ResultsOf(files, rules);
    Json run;
    run["tool"] = {
        {"driver", {{"name", "dyadctx"}, {"version", DYADCTX_VERSION}, {"rules", rules.AsJson()}}}};
    run["columnKind"] = "unicodeCodePoints";
    const bool hasRun = status != ExitStatus::NoFile && status != ExitStatus::Internal;
    run["invocations"] =
        Json::array({{{"executionSuccessful", hasRun}, {"exitCode", static_cast<int>(status)}}});
    run["results"] = std::move(results);
    return {{"$schema", Schema}, {"version", Version}, {"runs", Json::array({std::move(run)})}};
}

} // namespace dyadctx::tool
