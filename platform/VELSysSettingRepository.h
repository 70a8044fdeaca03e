// SPDX-License-Identifier: MIT
// Named repositories of settings.
//
// The built-in ones are TOML files: repository R is the file R.toml, its attributes are that file's
// top-level strings. The folder is the environment variable VELSettingPath, else
// $XDG_CONFIG_HOME/dyadctx or ~/.config/dyadctx, on Windows %APPDATA%\dyadctx.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELListVal.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"

// Implemented by a host to keep settings elsewhere.
class VELDYADCTX_EXPORT VELSysSettingSource {
public:
    virtual ~VELSysSettingSource();
    virtual bool HasRepository(const char* repository) = 0;
    // S_OK and the value; a negative code when there is no such attribute.
    virtual VELResult Read(const char* repository, const char* attribute,
                           VELUnicodeString& value) = 0;
    // Set an attribute, creating the repository if needed, and remove one. Refuse unless
    // overridden.
    virtual VELResult Set(const char* repository, const char* attribute,
                          const VELUnicodeString& value);
    virtual VELResult Remove(const char* repository, const char* attribute);
};

// Why a repository could not be read or changed.
struct VELSettingRefusal {
    enum class Kind {
        None,
        NoFolder,    // the environment names no folder, or the repository name is invalid
        NoFile,      // the file does not exist
        NotReadable, // the file cannot be read, or is not a regular file
        NotToml,     // the file is not TOML, or too large
        NoAttribute, // the file has no such top-level attribute
        NotText,     // the attribute is not a string
        BadValue,    // the name or the new value is not UTF-8
        NotAlone,    // the attribute cannot be changed without changing others
        NotLocked,   // others held the lock for more than five seconds
        NotWritten,  // the file or its folder cannot be written
        NotOffered,  // the host's source does not support this
        NoMemory
    };
    Kind kind = Kind::None;
    // For people, in the system's words where it has any.
    VELUnicodeString reason;
    // The place in the file, from 1; 0 if unknown.
    int line = 0;
    int column = 0;

    bool IsRefusal() const noexcept { return kind != Kind::None; }
};

// A string attribute and the place of its value in the file, from 1.
struct VELSetting {
    VELUnicodeString name;
    VELUnicodeString value;
    int line = 0;
    int column = 0;
};

class VELDYADCTX_EXPORT VELSysSettingRepository {
public:
    // The repository of that name; null if none. Read afresh at each call and owned by the library;
    // valid until the same thread's next call. `mode` is 0.
    static VELSysSettingRepository* GetRepository(const char* name, int mode);

    // The string value of an attribute. If it is missing or not a string, the code is negative and
    // `out` unchanged.
    VELResult ReadAttr(const char* attribute, VELUnicodeString& out);

    // The path of a built-in repository's file, whether or not it exists. E_FAIL, with `file`
    // unchanged, when the environment names no folder for it.
    static VELResult GetRepositoryFile(const char* name, VELUnicodeString& file);

    // These work on a repository by name, whether or not it exists yet. They return S_OK, or a
    // negative code with everything unchanged; a non-null `refusal` then says why. They throw
    // nothing.

    // Like ReadAttr.
    static VELResult GetAttr(const char* repository, const char* attribute, VELUnicodeString& value,
                             VELSettingRefusal* refusal = nullptr) noexcept;
    // The string attributes of a built-in repository, in file order.
    static VELResult ListAttrs(const char* repository, VELListVal<VELSetting>& attributes,
                               VELSettingRefusal* refusal = nullptr) noexcept;
    // Set and remove an attribute. All other lines and comments stay as they are; a missing file
    // and its folder are created. The settings folder is locked meanwhile, so that no change by
    // another process or thread is lost; the lock leaves nothing on disk. The file is replaced as
    // by VELReplaceFile.
    static VELResult SetAttr(const char* repository, const char* attribute,
                             const VELUnicodeString& value,
                             VELSettingRefusal* refusal = nullptr) noexcept;
    static VELResult RemoveAttr(const char* repository, const char* attribute,
                                VELSettingRefusal* refusal = nullptr) noexcept;

    // Replaces the built-in files with a host's source and returns the previous one (null for the
    // built-in files). Null restores them. The host keeps ownership.
    static VELSysSettingSource* SetSource(VELSysSettingSource* source) noexcept;
    // Whether a host's source is set.
    static bool HasHostSource() noexcept;

private:
    VELSysSettingRepository() = default;
    VELUnicodeString name_;
    VELSysSettingSource* source_ = nullptr;
};
