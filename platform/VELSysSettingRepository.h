// Named repositories of settings.
//
// The built-in ones are TOML files: repository R is the file R.toml, its attributes are the
// top-level texts of that file, in the folder named by the environment variable VELSettingPath,
// else in $XDG_CONFIG_HOME/dyadctx or ~/.config/dyadctx, on Windows in %APPDATA%\dyadctx.
#pragma once

#include "platform/VELExport.h"
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
