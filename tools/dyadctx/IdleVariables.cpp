// SPDX-License-Identifier: MIT
#include "tools/dyadctx/IdleVariables.h"

#include "platform/VELDyadTrace.h"
#include "platform/VELEnvironment.h"
#include "platform/VELFileSystem.h"
#include "platform/VELMsgCatalog.h"
#include "tools/dyadctx/ContextFacts.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/FileChoiceText.h"
#include "tools/dyadctx/Paths.h"
#include "tools/dyadctx/Source.h"
#include "tools/dyadctx/Suggestion.h"
#include "tools/dyadctx/SystemServices.h"
#include "tools/dyadctx/Words.h"
#include "trace/VELDyadMessageKeys.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string_view>
#include <system_error>

namespace dyadctx::tool {

namespace {

// Every variable the library reads.
constexpr std::array Known{
    "VELDyadCtxInit",         "VELDyadCtxOut",           "VELInstallPath",     "VELDyadCtxTracer",
    "TE_MULTISITE_DBCONTEXT", "VELDbContextEnvironment", "ExchangeChannel",    "VELSettingPath",
    "VELMessageLanguage",     "VELMessageCatalogPath",   "VELDyadContextTrace"};

constexpr const char* SettingsVariable = "VELSettingPath";
constexpr const char* RootsVariable = "VELInstallPath";

// Returns why a value has no effect; empty when it has one.
using Judge = std::function<std::string(const std::string& value)>;

void CheckVariable(std::vector<IdleVariable>& idle, const char* name, const Judge& judge) {
    const char* set = VELGetEnv(name);
    if (set == nullptr)
        return;
    const std::string value = set;
    const std::string reason = judge(value);
    if (!reason.empty())
        idle.push_back({name, value, reason});
}

// The same for a variable whose empty value has no effect.
void CheckVariableUnlessEmpty(std::vector<IdleVariable>& idle, const char* name,
                              const Judge& judge) {
    CheckVariable(idle, name, [&judge](const std::string& value) {
        return value.empty() ? Words("idle.empty") : judge(value);
    });
}

using Candidate = VELDyadCtxFileCandidate;
using Origin = VELDyadCtxFileOrigin;
using Verdict = VELDyadCtxFileVerdict;

bool Decides(const Candidate& candidate) {
    return candidate.verdict == Verdict::Chosen || candidate.verdict == Verdict::Rejected;
}

std::vector<Candidate> CandidatesFrom(const VELDyadCtxFileChoice& choice, Origin origin) {
    std::vector<Candidate> found;
    for (int i = 1; i <= choice.GetNbCandidates(); ++i) {
        if (choice.GetCandidateAt(i).origin == origin)
            found.push_back(choice.GetCandidateAt(i));
    }
    return found;
}

std::string AgainstInit(const std::string& value) {
    const bool oneCharacter = VELUnicodeString(value).GetLengthInChar() == 1;
    return oneCharacter && value != "0" ? Words("idle.single-character") : "";
}

std::string AgainstSettingsFolder(const VELDyadCtxFileChoice& choice) {
    const Candidate settings = CandidatesFrom(choice, Origin::Settings).front();
    if (Decides(settings))
        return "";
    const bool isTooLate = Decides(CandidatesFrom(choice, Origin::Variable).front());
    return isTooLate ? Words("idle.decided-before") : ReasonOf(settings);
}

std::string AgainstRoots(const VELDyadCtxFileChoice& choice) {
    const std::vector<Candidate> roots = CandidatesFrom(choice, Origin::InstallationFolder);
    if (std::any_of(roots.begin(), roots.end(), Decides))
        return "";
    if (roots.front().verdict == Verdict::Ignored)
        return Words("idle.decided-before");
    return roots.size() == 1 ? ReasonOf(roots.front()) : Words("idle.no-default-file");
}

// The desktop's own rule for this variable.
std::string AgainstConfigurationFolder(const VELDyadCtxFileChoice& choice,
                                       const std::string& value) {
    const std::string used = ToText(CandidatesFrom(choice, Origin::Settings).front().variable);
    const bool asked = used.empty() || used == "HOME";
    const bool isRelative = !value.empty() && !value.starts_with('/');
    return asked && isRelative ? Words("idle.relative") : "";
}

std::string AgainstDatabaseSwitch(const std::string& value) {
    if (IsDbContextEnvironmentOn() || value == "0")
        return "";
    return Words("idle.database");
}

std::string AgainstMultisite(const std::string&) {
    return IsDbContextEnvironmentOn() ? "" : Words("idle.no-database");
}

// While the platform trace is active, any value makes it note one line more.
std::string AgainstTracer(const std::string& value) {
    const bool turnsOn = std::strtol(value.c_str(), nullptr, 10) != 0;
    if (turnsOn || value == "0" || VELIsTraceActive())
        return "";
    return Words("idle.tracer");
}

std::string AgainstTraceFile(const std::string& value) {
    if (value == "0" || value == "1")
        return "";
    const VELUnicodeString file(value);
    VELUnicodeString folder;
    VELUnicodeString name;
    VELSplitPath(file, folder, name);
    if (!folder.IsEmpty() && VELFileAccess(folder, 0) != 0)
        return Words("idle.trace-folder", {Visible(folder.AsView())});
    VELFileInfo info;
    if (VELGetFileInfo(file, info) != 0)
        return "";
    const bool isFolder = (info.mode & VELFileInfo::Directory) != 0;
    return isFolder || VELFileAccess(file, 2) != 0 ? Words("idle.trace-file") : "";
}

std::string AgainstLanguage(const std::string& value) {
    if (VELMsgCatalog::HasLanguage(value.c_str()))
        return "";
    return Words("idle.language");
}

bool IsCatalog(const std::string& fileName) {
    const bool isOfOne = fileName.starts_with(std::string(key::Catalog) + ".") ||
                         fileName.starts_with(std::string(VELMsgCatalog::OwnCatalog) + ".");
    return isOfOne && fileName.ends_with(".mo");
}

std::string AgainstCatalogFolder(const std::string& value) {
    std::error_code failed;
    std::filesystem::directory_iterator entry(NativePath(value), failed);
    if (failed)
        return Words("idle.catalog-folder");
    for (; entry != std::filesystem::directory_iterator(); entry.increment(failed)) {
        if (failed)
            break;
        if (IsCatalog(TextOf(entry->path().filename())))
            return "";
    }
    return Words("idle.no-catalog", {key::Catalog});
}

// What begins like this is likely to be meant for the library.
constexpr std::array<std::string_view, 3> Prefixes{"vel", "te_multisite", "exchange"};

bool HasPrefix(std::string_view name) {
    const std::string lower = InSmallLetters(name);
    return std::any_of(Prefixes.begin(), Prefixes.end(),
                       [&](std::string_view prefix) { return lower.starts_with(prefix); });
}

// Where upper and lower case are one in names of variables, this is the known one itself.
bool IsTheSame(const std::string& name, const std::string& known) {
    const char* value = VELGetEnv(name.c_str());
    const char* ofKnown = VELGetEnv(known.c_str());
    return InSmallLetters(name) == InSmallLetters(known) && value != nullptr &&
           ofKnown != nullptr && std::string_view(value) == ofKnown;
}

void AddMisspelt(std::vector<IdleVariable>& idle) {
    for (const std::string& name : EnvironmentNames()) {
        const bool isKnown = std::find(Known.begin(), Known.end(), name) != Known.end();
        if (isKnown || !HasPrefix(name))
            continue;
        const std::string nearest = Nearest(name, {Known.begin(), Known.end()});
        if (nearest.empty() || IsTheSame(name, nearest))
            continue;
        const char* value = VELGetEnv(name.c_str());
        idle.push_back({name, value != nullptr ? value : "", Words("idle.unknown", {nearest})});
    }
}

std::string AgainstNothing(const std::string&) {
    return "";
}

} // namespace

std::vector<IdleVariable> IdleVariablesOfChoice(const VELDyadCtxFileChoice& choice) {
    std::vector<IdleVariable> idle;
    CheckVariable(idle, "VELDyadCtxInit", AgainstInit);
    CheckVariableUnlessEmpty(idle, SettingsVariable,
                             [&](const std::string&) { return AgainstSettingsFolder(choice); });
    CheckVariable(idle, "XDG_CONFIG_HOME", [&](const std::string& value) {
        return AgainstConfigurationFolder(choice, value);
    });
    CheckVariableUnlessEmpty(idle, RootsVariable,
                             [&](const std::string&) { return AgainstRoots(choice); });
    CheckVariableUnlessEmpty(idle, "VELDyadCtxOut", [&](const std::string&) -> std::string {
        return choice.IsUsable() ? "" : Words("idle.no-output");
    });
    return idle;
}

std::vector<IdleVariable> IdleVariablesOfReading() {
    std::vector<IdleVariable> idle;
    if (!IsDbContextEnvironmentOn())
        CheckVariableUnlessEmpty(idle, "VELDbContextEnvironment", AgainstDatabaseSwitch);
    CheckVariable(idle, "TE_MULTISITE_DBCONTEXT", AgainstMultisite);
    CheckVariable(idle, "VELDyadCtxTracer", AgainstTracer);
    CheckVariableUnlessEmpty(idle, "VELDyadContextTrace", AgainstTraceFile);
    CheckVariableUnlessEmpty(idle, "VELMessageLanguage", AgainstLanguage);
    CheckVariableUnlessEmpty(idle, "VELMessageCatalogPath", AgainstCatalogFolder);
    CheckVariableUnlessEmpty(idle, "NO_COLOR", AgainstNothing);
    AddMisspelt(idle);
    return idle;
}

std::vector<IdleVariable> IdleExchangeChannel() {
    std::vector<IdleVariable> idle;
    CheckVariableUnlessEmpty(idle, "ExchangeChannel",
                             [](const std::string&) { return Words("idle.exchange-channel"); });
    return idle;
}

} // namespace dyadctx::tool
