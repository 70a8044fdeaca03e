// Named repositories of settings.
//
// The built-in ones are TOML files: repository R is the file R.toml, its attributes are the
// top-level texts of that file, in the folder named by the environment variable VELSettingPath,
// else in $XDG_CONFIG_HOME/dyadctx or ~/.config/dyadctx, on Windows in %APPDATA%\dyadctx.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELListVal.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"

// What a host implements to keep settings elsewhere.
class VELDYADCTX_EXPORT VELSysSettingSource {
public:
    virtual ~VELSysSettingSource();
    virtual bool HasRepository(const char* repository) = 0;
    // S_OK and the value, or a negative code when there is no such attribute.
    virtual VELResult Read(const char* repository, const char* attribute,
                           VELUnicodeString& value) = 0;
    // Give an attribute a value, making the repository where there is none, and remove one. Unless
    // a host overrides them they refuse.
    virtual VELResult Set(const char* repository, const char* attribute,
                          const VELUnicodeString& value);
    virtual VELResult Remove(const char* repository, const char* attribute);
};

// Why a repository could not be read or changed.
struct VELSettingRefusal {
    enum class Kind {
        None,
        NoFolder,    // the environment names no folder, or the name is none of a repository
        NoFile,      // there is no file
        NotReadable, // there is something that cannot be read, or that is no regular file
        NotToml,     // the file is not TOML, or larger than settings may be
        NoAttribute, // the file has no such attribute at its top level
        NotText,     // the attribute is something other than a text
        BadValue,    // the name or the new value is no UTF-8 text
        NotAlone,    // the attribute cannot be changed without changing others
        NotLocked,   // others were changing the settings for more than five seconds
        NotWritten,  // the file or its folder cannot be written
        NotOffered,  // the host's source does not do this
        NoMemory
    };
    Kind kind = Kind::None;
    // For people, in the system's words where it has any.
    VELUnicodeString reason;
    // The place in the file, from 1; 0 without one.
    int line = 0;
    int column = 0;

    bool IsRefusal() const noexcept { return kind != Kind::None; }
};

// An attribute that is a text, and the place of its value in the file, from 1.
struct VELSetting {
    VELUnicodeString name;
    VELUnicodeString value;
    int line = 0;
    int column = 0;
};

class VELDYADCTX_EXPORT VELSysSettingRepository {
public:
    // The repository of that name; null when there is none. It is read afresh at each call and
    // belongs to the library; use it before the same thread asks again. `mode` is 0.
    static VELSysSettingRepository* GetRepository(const char* name, int mode);

    // The text of an attribute. Where it is missing or not a text, the code is negative and `out`
    // as before.
    VELResult ReadAttr(const char* attribute, VELUnicodeString& out);

    // The file that holds a built-in repository, whether or not it is there. E_FAIL, and `file` as
    // before, when the environment names no folder for it.
    static VELResult GetRepositoryFile(const char* name, VELUnicodeString& file);

    // What follows works on a repository by name, whether or not it exists yet. S_OK, or a negative
    // code with everything as it was; `refusal`, where it is not null, then says why. Nothing is
    // thrown.

    // The same as ReadAttr.
    static VELResult GetAttr(const char* repository, const char* attribute, VELUnicodeString& value,
                             VELSettingRefusal* refusal = nullptr) noexcept;
    // The attributes of a built-in repository that are texts, in the order of the file.
    static VELResult ListAttrs(const char* repository, VELListVal<VELSetting>& attributes,
                               VELSettingRefusal* refusal = nullptr) noexcept;
    // Give an attribute a value, and remove one. All other lines and comments of the file stay as
    // they are; a missing file and its folder are made. The settings folder is locked meanwhile, so
    // that no change of another process or thread is lost; nothing of the lock is left behind. The
    // file is replaced as VELReplaceFile does it.
    static VELResult SetAttr(const char* repository, const char* attribute,
                             const VELUnicodeString& value,
                             VELSettingRefusal* refusal = nullptr) noexcept;
    static VELResult RemoveAttr(const char* repository, const char* attribute,
                                VELSettingRefusal* refusal = nullptr) noexcept;

    // Puts a host's source in place of the built-in files and gives the one it replaces (null for
    // the built-in files). Null puts the files back. The source stays the host's.
    static VELSysSettingSource* SetSource(VELSysSettingSource* source) noexcept;
    // Whether a host's source is there.
    static bool HasHostSource() noexcept;

private:
    VELSysSettingRepository() = default;
    VELUnicodeString name_;
    VELSysSettingSource* source_ = nullptr;
};
