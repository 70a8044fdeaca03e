// SPDX-License-Identifier: MIT
// Files that the standard library cannot make, and the rights of files.
#pragma once

#include <memory>
#include <string>

namespace dyadctx::test {

// False where the system has none of these, or this process may not make one.
bool MakeFifo(const std::string& path);
bool MakeSocket(const std::string& path);
bool MakeBlockDevice(const std::string& path);
bool MakeLink(const std::string& target, const std::string& path);

// An open file, FIFO or end of a pipe, which goes with this object. Opening never waits.
class OpenFile {
public:
    enum class Way { Read, Write };
    OpenFile(const std::string& path, Way way);
    // The writing end of a pipe from which nobody reads any more.
    static OpenFile ToClosedPipe();
    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int Number() const { return number_; }
    void Write(const std::string& text) const;
    // What comes, waiting for it, up to that size.
    std::string Read(std::size_t size) const;

private:
    explicit OpenFile(int number) : number_(number) {}
    int number_;
};

// Has a folder locked from construction to destruction, as a process that changes settings has.
class FolderLock {
public:
    explicit FolderLock(const std::string& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    struct Held;
    std::unique_ptr<Held> held_;
};

// The signal of a write that nobody reads, in this thread.
bool IsPipeSignalPending();
bool IsPipeSignalBlocked();
// Blocks the signal and lets it wait, or takes that back.
void RaiseBlockedPipeSignal();
void DropBlockedPipeSignal();

struct FileRights {
    unsigned int mode;
    unsigned int owner;
    unsigned int group;
    bool operator==(const FileRights&) const = default;
};

FileRights RightsOf(const std::string& path);
void SetRights(const std::string& path, const FileRights& rights);

// The super-user may do what the rights of files deny.
bool IsSuperUser();

} // namespace dyadctx::test
