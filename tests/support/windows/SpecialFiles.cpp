// SPDX-License-Identifier: MIT
// What Windows does not have cannot be made: the tests that need it are listed in
// tests/windows-skips.txt.
#include "support/SpecialFiles.h"

#include "platform/detail/SettingsLock.h"

#include <future>
#include <stdexcept>
#include <thread>

namespace dyadctx::test {

namespace {

[[noreturn]] void Refuse(const std::string& what) {
    throw std::runtime_error("this system has no " + what);
}

} // namespace

bool MakeFifo(const std::string&) {
    return false;
}

bool MakeLink(const std::string&, const std::string&) {
    return false;
}

bool MakeSocket(const std::string&) {
    return false;
}

bool MakeBlockDevice(const std::string&) {
    return false;
}

OpenFile::OpenFile(const std::string&, Way) : number_(-1) {
    Refuse("descriptors with a path");
}

OpenFile OpenFile::ToClosedPipe() {
    Refuse("descriptors with a path");
}

OpenFile::~OpenFile() = default;

void OpenFile::Write(const std::string&) const {}

std::string OpenFile::Read(std::size_t) const {
    return {};
}

// Held by a thread of its own, as the thread that has it locked may lock it again.
struct FolderLock::Held {
    std::promise<bool> locked;
    std::promise<void> isOver;
    std::thread holder;
};

FolderLock::FolderLock(const std::string& folder) : held_(std::make_unique<Held>()) {
    held_->holder = std::thread([held = held_.get(), folder] {
        const SettingsLock lock{VELUnicodeString(folder)};
        held->locked.set_value(lock.IsHeld());
        held->isOver.get_future().wait();
    });
    if (!held_->locked.get_future().get())
        throw std::runtime_error("cannot lock " + folder);
}

FolderLock::~FolderLock() {
    held_->isOver.set_value();
    held_->holder.join();
}

bool IsPipeSignalPending() {
    return false;
}

bool IsPipeSignalBlocked() {
    return false;
}

void RaiseBlockedPipeSignal() {}

void DropBlockedPipeSignal() {}

FileRights RightsOf(const std::string&) {
    return {};
}

void SetRights(const std::string&, const FileRights&) {
    Refuse("owners and rights bits");
}

bool IsSuperUser() {
    return false;
}

} // namespace dyadctx::test
