// SPDX-License-Identifier: MIT
#include "tools/dyadctx/FileChoiceText.h"

#include "platform/VELFileSystem.h"
#include "platform/VELSysSettingRepository.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/FindingRecorder.h"
#include "tools/dyadctx/Suggestion.h"
#include "tools/dyadctx/Words.h"

#include <new>

namespace dyadctx::tool {

namespace {

using Absence = VELDyadCtxFileAbsence;
using Candidate = VELDyadCtxFileCandidate;
using PathVerdict = VELDyadCtxPathVerdict;

const char* KeyOf(PathVerdict verdict) {
    switch (verdict) {
    case PathVerdict::NoFolder:
        return "path.no-folder";
    case PathVerdict::FolderMissing:
        return "path.folder-missing";
    case PathVerdict::FolderUnreadable:
        return "path.folder-unreadable";
    case PathVerdict::NoName:
        return "path.no-name";
    case PathVerdict::WrongExtension:
        return "path.wrong-extension";
    case PathVerdict::Missing:
        return "path.missing";
    case PathVerdict::IsFolder:
        return "path.is-folder";
    case PathVerdict::NotRegular:
        return "path.not-regular";
    default:
        return "path.unreadable";
    }
}

std::string TextOf(PathVerdict verdict, const VELUnicodeString& path) {
    if (verdict == PathVerdict::Usable)
        return "";
    VELUnicodeString folder;
    VELUnicodeString name;
    VELSplitPath(path, folder, name);
    return Words(KeyOf(verdict), {Visible(folder.AsView())});
}

std::string SettingsPlace(const Candidate& candidate) {
    return PlacePrefix(std::string(candidate.settingsFile.AsView()),
                       {candidate.settingsLine, candidate.settingsColumn});
}

std::string NoSuchRoot(const Candidate& candidate) {
    const std::string_view root = candidate.value.AsView();
    // After a drive letter a colon is no slip.
    const bool hasColon = root.find(':', 2) != std::string_view::npos;
    return Words("path.folder-missing", {Visible(root)}) +
           (hasColon ? Words("choice.separator") : "");
}

// Why the settings name no file.
std::string TextOfSettings(const Candidate& candidate) {
    const std::string file = Visible(candidate.settingsFile.AsView());
    if (file.empty())
        return Words("choice.not-in-settings", {FileAttribute});
    switch (candidate.absence) {
    case Absence::SettingsMissing:
        return Words("choice.no-settings-file", {file});
    case Absence::SettingsUnreadable:
        return Words("choice.settings-unreadable", {file});
    case Absence::SettingsBroken:
        return SettingsPlace(candidate) + Visible(candidate.settingsFault.AsView());
    case Absence::AttributeNotText:
        return SettingsPlace(candidate) + Words("choice.not-text", {FileAttribute});
    case Absence::AttributeEmpty:
        return Words("choice.attribute-empty", {FileAttribute, file});
    default:
        return Words("choice.attribute-missing", {FileAttribute, file});
    }
}

std::string TextOfAbsence(const Candidate& candidate) {
    switch (candidate.absence) {
    case Absence::NotSet:
        return Words("choice.not-set");
    case Absence::Empty:
        return Words("choice.empty");
    case Absence::LeftToNext:
        return Words("choice.left-to-next");
    case Absence::TurnedOff:
        return Words("choice.turned-off");
    case Absence::NoSettingsFolder:
        return Words("choice.no-settings-folder");
    case Absence::FolderMissing:
        return NoSuchRoot(candidate);
    case Absence::NoDefaultFile:
        return Words(candidate.value.IsEmpty() ? "choice.root-entry" : "choice.no-default-file");
    default:
        return TextOfSettings(candidate);
    }
}

} // namespace

void MakeChoice(VELDyadCtxFileChoice& choice) {
    if (choice.Run() < 0)
        throw std::bad_alloc();
}

const char* NameOf(VELDyadCtxFileOrigin origin) {
    switch (origin) {
    case VELDyadCtxFileOrigin::Variable:
        return "VELDyadCtxInit";
    case VELDyadCtxFileOrigin::Settings:
        return "settings";
    case VELDyadCtxFileOrigin::InstallationFolder:
        break;
    }
    return "VELInstallPath";
}

const char* NameOf(VELDyadCtxFileVerdict verdict) {
    switch (verdict) {
    case VELDyadCtxFileVerdict::Chosen:
        return "chosen";
    case VELDyadCtxFileVerdict::Rejected:
        return "rejected";
    case VELDyadCtxFileVerdict::Absent:
        return "absent";
    case VELDyadCtxFileVerdict::Ignored:
        break;
    }
    return "ignored";
}

std::string ReasonOf(const Candidate& candidate) {
    if (candidate.verdict == VELDyadCtxFileVerdict::Ignored)
        return Words("choice.earlier");
    if (candidate.verdict == VELDyadCtxFileVerdict::Chosen)
        return Words("choice.first");
    if (candidate.absence != Absence::None)
        return TextOfAbsence(candidate);
    const bool isEmptyVariable =
        candidate.origin == VELDyadCtxFileOrigin::Variable && candidate.path.IsEmpty();
    return isEmptyVariable ? Words("choice.empty-variable") : FaultOf(candidate);
}

std::string FaultOf(const Candidate& candidate) {
    if (!candidate.hasPath)
        return "";
    return candidate.absence != Absence::None ? TextOfAbsence(candidate)
                                              : TextOf(candidate.pathVerdict, candidate.path);
}

std::string ReasonAgainst(std::string_view file) {
    const VELUnicodeString path(file);
    return TextOf(VELDyadCtxFileChoice::CheckPath(path), path);
}

std::string RemarkOnUnreadAttribute(std::string_view name) {
    return Words("settings.not-read", {Visible(name)}) + DidYouMean(name, {FileAttribute});
}

std::vector<std::string> RemarksOnMisspeltAttributes() {
    VELListVal<VELSetting> settings;
    VELSysSettingRepository::ListAttrs(SettingsRepository, settings);
    std::vector<std::string> remarks;
    for (int i = 1; i <= settings.Size(); ++i) {
        const std::string_view name = settings[i].name.AsView();
        if (name != FileAttribute && !Nearest(name, {FileAttribute}).empty())
            remarks.push_back(RemarkOnUnreadAttribute(name));
    }
    return remarks;
}

} // namespace dyadctx::tool
