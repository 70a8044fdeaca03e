// SPDX-License-Identifier: MIT
#include "platform/VELSysSettingRepository.h"

#include "platform/detail/SettingsFile.h"
#include "platform/detail/SettingsText.h"

#include <atomic>
#include <new>
#include <utility>

namespace {

using Kind = VELSettingRefusal::Kind;

// Reads a repository's file and returns the result of `use` on its text.
template<class Use>
VELSettingRefusal WithText(const char* repository, const Use& use) {
    std::string text;
    const VELUnicodeString path = dyadctx::SettingsFilePath(repository);
    VELSettingRefusal refusal = dyadctx::ReadSettingsFile(path, text);
    return refusal.IsRefusal() ? refusal : use(text);
}

VELSettingRefusal Change(const char* repository, const dyadctx::SettingsChange& change) {
    const VELUnicodeString path = dyadctx::SettingsFilePath(repository);
    if (path.IsEmpty())
        return {Kind::NoFolder, "the environment names no folder for this repository"};
    return dyadctx::ChangeSettingsFile(path, change);
}

VELSettingRefusal SetInFile(const char* repository, const char* attribute,
                            const VELUnicodeString& value) {
    return Change(repository, [&](std::string& text) {
        return dyadctx::SetSetting(text, attribute, value.AsView());
    });
}

VELSettingRefusal RemoveFromFile(const char* repository, const char* attribute) {
    return Change(repository,
                  [&](std::string& text) { return dyadctx::RemoveSetting(text, attribute); });
}

VELSettingRefusal ReadFromFile(const char* repository, const char* attribute,
                               VELUnicodeString& value) {
    VELSetting setting;
    const VELUnicodeString path = dyadctx::SettingsFilePath(repository);
    VELSettingRefusal refusal = dyadctx::FindSetting(path, attribute, setting);
    if (!refusal.IsRefusal())
        value = std::move(setting.value);
    return refusal;
}

VELResult CodeOf(const VELSettingRefusal& refusal) {
    return refusal.IsRefusal() ? E_FAIL : S_OK;
}

class SettingsFiles final : public VELSysSettingSource {
public:
    bool HasRepository(const char* repository) override {
        return !WithText(repository, dyadctx::CheckSettings).IsRefusal();
    }
    VELResult Read(const char* repository, const char* attribute,
                   VELUnicodeString& value) override {
        return CodeOf(ReadFromFile(repository, attribute, value));
    }
};

std::atomic<VELSysSettingSource*> hostSource{nullptr};

// Runs an operation on a repository and returns its result: `ask` with a host's source, `act` on
// the built-in files.
template<class Ask, class Act>
VELResult Perform(const char* repository, VELSettingRefusal* refusal, const Ask& ask,
                  const Act& act) noexcept {
    VELSettingRefusal result;
    VELResult code = E_FAIL;
    try {
        VELSysSettingSource* host = hostSource.load(std::memory_order_acquire);
        if (repository == nullptr) {
            result = {Kind::NoFolder, "a repository needs a name"};
        } else if (host != nullptr) {
            code = ask(*host);
            if (code < 0)
                result = {Kind::NotOffered, "the program's own settings refuse this"};
        } else {
            result = act();
            code = CodeOf(result);
        }
    } catch (const std::bad_alloc&) {
        result.kind = Kind::NoMemory;
    } catch (...) {
        result.kind = Kind::NotOffered;
    }
    if (refusal != nullptr)
        *refusal = std::move(result);
    return code;
}

} // namespace

VELSysSettingSource::~VELSysSettingSource() = default;

VELResult VELSysSettingSource::Set(const char*, const char*, const VELUnicodeString&) {
    return E_FAIL;
}

VELResult VELSysSettingSource::Remove(const char*, const char*) {
    return E_FAIL;
}

VELSysSettingRepository* VELSysSettingRepository::GetRepository(const char* name, int) {
    // One per thread, which the caller may use until its next call.
    thread_local VELSysSettingRepository repository;
    static SettingsFiles files;
    if (name == nullptr)
        return nullptr;
    try {
        VELSysSettingSource* host = hostSource.load(std::memory_order_acquire);
        VELSysSettingSource* source = host != nullptr ? host : &files;
        if (!source->HasRepository(name))
            return nullptr;
        repository.name_ = VELUnicodeString(name);
        repository.source_ = source;
        return &repository;
    } catch (...) {
        return nullptr;
    }
}

VELResult VELSysSettingRepository::ReadAttr(const char* attribute, VELUnicodeString& out) {
    if (attribute == nullptr || source_ == nullptr)
        return E_FAIL;
    try {
        VELUnicodeString value;
        const VELResult rc = source_->Read(name_.ConvertToChar(), attribute, value);
        if (rc >= 0)
            out = std::move(value);
        return rc;
    } catch (...) {
        return E_FAIL;
    }
}

VELResult VELSysSettingRepository::GetRepositoryFile(const char* name, VELUnicodeString& file) {
    if (name == nullptr)
        return E_FAIL;
    try {
        VELUnicodeString path = dyadctx::SettingsFilePath(name);
        if (path.IsEmpty())
            return E_FAIL;
        file = std::move(path);
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}

VELResult VELSysSettingRepository::GetAttr(const char* repository, const char* attribute,
                                           VELUnicodeString& value,
                                           VELSettingRefusal* refusal) noexcept {
    VELUnicodeString found;
    const char* name = attribute != nullptr ? attribute : "";
    const VELResult code = Perform(
        repository, refusal,
        [&](VELSysSettingSource& host) { return host.Read(repository, name, found); },
        [&] { return ReadFromFile(repository, name, found); });
    if (code >= 0)
        value = std::move(found);
    return code;
}

VELResult VELSysSettingRepository::ListAttrs(const char* repository,
                                             VELListVal<VELSetting>& attributes,
                                             VELSettingRefusal* refusal) noexcept {
    return Perform(
        repository, refusal, [](VELSysSettingSource&) { return E_FAIL; },
        [&] {
            return WithText(repository, [&](const std::string& text) {
                return dyadctx::ListSettings(text, attributes);
            });
        });
}

VELResult VELSysSettingRepository::SetAttr(const char* repository, const char* attribute,
                                           const VELUnicodeString& value,
                                           VELSettingRefusal* refusal) noexcept {
    const char* name = attribute != nullptr ? attribute : "";
    return Perform(
        repository, refusal,
        [&](VELSysSettingSource& host) { return host.Set(repository, name, value); },
        [&] { return SetInFile(repository, name, value); });
}

VELResult VELSysSettingRepository::RemoveAttr(const char* repository, const char* attribute,
                                              VELSettingRefusal* refusal) noexcept {
    const char* name = attribute != nullptr ? attribute : "";
    return Perform(
        repository, refusal,
        [&](VELSysSettingSource& host) { return host.Remove(repository, name); },
        [&] { return RemoveFromFile(repository, name); });
}

VELSysSettingSource* VELSysSettingRepository::SetSource(VELSysSettingSource* source) noexcept {
    return hostSource.exchange(source, std::memory_order_acq_rel);
}

bool VELSysSettingRepository::HasHostSource() noexcept {
    return hostSource.load(std::memory_order_acquire) != nullptr;
}
