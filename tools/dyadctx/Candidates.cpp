#include "tools/dyadctx/Candidates.h"

#include "collector/VELDyadCtxCollector.h"
#include "platform/VELEnvironment.h"
#include "platform/VELFileSystem.h"
#include "platform/VELSysSettingRepository.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/SettingsText.h"

namespace dyadctx::tool {

namespace {

constexpr const char* InitVariable = "VELDyadCtxInit";
constexpr const char* RootsVariable = "VELInstallPath";
constexpr std::string_view Extension = ".xml";

bool Has(const VELUnicodeString& path, unsigned int kind) {
    VELFileInfo info;
    return VELGetFileInfo(path, info) == 0 && (info.mode & kind) != 0;
}

std::string DefaultFileBelow(std::string_view root) {
    VELUnicodeString relative;
    VELDyadCtxCollector::GetRelativeResourcesPath(relative);
    return std::string(root) + std::string(relative.AsView());
}

// Makes the candidate the choice, whether or not it can be read.
void Take(FileChoice& choice, Candidate& candidate) {
    const std::string reason = ReasonAgainst(*candidate.path);
    choice.file = candidate.path;
    choice.usable = reason.empty();
    candidate.verdict = choice.usable ? Verdict::Chosen : Verdict::Rejected;
    candidate.reason = choice.usable ? "the first source that names a file" : reason;
}

Candidate FromVariable(FileChoice& choice) {
    Candidate candidate;
    candidate.origin = InitVariable;
    const char* value = VELGetEnv(InitVariable);
    if (value == nullptr) {
        candidate.reason = "the variable is not set";
        return candidate;
    }
    const bool oneCharacter = VELUnicodeString(value).GetLengthInChar() == 1;
    if (!oneCharacter) {
        candidate.path = value;
        Take(choice, candidate);
    } else if (std::string_view(value) == "0") {
        choice.file = "";
        candidate.verdict = Verdict::Rejected;
        candidate.reason = "the value 0 turns context files off";
    } else {
        candidate.reason = "a single character leaves the choice to the sources below";
    }
    return candidate;
}

// Why the settings name no file.
std::string ReasonOfNoSetting(const std::string& file) {
    if (file.empty())
        return "the environment names no folder for settings";
    if (!Has(VELUnicodeString(file), VELFileInfo::RegularFile))
        return "there is no file " + Visible(file);
    const std::string fault = FaultOfSettingsFile(file);
    if (!fault.empty())
        return fault;
    return std::string(FileAttribute) + " is missing or empty in " + Visible(file);
}

Candidate FromSettings(FileChoice& choice) {
    Candidate candidate;
    candidate.origin = "settings";
    VELUnicodeString value;
    VELSysSettingRepository* repository =
        VELSysSettingRepository::GetRepository(SettingsRepository, 0);
    if (repository != nullptr)
        repository->ReadAttr(FileAttribute, value);
    if (!value.IsEmpty())
        candidate.path = value.AsView();
    if (choice.file) {
        candidate.verdict = Verdict::Ignored;
        candidate.reason = "an earlier source decided";
    } else if (candidate.path) {
        Take(choice, candidate);
    } else {
        candidate.reason = ReasonOfNoSetting(SettingsFile());
    }
    return candidate;
}

Candidate FromRoot(FileChoice& choice, std::string_view root, int number) {
    Candidate candidate;
    candidate.origin = RootsVariable;
    candidate.root = number;
    candidate.path = DefaultFileBelow(root);
    if (choice.file) {
        candidate.verdict = Verdict::Ignored;
        candidate.reason = "an earlier source decided";
    } else if (VELFileAccess(VELUnicodeString(*candidate.path), 0) == 0) {
        Take(choice, candidate);
    } else {
        candidate.reason = "the folder does not hold this file";
    }
    return candidate;
}

void AddRoots(FileChoice& choice) {
    const char* value = VELGetEnv(RootsVariable);
    if (value == nullptr || *value == '\0') {
        Candidate none;
        none.origin = RootsVariable;
        none.reason = value == nullptr ? "the variable is not set" : "the variable is empty";
        choice.candidates.push_back(none);
        return;
    }
    std::string_view roots = value;
    for (int number = 1;; ++number) {
        const std::size_t end = roots.find(';');
        choice.candidates.push_back(FromRoot(choice, roots.substr(0, end), number));
        if (end == std::string_view::npos)
            return;
        roots.remove_prefix(end + 1);
    }
}

} // namespace

FileChoice ChooseFile() {
    FileChoice choice;
    choice.candidates.push_back(FromVariable(choice));
    const bool byVariable = choice.file.has_value();
    choice.candidates.push_back(FromSettings(choice));
    AddRoots(choice);
    // A file the variable names never counts as the installation's default file.
    choice.isDefault =
        !byVariable && choice.file &&
        VELDyadCtxCollector::IsADefaultContextXML(VELUnicodeString(*choice.file)) != 0;
    return choice;
}

const char* NameOf(Verdict verdict) {
    switch (verdict) {
    case Verdict::Chosen:
        return "chosen";
    case Verdict::Rejected:
        return "rejected";
    case Verdict::Absent:
        return "absent";
    case Verdict::Ignored:
        break;
    }
    return "ignored";
}

std::string ReasonAgainst(const std::string& file) {
    const VELUnicodeString path(file);
    VELUnicodeString folder;
    VELUnicodeString name;
    VELSplitPath(path, folder, name);
    if (folder.IsEmpty())
        return "the path names no folder; write ./NAME for a file of the working folder";
    if (!Has(folder, VELFileInfo::Directory))
        return "there is no folder " + Visible(folder.AsView());
    if (_VELFileAccess(folder, 4, 0) < 0)
        return "the folder " + Visible(folder.AsView()) + " may not be read";
    if (!name.AsView().ends_with(Extension))
        return "the name does not end in .xml, in lower case";
    if (VELFileAccess(path, 0) != 0)
        return "there is no such file";
    if (!Has(path, VELFileInfo::RegularFile))
        return "it is not a regular file";
    return _VELFileAccess(path, 4, 0) < 0 ? "the file may not be read" : "";
}

} // namespace dyadctx::tool
