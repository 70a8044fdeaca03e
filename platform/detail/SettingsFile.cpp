// SPDX-License-Identifier: MIT
#include "platform/detail/SettingsFile.h"

#include "platform/VELEnvironment.h"
#include "platform/VELFileSystem.h"
#include "platform/detail/FileReader.h"
#include "platform/detail/NativePath.h"
#include "platform/detail/SettingsLock.h"
#include "platform/detail/SettingsText.h"
#include "platform/detail/SystemMessage.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <utility>

namespace dyadctx {

namespace {

using Kind = VELSettingRefusal::Kind;

constexpr std::string_view FileEnding = ".toml";
// Far more than settings need; larger files are not read.
constexpr std::size_t LargestFile = std::size_t{4} << 20;

bool IsPlainName(std::string_view name) {
    return !name.empty() && name.find('\0') == std::string_view::npos &&
           std::none_of(name.begin(), name.end(), IsSeparator);
}

// The system's reason if it has one, else ours.
VELSettingRefusal RefusalOf(Kind kind, std::string_view what, int code = 0) {
    return {kind, VELUnicodeString(code != 0 ? SystemMessage(code) : std::string(what))};
}

bool MeansNoFile(int code) {
    const std::error_code error(code, std::system_category());
    return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
}

VELSettingRefusal OpenFile(const VELUnicodeString& path, FileReader& file) {
    if (path.IsEmpty())
        return RefusalOf(Kind::NoFile, "the file does not exist");
    if (file.Open(path))
        return {};
    if (MeansNoFile(file.Failure()))
        return RefusalOf(Kind::NoFile, "the file does not exist");
    return RefusalOf(Kind::NotReadable, "it is not a regular file", file.Failure());
}

} // namespace

SettingsFolder FindSettingsFolder() {
    constexpr const char* variable = "VELSettingPath";
    const char* named = VELGetEnv(variable);
    if (named != nullptr && *named != '\0')
        return {VELUnicodeString(named), variable};
    return UserSettingsFolder();
}

VELUnicodeString SettingsFilePath(const VELUnicodeString& repository) {
    VELUnicodeString path = FindSettingsFolder().path;
    if (path.IsEmpty() || !IsPlainName(repository.AsView()))
        return {};
    const char separator = SystemSeparator();
    path.Append(std::string_view(&separator, 1)).Append(repository).Append(FileEnding);
    return path;
}

VELSettingRefusal ReadSettingsFile(const VELUnicodeString& path, std::string& text) {
    FileReader file;
    VELSettingRefusal refusal = OpenFile(path, file);
    if (refusal.IsRefusal())
        return refusal;
    if (!ReadWhole(file, LargestFile, text))
        return RefusalOf(Kind::NotReadable, "", file.Failure());
    if (text.size() > LargestFile)
        return RefusalOf(Kind::NotToml, "it is too large for settings");
    return {};
}

VELSettingRefusal FindSetting(const VELUnicodeString& path, const char* attribute,
                              VELSetting& setting) {
    std::string text;
    VELSettingRefusal refusal = ReadSettingsFile(path, text);
    return refusal.IsRefusal() ? refusal : ReadSetting(text, attribute, setting);
}

namespace {

VELSettingRefusal ReadAndChange(const VELUnicodeString& path, const SettingsChange& change,
                                std::string& text) {
    VELSettingRefusal refusal = ReadSettingsFile(path, text);
    if (refusal.IsRefusal() && refusal.kind != Kind::NoFile)
        return refusal;
    return change(text);
}

VELSettingRefusal Replace(const VELUnicodeString& path, std::string_view text) {
    VELFileRefusal refusal;
    if (VELReplaceFile(path, text, &refusal) >= 0)
        return {};
    const bool noMemory = refusal.kind == VELFileRefusal::Kind::NoMemory;
    return {noMemory ? Kind::NoMemory : Kind::NotWritten, std::move(refusal.reason)};
}

} // namespace

VELSettingRefusal ChangeSettingsFile(const VELUnicodeString& path, const SettingsChange& change) {
    // A change that is refused anyway must not create a folder.
    std::string text;
    VELSettingRefusal refusal = ReadAndChange(path, change, text);
    if (refusal.IsRefusal())
        return refusal;
    VELUnicodeString folder;
    VELUnicodeString name;
    VELSplitPath(path, folder, name);
    if (const int code = MakeSettingsFolder(folder))
        return RefusalOf(Kind::NotWritten, "", code);
    const SettingsLock lock(folder);
    if (!lock.IsHeld())
        return RefusalOf(lock.Code() != 0 ? Kind::NotWritten : Kind::NotLocked,
                         "another process has had the settings locked for five seconds",
                         lock.Code());
    text.clear();
    refusal = ReadAndChange(path, change, text);
    return refusal.IsRefusal() ? refusal : Replace(path, text);
}

} // namespace dyadctx
