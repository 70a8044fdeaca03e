// SPDX-License-Identifier: MIT
// Which context file CreateCollector chooses, and why: every place such a file may come from, in
// the library's order.
//
// VELDyadCtxInit and VELInstallPath count as they were when the library was loaded, the settings
// and the disk as they are when Run is called. CreateCollector stops at the first candidate that
// decides; this looks at all of them, opens no context file and writes no trace. An object is used
// from one thread at a time. No operation throws.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELListVal.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"

enum class VELDyadCtxFileOrigin {
    Variable,          // VELDyadCtxInit
    Settings,          // the attribute DYAD_Ctx_XmlFile of the repository DyadSettingsRep
    InstallationFolder // one of the folders of VELInstallPath
};

enum class VELDyadCtxFileVerdict {
    Chosen,   // CreateCollector reads this file
    Rejected, // CreateCollector takes it, and then refuses it
    Absent,   // no file comes from there
    Ignored   // an earlier candidate decided
};

// Whether the library reads the file of that path: the first of these that applies.
enum class VELDyadCtxPathVerdict {
    NoFolder, // a name alone, without a folder before it
    FolderMissing,
    FolderUnreadable,
    NoName,
    WrongExtension, // other than .xml in lower case
    Missing,
    IsFolder,
    NotRegular,
    Unreadable,
    Usable
};

// Why no file comes from a place.
enum class VELDyadCtxFileAbsence {
    None,       // one does
    NotSet,     // the variable is not set
    Empty,      // the variable is empty
    LeftToNext, // VELDyadCtxInit is a single character
    TurnedOff,  // VELDyadCtxInit is "0": no file at all, whatever comes next
    NoSettingsFolder,
    SettingsMissing,
    SettingsUnreadable,
    SettingsBroken, // they are not TOML
    AttributeMissing,
    AttributeEmpty,
    AttributeNotText,
    FolderMissing,
    NoDefaultFile // the folder is there without the default file below it
};

struct VELDyadCtxFileCandidate {
    VELDyadCtxFileOrigin origin = VELDyadCtxFileOrigin::Variable;
    // The environment variable it comes from; for the settings the one that determines their
    // folder. Empty if there is none.
    VELUnicodeString variable;
    // Whether that variable is set; its value, or of VELInstallPath this entry.
    bool isSet = false;
    VELUnicodeString value;
    // The file of the settings and the line of the attribute, or of what is wrong there, from 1;
    // empty and 0 if there is none, and for the settings of a host.
    VELUnicodeString settingsFile;
    int settingsLine = 0;
    int settingsColumn = 0;
    // What is wrong with a settings file that is not TOML.
    VELUnicodeString settingsFault;
    // The number of the installation folder in its list, from 1; 0 for the other origins.
    int folder = 0;
    // The path, which may be empty; for an installation folder set even if there is no file.
    bool hasPath = false;
    VELUnicodeString path;
    // The library's verdict on the path, decisive or not.
    VELDyadCtxPathVerdict pathVerdict = VELDyadCtxPathVerdict::NoFolder;
    VELDyadCtxFileAbsence absence = VELDyadCtxFileAbsence::None;
    VELDyadCtxFileVerdict verdict = VELDyadCtxFileVerdict::Absent;
};

class VELDYADCTX_EXPORT VELDyadCtxFileChoice {
public:
    VELDyadCtxFileChoice() noexcept;
    ~VELDyadCtxFileChoice();
    VELDyadCtxFileChoice(const VELDyadCtxFileChoice&) = delete;
    VELDyadCtxFileChoice& operator=(const VELDyadCtxFileChoice&) = delete;

    // Looks at every place. E_FAIL without memory; there are then no candidates.
    VELResult Run();

    // ---- What came of it, until the next Run ---------------------------------------------------
    // One for VELDyadCtxInit, one for the settings, and one for each installation folder, or one
    // where VELInstallPath names none.
    int GetNbCandidates() const noexcept { return candidates_.Size(); }
    // Positions from 1.
    const VELDyadCtxFileCandidate& GetCandidateAt(int index) const { return candidates_[index]; }
    // The position of the candidate that is Chosen or Rejected; 0 when there is none.
    int GetDecidingIndex() const noexcept { return deciding_; }
    // The file CreateCollector chooses, readable or not; empty without one. `isDefault` becomes 1
    // when it counts as the installation's default file, else 0.
    const VELUnicodeString& GetFile(unsigned char& isDefault) const noexcept;
    // Whether CreateCollector can read it.
    bool IsUsable() const noexcept;

    // The library's verdict on a path before it opens the file.
    static VELDyadCtxPathVerdict CheckPath(const VELUnicodeString& path) noexcept;

private:
    VELListVal<VELDyadCtxFileCandidate> candidates_;
    int deciding_ = 0;
    VELUnicodeString file_;
    unsigned char isDefault_ = 0;
};
