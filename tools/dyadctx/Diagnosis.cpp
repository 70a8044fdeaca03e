// SPDX-License-Identifier: MIT
#include "tools/dyadctx/Diagnosis.h"

#include "platform/VELDbContextEnvironment.h"
#include "tools/dyadctx/FileChoiceText.h"
#include "tools/dyadctx/Words.h"
#include "trace/VELDyadMessageKeys.h"

#include <algorithm>
#include <charconv>
#include <unordered_set>

namespace dyadctx::tool {

namespace {

constexpr const char* VariableKind = "variable-without-effect";

// The DB context environment, switched on as long as this lives.
class DbContextEnvironment {
public:
    DbContextEnvironment() { SetDbContextEnvironment(true); }
    ~DbContextEnvironment() { SetDbContextEnvironment(false); }
    DbContextEnvironment(const DbContextEnvironment&) = delete;
    DbContextEnvironment& operator=(const DbContextEnvironment&) = delete;
};

std::string IdentityAndPlace(const Finding& finding) {
    return PlacePrefix("-", finding.place) + IdentityOf(finding);
}

// The library's message does not say what is wrong with the path.
void AddReason(const Source& source, Finding& finding) {
    const std::string reason = IsAboutFileChoice(finding) ? ReasonAgainst(source.path) : "";
    if (!reason.empty())
        finding.related.Append({VELUnicodeString(reason), {}, {}});
}

} // namespace

std::vector<VELDyadCtxFindingKind> FindingKinds() {
    std::vector<VELDyadCtxFindingKind> kinds;
    const VELListVal<VELDyadCtxFindingKind> known = VELDyadCtxFileCheck::GetFindingKinds();
    for (int i = 1; i <= known.Size(); ++i)
        kinds.push_back(known[i]);
    // With its places as they are.
    kinds.push_back(
        {VariableKind, Severity::Note, VELUnicodeString(Words(VariableKind, {"{0}", "{1}"}))});
    return kinds;
}

std::vector<Finding> Diagnose(const Source& source, const DiagnosisOptions& options) {
    // A file that cannot be read is not wrong XML, as which the check would take it.
    if (source.path.empty() || !source.whyNotRead.empty())
        return source.findings;
    VELDyadCtxFileCheck check;
    check.SetDeep(options.deep);
    for (const std::string& id : options.silenced)
        check.Silence(VELUnicodeString(id));
    RunCheck(check, source);
    std::vector<Finding> findings = FindingsOf(check);
    for (Finding& finding : findings)
        AddReason(source, finding);
    return findings;
}

std::size_t CountVanishing(const Source& source, const std::vector<Finding>& findings,
                           const DiagnosisOptions& options) {
    if (findings.empty() || source.path.empty() || IsDbContextEnvironmentOn())
        return 0;
    const DbContextEnvironment on;
    std::unordered_set<std::string> remaining;
    for (const Finding& finding : Diagnose(source, options))
        remaining.insert(IdentityAndPlace(finding));
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(), [&](const Finding& one) {
            return one.cause == 0 && !remaining.contains(IdentityAndPlace(one));
        }));
}

std::vector<Finding> FindingsOf(const VELDyadCtxFileCheck& check) {
    std::vector<Finding> findings;
    for (int i = 1; i <= check.GetNbFindings(); ++i)
        findings.push_back(check.GetFindingAt(i));
    return findings;
}

std::vector<Finding> ErrorsOf(const VELDyadCtxFileCheck& check) {
    std::vector<Finding> errors = FindingsOf(check);
    std::erase_if(errors, [](const Finding& one) { return one.severity != Severity::Error; });
    return errors;
}

bool FoundSyntaxError(const VELDyadCtxFileCheck& check) {
    const std::vector<Finding> errors = ErrorsOf(check);
    return std::any_of(errors.begin(), errors.end(), IsSyntaxError);
}

int CountInFinding(const VELDyadCtxFileCheck& check, std::string_view id) {
    for (int i = 1; i <= check.GetNbFindings(); ++i) {
        const Finding& finding = check.GetFindingAt(i);
        if (finding.id.AsView() != id || finding.parameters.Size() == 0)
            continue;
        const std::string_view digits = finding.parameters[1].AsView();
        int count = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), count);
        return count;
    }
    return 0;
}

Finding ToFinding(const IdleVariable& variable) {
    Finding finding;
    finding.id = VariableKind;
    finding.severity = Severity::Note;
    finding.parameters.Append(VELUnicodeString(variable.name));
    finding.parameters.Append(VELUnicodeString(variable.reason));
    finding.text = VELUnicodeString(Words(VariableKind, {variable.name, variable.reason}));
    return finding;
}

std::vector<Finding> VariablesWithoutEffect(bool fileIsNamed) {
    std::vector<IdleVariable> idle;
    if (!fileIsNamed) {
        VELDyadCtxFileChoice choice;
        MakeChoice(choice);
        idle = IdleVariablesOfChoice(choice);
    }
    const std::vector<IdleVariable> ofReading = IdleVariablesOfReading();
    idle.insert(idle.end(), ofReading.begin(), ofReading.end());
    std::vector<Finding> findings;
    findings.reserve(idle.size());
    for (const IdleVariable& variable : idle)
        findings.push_back(ToFinding(variable));
    return findings;
}

} // namespace dyadctx::tool
