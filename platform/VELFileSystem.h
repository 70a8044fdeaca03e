// Questions about paths and files. In every path both `\` and `/` separate folders, on every
// system; the texts themselves are handed on as they were given.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELUnicodeString.h"

struct VELFileInfo {
    static constexpr unsigned int Directory = 0x4000;
    static constexpr unsigned int RegularFile = 0x8000;
    // Directory for a folder, RegularFile for a regular file, else neither bit.
    unsigned int mode = 0;
};

// Splits at the last separator. The folder comes without ending separator unless it is a root
// ("/", "C:\"); it is empty when the path has no separator.
VELDYADCTX_EXPORT void VELSplitPath(const VELUnicodeString& path, VELUnicodeString& folder,
                                    VELUnicodeString& name);

// Fills `info` for the file behind any links. 0 when that worked. Never opens the file.
VELDYADCTX_EXPORT int VELGetFileInfo(const VELUnicodeString& path, VELFileInfo& info);

// Modes: 0 exists, 2 may be written, 4 may be read. 0 when the answer is yes, else negative.
VELDYADCTX_EXPORT int VELFileAccess(const VELUnicodeString& path, int mode);
VELDYADCTX_EXPORT int _VELFileAccess(const VELUnicodeString& path, int mode, int flags);
