// SPDX-License-Identifier: MIT
// Queries on paths and files, and safe file replacement. Both `\` and `/` separate folders on every
// system; returned paths keep the separators they were given with.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"

#include <string_view>

struct VELFileInfo {
    static constexpr unsigned int Directory = 0x4000;
    static constexpr unsigned int RegularFile = 0x8000;
    // Directory for a folder, RegularFile for a regular file, else neither.
    unsigned int mode = 0;
};

// Splits at the last separator. The folder has no trailing separator unless it is a root ("/",
// "C:\"); it is empty when the path has no separator.
VELDYADCTX_EXPORT void VELSplitPath(const VELUnicodeString& path, VELUnicodeString& folder,
                                    VELUnicodeString& name);

// Fills `info`, following links, without opening the file. Returns 0 on success.
VELDYADCTX_EXPORT int VELGetFileInfo(const VELUnicodeString& path, VELFileInfo& info);

// Modes: 0 exists, 2 writable, 4 readable. Returns 0 for yes, else a negative number.
VELDYADCTX_EXPORT int VELFileAccess(const VELUnicodeString& path, int mode);
VELDYADCTX_EXPORT int _VELFileAccess(const VELUnicodeString& path, int mode, int flags);

// Why VELReplaceFile refused.
struct VELFileRefusal {
    enum class Kind {
        None,
        // No file can have this path: its folder does not exist, or a link is broken.
        PathNotUsable,
        // A folder, a socket, a block device, or open in another process.
        NotReplaceable,
        // The file is not writable.
        NotPermitted,
        // Its folder permits no new file, even if the file itself is writable.
        FolderNotPermitted,
        // A FIFO without a reader.
        NoReader,
        // The write failed, for example on a full disk.
        NotWritten,
        NoMemory
    };
    Kind kind = Kind::None;
    // For people, in the system's words where it has any: "No space left on device". Empty when
    // memory runs out.
    VELUnicodeString reason;
};

// Replaces the content of a new or existing file. At every moment, even if the process or the
// machine dies, the file holds either its former content or all of `content`. Returns S_OK, or
// E_FAIL with the former file untouched and nothing left over; a non-null `refusal` then says why.
// Throws nothing. Creates no folders.
//
// - Symbolic links stay and their target is replaced. Hard links keep the former content.
// - An existing file keeps mode, owner and group. If the system does not let the writer keep the
//   owner, the writer owns it and the set-id bits are cleared; if the group cannot be kept, group
//   rights are cleared too, and others keep only what the group had.
// - A character device or FIFO is opened without waiting and written directly. So is an open
//   descriptor of this process (/dev/stdout, /dev/stderr, /dev/fd/N, /proc/self/fd/N), at its own
//   offset, bypassing what a stream of the process still buffers. What was written before a failure
//   cannot be undone. A reader that goes away raises no signal.
// - On Windows a file keeps its access list and attributes; while another program has it
//   open, it is tried again for up to a second. Names of old devices (NUL, con.xml) are refused.
VELDYADCTX_EXPORT VELResult VELReplaceFile(const VELUnicodeString& path, std::string_view content,
                                           VELFileRefusal* refusal = nullptr) noexcept;
