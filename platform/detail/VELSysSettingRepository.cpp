#include "platform/VELSysSettingRepository.h"

#include "platform/detail/SettingsFile.h"

#include <atomic>
#include <utility>

namespace {

class SettingsFiles final : public VELSysSettingSource {
public:
    bool HasRepository(const char* repository) override {
        std::string reason;
        const VELUnicodeString path = dyadctx::SettingsFilePath(repository);
        return dyadctx::CheckSettingsFile(path, reason) == dyadctx::SettingsAnswer::Found;
    }
    VELResult Read(const char* repository, const char* attribute,
                   VELUnicodeString& value) override {
        std::string reason;
        const VELUnicodeString path = dyadctx::SettingsFilePath(repository);
        const auto answer = dyadctx::ReadSettingsFile(path, attribute, value, reason);
        return answer == dyadctx::SettingsAnswer::Found ? S_OK : E_FAIL;
    }
};

std::atomic<VELSysSettingSource*> hostSource{nullptr};

} // namespace

VELSysSettingSource::~VELSysSettingSource() = default;

VELSysSettingRepository* VELSysSettingRepository::GetRepository(const char* name, int) {
    // Each thread has one; that is what the caller may use until it asks again.
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

VELSysSettingSource* VELSysSettingRepository::SetSource(VELSysSettingSource* source) noexcept {
    return hostSource.exchange(source, std::memory_order_acq_rel);
}

bool VELSysSettingRepository::HasHostSource() noexcept {
    return hostSource.load(std::memory_order_acquire) != nullptr;
}
