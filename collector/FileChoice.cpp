// SPDX-License-Identifier: MIT
#include "collector/VELDyadCtxFileChoice.h"

#include "collector/detail/ContextFileSource.h"
#include "platform/VELEnvironment.h"
#include "platform/VELFileSystem.h"
#include "platform/VELSysSettingRepository.h"
#include "platform/detail/SettingsFile.h"
#include "trace/detail/ProcessSettings.h"

#include <utility>

namespace {

using Absence = VELDyadCtxFileAbsence;
using Candidate = VELDyadCtxFileCandidate;
using Origin = VELDyadCtxFileOrigin;
using Verdict = VELDyadCtxFileVerdict;

void SetPath(Candidate& candidate, VELUnicodeString path) {
    candidate.hasPath = true;
    candidate.path = std::move(path);
    candidate.pathVerdict = dyadctx::JudgeContextFile(candidate.path);
}

void SetVariable(Candidate& candidate, const char* variable, const dyadctx::TextSetting& setting) {
    candidate.variable = variable;
    candidate.isSet = setting.isSet;
    if (setting.isSet)
        candidate.value = setting.text;
}

Candidate FromVariable() {
    const dyadctx::TextSetting& setting = dyadctx::InitSetting();
    Candidate candidate;
    SetVariable(candidate, dyadctx::InitVariable, setting);
    switch (dyadctx::InitChoiceOf(setting.text)) {
    case dyadctx::InitChoice::Path:
        SetPath(candidate, setting.text);
        break;
    case dyadctx::InitChoice::NoFile:
        candidate.absence = Absence::TurnedOff;
        break;
    case dyadctx::InitChoice::Installed:
        candidate.absence = setting.isSet ? Absence::LeftToNext : Absence::NotSet;
        break;
    }
    return candidate;
}

Absence AbsenceBy(VELSettingRefusal::Kind kind) {
    switch (kind) {
    case VELSettingRefusal::Kind::NoFile:
        return Absence::SettingsMissing;
    case VELSettingRefusal::Kind::NotReadable:
        return Absence::SettingsUnreadable;
    case VELSettingRefusal::Kind::NotToml:
        return Absence::SettingsBroken;
    case VELSettingRefusal::Kind::NotText:
        return Absence::AttributeNotText;
    case VELSettingRefusal::Kind::NoAttribute:
        return Absence::AttributeMissing;
    default:
        break;
    }
    return Absence::AttributeEmpty;
}

// The place of the attribute in the built-in settings, or what is wrong with them.
void SetSettingsPlace(Candidate& candidate) {
    const dyadctx::SettingsFolder folder = dyadctx::FindSettingsFolder();
    if (folder.variable == nullptr) {
        candidate.absence = Absence::NoSettingsFolder;
        return;
    }
    SetVariable(candidate, folder.variable, {true, VELUnicodeString(VELGetEnv(folder.variable))});
    candidate.settingsFile = dyadctx::SettingsFilePath(dyadctx::SettingsRepository);
    VELSetting setting;
    const VELSettingRefusal refusal =
        dyadctx::FindSetting(candidate.settingsFile, dyadctx::SettingsAttribute, setting);
    candidate.settingsLine = refusal.IsRefusal() ? refusal.line : setting.line;
    candidate.settingsColumn = refusal.IsRefusal() ? refusal.column : setting.column;
    candidate.absence = AbsenceBy(refusal.kind);
    if (candidate.absence == Absence::SettingsBroken)
        candidate.settingsFault = refusal.reason;
}

Candidate FromSettings() {
    Candidate candidate;
    candidate.origin = Origin::Settings;
    candidate.absence = Absence::AttributeMissing;
    if (!VELSysSettingRepository::HasHostSource())
        SetSettingsPlace(candidate);
    VELUnicodeString file = dyadctx::FileOfSettings();
    if (!file.IsEmpty()) {
        candidate.absence = Absence::None;
        SetPath(candidate, std::move(file));
    }
    return candidate;
}

Candidate FromFolder(std::string_view folder, int number) {
    Candidate candidate;
    candidate.origin = Origin::InstallationFolder;
    SetVariable(candidate, dyadctx::RootsVariable, {true, VELUnicodeString(folder)});
    candidate.folder = number;
    SetPath(candidate, dyadctx::DefaultFileBelow(folder));
    if (dyadctx::IsThere(candidate.path))
        return candidate;
    VELFileInfo info;
    const bool isFolder =
        VELGetFileInfo(candidate.value, info) == 0 && (info.mode & VELFileInfo::Directory) != 0;
    const bool isLookedInto = isFolder || folder.empty();
    candidate.absence = isLookedInto ? Absence::NoDefaultFile : Absence::FolderMissing;
    return candidate;
}

void AddFolders(VELListVal<Candidate>& candidates) {
    const dyadctx::TextSetting& setting = dyadctx::InstallationRoots();
    if (setting.text.IsEmpty()) {
        Candidate candidate;
        candidate.origin = Origin::InstallationFolder;
        SetVariable(candidate, dyadctx::RootsVariable, setting);
        candidate.absence = setting.isSet ? Absence::Empty : Absence::NotSet;
        candidates.Append(candidate);
        return;
    }
    dyadctx::RootList roots(setting.text.AsView());
    std::string_view root;
    for (int number = 1; roots.Next(root); ++number)
        candidates.Append(FromFolder(root, number));
}

// Whether the library's search ends here.
bool Decides(const Candidate& candidate) {
    return candidate.absence == Absence::None || candidate.absence == Absence::TurnedOff;
}

// The first that decides is the choice. Returns its position; 0 without one.
int SetVerdicts(VELListVal<Candidate>& candidates) {
    int deciding = 0;
    for (int i = 1; i <= candidates.Size(); ++i) {
        Candidate& candidate = candidates[i];
        const bool isUsable = candidate.pathVerdict == VELDyadCtxPathVerdict::Usable;
        if (deciding == 0 && Decides(candidate)) {
            deciding = i;
            candidate.verdict = isUsable ? Verdict::Chosen : Verdict::Rejected;
        } else if (deciding != 0 && candidate.hasPath) {
            candidate.verdict = Verdict::Ignored;
        }
    }
    return deciding;
}

} // namespace

VELDyadCtxFileChoice::VELDyadCtxFileChoice() noexcept = default;

VELDyadCtxFileChoice::~VELDyadCtxFileChoice() = default;

VELResult VELDyadCtxFileChoice::Run() {
    candidates_.RemoveAll();
    deciding_ = 0;
    isDefault_ = 0;
    try {
        file_ = VELUnicodeString();
        VELListVal<Candidate> candidates;
        candidates.Append(FromVariable());
        candidates.Append(FromSettings());
        AddFolders(candidates);
        const int deciding = SetVerdicts(candidates);
        if (deciding != 0)
            file_ = candidates[deciding].path;
        candidates_ = std::move(candidates);
        deciding_ = deciding;
    } catch (...) {
        return E_FAIL;
    }
    // A file the variable names never counts as the installation's default file.
    const bool byVariable = deciding_ != 0 && candidates_[deciding_].origin == Origin::Variable;
    isDefault_ = !byVariable && dyadctx::ContainsDefaultContextFile(file_) ? 1 : 0;
    return S_OK;
}

const VELUnicodeString& VELDyadCtxFileChoice::GetFile(unsigned char& isDefault) const noexcept {
    isDefault = isDefault_;
    return file_;
}

bool VELDyadCtxFileChoice::IsUsable() const noexcept {
    return deciding_ != 0 && candidates_[deciding_].verdict == Verdict::Chosen;
}

VELDyadCtxPathVerdict VELDyadCtxFileChoice::CheckPath(const VELUnicodeString& path) noexcept {
    try {
        return dyadctx::JudgeContextFile(path);
    } catch (...) {
        return VELDyadCtxPathVerdict::Unreadable;
    }
}
