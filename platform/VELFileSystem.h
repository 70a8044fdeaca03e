// Questions about paths and files, and the replacement of a file. In every path both `\` and `/`
// separate folders, on every system; the texts themselves are handed on as they were given.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"

#include <string_view>

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

// Why VELReplaceFile refused.
struct VELFileRefusal {
    enum class Kind {
        None,
        // No file can have this path: its folder does not exist, its links lead nowhere.
        PathNotUsable,
        // A folder, a socket, a block device, or what another process has open.
        NotReplaceable,
        // The file may not be written.
        NotPermitted,
        // Its folder permits no new file, whether or not the file itself may be written.
        FolderNotPermitted,
        // A FIFO from which nobody reads.
        NoReader,
        // The system failed while writing, for example on a full disk.
        NotWritten,
        NoMemory
    };
    Kind kind = Kind::None;
    // For people, in the system's words where it has any: "No space left on device". Empty when
    // there is no memory for it.
    VELUnicodeString reason;
};

// Makes `content` the whole content of the file, which may be new. At every moment, also when the
// process or the machine dies, the file holds either what it held before or all of `content`. S_OK,
// or E_FAIL with the former file untouched and nothing left over; `refusal`, where it is not null,
// then says why. Throws nothing. Folders are not created.
//
// - The file at the end of symbolic links is replaced, and the links stay. Hard links to it keep
//   the former content.
// - An existing file keeps mode, owner and group. Where the system does not let the writer keep the
//   owner, the writer owns it and the set-id bits are cleared; where the group cannot be kept,
//   group rights are cleared too, and others keep only what the group had.
// - A character device or FIFO is opened without waiting and written directly. So is an open
//   descriptor of this process (/dev/stdout, /dev/stderr, /dev/fd/N, /proc/self/fd/N), at its own
//   offset, past what a stream of the process still buffers. What these took before a failure
//   cannot be undone. A reader that goes away raises no signal.
VELDYADCTX_EXPORT VELResult VELReplaceFile(const VELUnicodeString& path, std::string_view content,
                                           VELFileRefusal* refusal = nullptr) noexcept;
