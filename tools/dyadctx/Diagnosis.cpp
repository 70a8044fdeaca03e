#include "tools/dyadctx/Diagnosis.h"

#include "platform/VELEnvironment.h"
#include "tools/dyadctx/Candidates.h"
#include "xml/VELDyadCtxFileCheck.h"

#include <algorithm>
#include <string_view>

namespace dyadctx::tool {

namespace {

constexpr const char* VariableKind = "variable-without-effect";
constexpr const char* VariableText = "The variable {0} is set, but has no effect: {1}.";
constexpr const char* InitVariable = "VELDyadCtxInit";
constexpr const char* RootsVariable = "VELInstallPath";
constexpr const char* EnvironmentVariable = "VELDbContextEnvironment";
constexpr const char* MultisiteVariable = "TE_MULTISITE_DBCONTEXT";

Severity SeverityOf(VELDyadCtxSeverity severity) {
    switch (severity) {
    case VELDyadCtxSeverity::Error:
        return Severity::Error;
    case VELDyadCtxSeverity::Warning:
        return Severity::Warning;
    case VELDyadCtxSeverity::Note:
        break;
    }
    return Severity::Note;
}

Finding ToFinding(const VELDyadCtxFinding& found) {
    Finding finding;
    finding.key = ToText(found.id);
    finding.severity = SeverityOf(found.severity);
    for (int i = 1; i <= found.parameters.Size(); ++i)
        finding.parameters.push_back(ToText(found.parameters[i]));
    finding.text = ToText(found.text);
    if (found.hasContext)
        finding.context = ToText(found.context);
    finding.place = {found.line, found.column};
    for (int i = 1; i <= found.related.Size(); ++i) {
        const VELDyadCtxRelatedPlace& related = found.related[i];
        finding.related.push_back({ToText(related.text), {related.line, related.column}});
    }
    return finding;
}

// False without memory.
bool RunCheck(const std::string& path, const DiagnosisOptions& options,
              std::vector<Finding>& findings) {
    VELDyadCtxFileCheck check;
    check.SetDeep(options.deep);
    for (const std::string& id : options.silenced)
        check.Silence(VELUnicodeString(id));
    if (check.Run(VELUnicodeString(path)) < 0)
        return false;
    for (int i = 1; i <= check.GetNbFindings(); ++i)
        findings.push_back(ToFinding(check.GetFindingAt(i)));
    return true;
}

std::string ValueOf(const char* variable) {
    const char* value = VELGetEnv(variable);
    return value != nullptr ? value : "";
}

void AddVariable(std::vector<Finding>& findings, const char* variable, const std::string& reason) {
    Finding finding;
    finding.key = VariableKind;
    finding.severity = Severity::Note;
    finding.parameters = {variable, reason};
    finding.text =
        std::string("The variable ") + variable + " is set, but has no effect: " + reason + ".";
    findings.push_back(std::move(finding));
}

void AddSourceVariables(std::vector<Finding>& findings) {
    const std::string init = ValueOf(InitVariable);
    if (VELUnicodeString(init).GetLengthInChar() == 1 && init != "0")
        AddVariable(findings, InitVariable, "a single character names no file");
    const FileChoice choice = ChooseFile();
    const bool ignored =
        std::any_of(choice.candidates.begin(), choice.candidates.end(), [](const Candidate& one) {
            return one.origin == RootsVariable && one.verdict == Verdict::Ignored;
        });
    if (ignored)
        AddVariable(findings, RootsVariable, "an earlier source decides which file is taken");
}

} // namespace

std::vector<FindingKind> FindingKinds() {
    std::vector<FindingKind> kinds;
    const VELListVal<VELDyadCtxFindingKind> known = VELDyadCtxFileCheck::GetFindingKinds();
    for (int i = 1; i <= known.Size(); ++i)
        kinds.push_back(
            {ToText(known[i].id), SeverityOf(known[i].severity), ToText(known[i].text)});
    kinds.push_back({VariableKind, Severity::Note, VariableText});
    return kinds;
}

std::vector<Finding> DiagnoseFile(const std::string& path, const DiagnosisOptions& options) {
    std::vector<Finding> findings;
    RunCheck(path, options, findings);
    return findings;
}

std::vector<Finding> Diagnose(const Source& source, const DiagnosisOptions& options) {
    std::vector<Finding> findings;
    if (source.path.empty() || !RunCheck(source.path, options, findings))
        return source.findings;
    return findings;
}

std::vector<Finding> VariablesWithoutEffect(bool fileIsNamed) {
    std::vector<Finding> findings;
    if (!fileIsNamed)
        AddSourceVariables(findings);
    if (IsDbContextEnvironmentOn())
        return findings;
    const std::string environment = ValueOf(EnvironmentVariable);
    if (!environment.empty() && environment != "0" && environment != "1")
        AddVariable(findings, EnvironmentVariable,
                    "only the value 1 switches the DB context environment on");
    if (VELGetEnv(MultisiteVariable) != nullptr)
        AddVariable(findings, MultisiteVariable,
                    "there are no database contexts while the DB context environment is off");
    return findings;
}

// A loaded file gives the same contexts in the same order whenever it is read.
ContextPlaces PlacesOfContexts(const Source& source) {
    ContextPlaces places;
    VELDyadCtxFileCheck check;
    if (check.Run(VELUnicodeString(source.path)) < 0)
        return places;
    VELDyadCtxCollector& placed = *check.GetCollector();
    const int count = std::min(placed.GetNbCtxs(), source.collector->GetNbCtxs());
    for (int i = 1; i <= count; ++i) {
        VELDyadContext* mine = nullptr;
        VELDyadContext* theirs = nullptr;
        FilePlace place;
        source.collector->GetCtxAtIndex(i, mine);
        placed.GetCtxAtIndex(i, theirs);
        if (check.GetPlace(theirs, place.line, place.column) >= 0)
            places.emplace(mine, place);
    }
    return places;
}

} // namespace dyadctx::tool
