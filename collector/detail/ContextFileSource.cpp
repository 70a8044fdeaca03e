#include "collector/detail/ContextFileSource.h"

#include "platform/VELFileSystem.h"

namespace dyadctx {

namespace {

constexpr std::string_view ContextFileExtension = "xml";
constexpr int Exists = 0;
constexpr int ReadAccess = 4;

bool HasMode(const VELUnicodeString& path, unsigned int mode) {
    VELFileInfo info;
    return VELGetFileInfo(path, info) == 0 && (info.mode & mode) != 0;
}

bool IsReadable(const VELUnicodeString& path) {
    return _VELFileAccess(path, ReadAccess, 0) >= 0;
}

bool HasContextFileExtension(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot != std::string_view::npos && name.substr(dot + 1) == ContextFileExtension;
}

} // namespace

bool ContainsDefaultContextFile(const VELUnicodeString& path) noexcept {
    return path.AsView().find(DefaultContextFile) != std::string_view::npos;
}

VELUnicodeString FindDefaultContextFile(const VELUnicodeString& roots) {
    std::string_view rest = roots.AsView();
    for (;;) {
        const std::size_t end = rest.find(';');
        VELUnicodeString candidate(rest.substr(0, end));
        candidate.Append(DefaultContextFile);
        if (VELFileAccess(candidate, Exists) == 0)
            return candidate;
        if (end == std::string_view::npos)
            return {};
        rest.remove_prefix(end + 1);
    }
}

ContextFileVerdict JudgeContextFile(const VELUnicodeString& path) {
    VELUnicodeString folder;
    VELUnicodeString name;
    VELSplitPath(path, folder, name);
    if (folder.IsEmpty())
        return ContextFileVerdict::NoFolder;
    if (!HasMode(folder, VELFileInfo::Directory))
        return ContextFileVerdict::FolderMissing;
    if (!IsReadable(folder))
        return ContextFileVerdict::FolderUnreadable;
    if (name.IsEmpty())
        return ContextFileVerdict::NoName;
    if (!HasContextFileExtension(name.AsView()))
        return ContextFileVerdict::WrongExtension;
    if (!HasMode(path, VELFileInfo::RegularFile))
        return ContextFileVerdict::NoRegularFile;
    return IsReadable(path) ? ContextFileVerdict::Usable : ContextFileVerdict::Unreadable;
}

} // namespace dyadctx
