// SPDX-License-Identifier: MIT
#include "platform/VELMsgCatalog.h"

#include "platform/VELEnvironment.h"
#include "platform/detail/HostCode.h"
#include "platform/detail/MessageLanguage.h"
#include "platform/detail/MessagePlaceholders.h"
#include "platform/detail/MessageTexts.h"
#include "platform/detail/OwnText.h"

#include <atomic>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace {

using dyadctx::MessageTexts;

// Nothing here may depend on initialisation order: a message can be requested while other static
// objects are constructed.
constinit std::atomic<VELMsgCatalogSource*> hostSource{nullptr};
constinit std::shared_ptr<const MessageTexts> currentTexts;

// Made when it is first asked for, as not every system has a mutex that is a constant.
std::mutex& TextsMutex() {
    static std::mutex mutex;
    return mutex;
}

VELUnicodeString OverridingFolder() {
    return VELUnicodeString(VELGetEnv("VELMessageCatalogPath"));
}

std::shared_ptr<const MessageTexts> LoadTexts(const std::string& languageTag) {
    return std::make_shared<const MessageTexts>(dyadctx::LanguagesFor(languageTag),
                                                OverridingFolder());
}

std::shared_ptr<const MessageTexts> CurrentTexts() {
    const std::lock_guard lock(TextsMutex());
    if (!currentTexts)
        currentTexts = LoadTexts(dyadctx::RequestedLanguage());
    return currentTexts;
}

// The built-in text, placeholders filled; nothing for an unknown catalog or key.
std::optional<VELUnicodeString> BuildBuiltIn(const VELString& catalog, const VELString& key,
                                             const VELUnicodeString* parameters, int count) {
    const std::shared_ptr<const MessageTexts> texts = CurrentTexts();
    const auto text = texts->Find(catalog.AsView(), key.AsView());
    if (!text)
        return std::nullopt;
    return dyadctx::FillPlaceholders(*text, parameters, count);
}

// The host's text; nothing if it does not know the key or fails.
std::optional<VELUnicodeString> BuildFromHost(VELMsgCatalogSource& source, const VELString& catalog,
                                              const VELString& key,
                                              const VELUnicodeString* parameters, int count) {
    try {
        VELUnicodeString text;
        // A host may trust the count, so it is 0 without parameters.
        const int safeCount = parameters != nullptr && count > 0 ? count : 0;
        if (source.Build(catalog, key, parameters, safeCount, text) < 0)
            return std::nullopt;
        return text;
    } catch (...) {
        return std::nullopt;
    }
}

class BuiltInCatalog final : public VELMsgCatalogSource {
public:
    VELResult Build(const VELString& catalog, const VELString& key,
                    const VELUnicodeString* parameters, int count,
                    VELUnicodeString& text) override {
        try {
            auto built = BuildBuiltIn(catalog, key, parameters, count);
            if (!built)
                return E_FAIL;
            text = std::move(*built);
            return S_OK;
        } catch (const std::exception&) {
            return E_FAIL;
        }
    }
};

constinit BuiltInCatalog builtInCatalog;

} // namespace

VELMsgCatalogSource::~VELMsgCatalogSource() = default;

VELUnicodeString VELMsgCatalog::BuildMessage(const VELString& catalog, const VELString& key,
                                             const VELUnicodeString* parameters, int count,
                                             const VELUnicodeString& defaultText,
                                             const void* /*unused*/) {
    try {
        VELMsgCatalogSource* host = hostSource.load();
        auto text = host != nullptr ? BuildFromHost(*host, catalog, key, parameters, count)
                                    : BuildBuiltIn(catalog, key, parameters, count);
        if (text)
            return std::move(*text);
        return defaultText;
    } catch (const std::exception&) {
        return {};
    }
}

VELMsgCatalogSource* VELMsgCatalog::SetSource(VELMsgCatalogSource* source) noexcept {
    dyadctx::NoteHostService(dyadctx::HostService::Messages, source != nullptr);
    return hostSource.exchange(source);
}

VELMsgCatalogSource& VELMsgCatalog::BuiltInSource() noexcept {
    return builtInCatalog;
}

void VELMsgCatalog::SetLanguage(const char* tag) {
    try {
        auto texts = LoadTexts(tag != nullptr ? tag : dyadctx::RequestedLanguage());
        const std::lock_guard lock(TextsMutex());
        currentTexts.swap(texts);
    } catch (const std::exception&) {
        // The language is unchanged.
    }
}

bool VELMsgCatalog::HasLanguage(const char* tag) {
    if (tag == nullptr)
        return false;
    try {
        return !MessageTexts(dyadctx::OwnLanguagesOf(tag), OverridingFolder()).IsEmpty();
    } catch (const std::exception&) {
        return false;
    }
}

VELUnicodeString dyadctx::OwnText(const char* key, const VELUnicodeString* parameters,
                                  int count) noexcept {
    try {
        const VELString catalog(VELMsgCatalog::OwnCatalog);
        VELUnicodeString text =
            VELMsgCatalog::BuildMessage(catalog, VELString(key), parameters, count, {});
        if (text.IsEmpty())
            builtInCatalog.Build(catalog, VELString(key), parameters, count, text);
        return text;
    } catch (const std::exception&) {
        return {};
    }
}
