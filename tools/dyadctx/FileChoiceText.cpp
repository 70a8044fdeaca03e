#include "tools/dyadctx/FileChoiceText.h"

#include "platform/VELFileSystem.h"
#include "tools/dyadctx/DisplayText.h"

#include <new>

namespace dyadctx::tool {

namespace {

using Absence = VELDyadCtxFileAbsence;
using Candidate = VELDyadCtxFileCandidate;
using PathVerdict = VELDyadCtxPathVerdict;

std::string TextOf(PathVerdict verdict, const VELUnicodeString& path) {
    VELUnicodeString folder;
    VELUnicodeString name;
    VELSplitPath(path, folder, name);
    switch (verdict) {
    case PathVerdict::NoFolder:
        return "the path names no folder; write ./NAME for a file of the working folder";
    case PathVerdict::FolderMissing:
        return "there is no folder " + Visible(folder.AsView());
    case PathVerdict::FolderUnreadable:
        return "the folder " + Visible(folder.AsView()) + " may not be read";
    case PathVerdict::NoName:
        return "the path ends in a separator, so it names no file";
    case PathVerdict::WrongExtension:
        return "the name does not end in .xml, in lower case";
    case PathVerdict::Missing:
        return "there is no such file";
    case PathVerdict::IsFolder:
        return "it is a folder";
    case PathVerdict::NotRegular:
        return "it is not a regular file";
    case PathVerdict::Unreadable:
        return "the file may not be read";
    case PathVerdict::Usable:
        break;
    }
    return "";
}

// "FILE:LINE:COLUMN: ", as far as known.
std::string SettingsPlace(const Candidate& candidate) {
    std::string place = Visible(candidate.settingsFile.AsView()) + ":";
    for (const int number : {candidate.settingsLine, candidate.settingsColumn}) {
        if (number > 0)
            place += std::to_string(number) + ":";
    }
    return place + " ";
}

std::string NoSuchRoot(const Candidate& candidate) {
    const std::string_view root = candidate.value.AsView();
    // After a drive letter a colon is no slip.
    const bool hasColon = root.find(':', 2) != std::string_view::npos;
    return "there is no folder " + Visible(root) +
           (hasColon ? "; folders are separated by ';', not by ':'" : "");
}

// Why the settings name no file.
std::string TextOfSettings(const Candidate& candidate) {
    const std::string file = Visible(candidate.settingsFile.AsView());
    if (file.empty())
        return std::string(FileAttribute) + " is missing in the settings";
    switch (candidate.absence) {
    case Absence::SettingsMissing:
        return "there is no file " + file;
    case Absence::SettingsUnreadable:
        return file + " cannot be read";
    case Absence::SettingsBroken:
        return SettingsPlace(candidate) + Visible(candidate.settingsFault.AsView());
    case Absence::AttributeNotText:
        return SettingsPlace(candidate) + "the value of " + FileAttribute +
               " is not a text; put it in quotes";
    case Absence::AttributeEmpty:
        return std::string(FileAttribute) + " is empty in " + file;
    default:
        return std::string(FileAttribute) + " is missing in " + file;
    }
}

std::string TextOfAbsence(const Candidate& candidate) {
    switch (candidate.absence) {
    case Absence::NotSet:
        return "the variable is not set";
    case Absence::Empty:
        return "the variable is empty";
    case Absence::LeftToNext:
        return "a single character leaves the choice to the sources below";
    case Absence::TurnedOff:
        return "the value 0 turns context files off";
    case Absence::NoSettingsFolder:
        return "the environment names no folder for settings";
    case Absence::FolderMissing:
        return NoSuchRoot(candidate);
    case Absence::NoDefaultFile:
        return candidate.value.IsEmpty() ? "an empty entry means the root of the file system, "
                                           "which does not hold this file"
                                         : "the folder does not hold this file";
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
        return "an earlier source decided";
    if (candidate.verdict == VELDyadCtxFileVerdict::Chosen)
        return "the first source that names a file";
    if (candidate.absence != Absence::None)
        return TextOfAbsence(candidate);
    const bool isEmptyVariable =
        candidate.origin == VELDyadCtxFileOrigin::Variable && candidate.path.IsEmpty();
    return isEmptyVariable ? "the variable is set but empty, which counts as a file; unset it"
                           : FaultOf(candidate);
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

} // namespace dyadctx::tool
