// SPDX-License-Identifier: MIT
#include "collector/detail/ContextFileSource.h"

#include "platform/VELFileSystem.h"
#include "platform/VELSysSettingRepository.h"

namespace dyadctx {

namespace {

constexpr std::string_view ContextFileExtension = "xml";
// As the value of VELDyadCtxInit.
constexpr std::string_view NoContextFile = "0";
constexpr int Exists = 0;
constexpr int ReadAccess = 4;

bool IsFolder(const VELUnicodeString& path) {
    VELFileInfo info;
    return VELGetFileInfo(path, info) == 0 && (info.mode & VELFileInfo::Directory) != 0;
}

bool IsReadable(const VELUnicodeString& path) {
    return _VELFileAccess(path, ReadAccess, 0) >= 0;
}

bool HasContextFileExtension(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot != std::string_view::npos && name.substr(dot + 1) == ContextFileExtension;
}

VELDyadCtxPathVerdict JudgeFile(const VELUnicodeString& path) {
    VELFileInfo info;
    if (VELGetFileInfo(path, info) != 0)
        return VELDyadCtxPathVerdict::Missing;
    if ((info.mode & VELFileInfo::Directory) != 0)
        return VELDyadCtxPathVerdict::IsFolder;
    if ((info.mode & VELFileInfo::RegularFile) == 0)
        return VELDyadCtxPathVerdict::NotRegular;
    return IsReadable(path) ? VELDyadCtxPathVerdict::Usable : VELDyadCtxPathVerdict::Unreadable;
}

} // namespace

bool ContainsDefaultContextFile(const VELUnicodeString& path) noexcept {
    return path.AsView().find(DefaultContextFile) != std::string_view::npos;
}

InitChoice InitChoiceOf(const VELUnicodeString& setting) noexcept {
    if (setting.GetLengthInChar() != 1)
        return InitChoice::Path;
    return setting.AsView() == NoContextFile ? InitChoice::NoFile : InitChoice::Installed;
}

VELUnicodeString FileOfSettings() {
    VELUnicodeString file;
    VELSysSettingRepository* settings =
        VELSysSettingRepository::GetRepository(SettingsRepository, 0);
    if (settings != nullptr)
        settings->ReadAttr(SettingsAttribute, file);
    return file;
}

bool RootList::Next(std::string_view& root) noexcept {
    if (isDone_)
        return false;
    const std::size_t end = rest_.find(';');
    root = rest_.substr(0, end);
    isDone_ = end == std::string_view::npos;
    if (!isDone_)
        rest_.remove_prefix(end + 1);
    return true;
}

VELUnicodeString DefaultFileBelow(std::string_view root) {
    VELUnicodeString path(root);
    path.Append(DefaultContextFile);
    return path;
}

bool IsThere(const VELUnicodeString& path) {
    return VELFileAccess(path, Exists) == 0;
}

VELUnicodeString FindDefaultContextFile(const VELUnicodeString& roots) {
    RootList list(roots.AsView());
    for (std::string_view root; list.Next(root);) {
        VELUnicodeString candidate = DefaultFileBelow(root);
        if (IsThere(candidate))
            return candidate;
    }
    return {};
}

VELDyadCtxPathVerdict JudgeContextFile(const VELUnicodeString& path) {
    VELUnicodeString folder;
    VELUnicodeString name;
    VELSplitPath(path, folder, name);
    if (folder.IsEmpty())
        return VELDyadCtxPathVerdict::NoFolder;
    if (!IsFolder(folder))
        return VELDyadCtxPathVerdict::FolderMissing;
    if (!IsReadable(folder))
        return VELDyadCtxPathVerdict::FolderUnreadable;
    if (name.IsEmpty())
        return VELDyadCtxPathVerdict::NoName;
    if (!HasContextFileExtension(name.AsView()))
        return VELDyadCtxPathVerdict::WrongExtension;
    return JudgeFile(path);
}

} // namespace dyadctx
