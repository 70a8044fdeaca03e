#include "tools/dyadctx/Candidates.h"

#include "collector/VELDyadCtxCollector.h"
#include "platform/VELEnvironment.h"
#include "platform/VELFileSystem.h"
#include "platform/VELSysSettingRepository.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/ExitStatus.h"
#include "tools/dyadctx/SettingsText.h"

#include <array>

namespace dyadctx::tool {

namespace {

constexpr const char* InitVariable = "VELDyadCtxInit";
constexpr const char* RootsVariable = "VELInstallPath";
// The folder of the settings follows from one of these.
constexpr std::array<const char*, 4> SettingsVariables{"VELSettingPath", "XDG_CONFIG_HOME", "HOME",
                                                       "APPDATA"};
constexpr const char* DecidedBefore = "an earlier source decided";
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
    choice.file = candidate.path;
    choice.usable = candidate.fault.empty();
    candidate.verdict = choice.usable ? Verdict::Chosen : Verdict::Rejected;
    candidate.reason = choice.usable ? "the first source that names a file" : candidate.fault;
}

void PassOver(Candidate& candidate) {
    candidate.verdict = Verdict::Ignored;
    candidate.reason = DecidedBefore;
}

Candidate FromVariable(FileChoice& choice) {
    Candidate candidate;
    candidate.origin = InitVariable;
    candidate.variable = InitVariable;
    const char* value = VELGetEnv(InitVariable);
    if (value == nullptr) {
        candidate.reason = "the variable is not set";
        return candidate;
    }
    candidate.value = value;
    const bool oneCharacter = VELUnicodeString(value).GetLengthInChar() == 1;
    if (!oneCharacter) {
        candidate.path = value;
        candidate.fault = ReasonAgainst(*candidate.path);
        Take(choice, candidate);
        if (candidate.path->empty())
            candidate.reason = "the variable is set but empty, which counts as a file; unset it";
    } else if (*candidate.value == "0") {
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
    if (VELFileAccess(VELUnicodeString(file), 0) != 0)
        return "there is no file " + Visible(file);
    try {
        const bool isSet = SettingsText::Read(file).Get(FileAttribute).has_value();
        return std::string(FileAttribute) + (isSet ? " is empty in " : " is missing in ") +
               Visible(file);
    } catch (const Failure& failure) {
        return failure.what();
    }
}

SettingsEntry EntryIn(const std::string& file) {
    try {
        return {file, SettingsText::Read(file).LineOf(FileAttribute)};
    } catch (const Failure&) {
        return {file, 0};
    }
}

// Which variable leads to the settings is seen by the path, so that their order stays the
// library's business.
void AddSettingsPlace(Candidate& candidate, const std::string& file) {
    if (file.empty())
        return;
    candidate.settings = EntryIn(file);
    for (const char* variable : SettingsVariables) {
        const char* value = VELGetEnv(variable);
        if (value == nullptr || *value == '\0' || !file.starts_with(value))
            continue;
        candidate.variable = variable;
        candidate.value = value;
        return;
    }
}

Candidate FromSettings(FileChoice& choice) {
    Candidate candidate;
    candidate.origin = "settings";
    AddSettingsPlace(candidate, SettingsFile());
    VELUnicodeString value;
    VELSysSettingRepository* repository =
        VELSysSettingRepository::GetRepository(SettingsRepository, 0);
    if (repository != nullptr)
        repository->ReadAttr(FileAttribute, value);
    if (!value.IsEmpty())
        candidate.path = value.AsView();
    if (candidate.path)
        candidate.fault = ReasonAgainst(*candidate.path);
    if (choice.file)
        PassOver(candidate);
    else if (candidate.path)
        Take(choice, candidate);
    else
        candidate.reason = ReasonOfNoSetting(SettingsFile());
    return candidate;
}

std::string ReasonOfNoDefaultFile(const std::string& root) {
    if (root.empty())
        return "an empty entry means the root of the file system, which does not hold this file";
    if (Has(VELUnicodeString(root), VELFileInfo::Directory))
        return "the folder does not hold this file";
    // Behind a drive letter a colon is no slip.
    const bool hasColon = root.find(':', 2) != std::string::npos;
    return "there is no folder " + Visible(root) +
           (hasColon ? "; folders are separated by ';', not by ':'" : "");
}

Candidate FromRoot(FileChoice& choice, std::string_view root, int number) {
    Candidate candidate;
    candidate.origin = RootsVariable;
    candidate.variable = RootsVariable;
    candidate.value = root;
    candidate.root = number;
    candidate.path = DefaultFileBelow(root);
    const bool exists = VELFileAccess(VELUnicodeString(*candidate.path), 0) == 0;
    candidate.fault =
        exists ? ReasonAgainst(*candidate.path) : ReasonOfNoDefaultFile(*candidate.value);
    if (choice.file)
        PassOver(candidate);
    else if (exists)
        Take(choice, candidate);
    else
        candidate.reason = candidate.fault;
    return candidate;
}

void AddRoots(FileChoice& choice) {
    const char* value = VELGetEnv(RootsVariable);
    if (value == nullptr || *value == '\0') {
        Candidate none;
        none.origin = RootsVariable;
        none.variable = RootsVariable;
        if (value != nullptr)
            none.value = value;
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
    if (Has(path, VELFileInfo::Directory))
        return "it is a folder";
    if (!Has(path, VELFileInfo::RegularFile))
        return "it is not a regular file";
    return _VELFileAccess(path, 4, 0) < 0 ? "the file may not be read" : "";
}

} // namespace dyadctx::tool
