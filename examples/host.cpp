// A host that brings its own providers, trace, messages, settings and environment switch.
//
// It reads the context file given on the command line and prints which contexts its own providers
// answer for. See docs/host-platform.md.

#include "collector/VELDyadCtxCollector.h"
#include "platform/VELDbContextEnvironment.h"
#include "platform/VELDyadDbProviderServices.h"
#include "platform/VELDyadTrace.h"
#include "platform/VELMsgCatalog.h"
#include "platform/VELSysSettingRepository.h"

#include <cstdio>
#include <memory>

namespace {

// A provider of the host's own: here it only remembers what it is told.
class VaultProvider final : public VELIDyadDbProvider {
public:
    VELResult GetName(VELUnicodeString& name) override {
        name = VELUnicodeString("Vault-") + connector_;
        return S_OK;
    }
    VELResult IsSame(const VELIDyadDbProvider_var& other, bool& same) override {
        const auto* vault = dynamic_cast<const VaultProvider*>(other.Get());
        same = vault != nullptr && vault->connector_ == connector_ && vault->server_ == server_;
        return S_OK;
    }
    VELResult SetConnectorName(const VELUnicodeString& name) override {
        connector_ = name;
        return S_OK;
    }
    VELResult SetServerDetails(const VELListValVELUnicodeString& keys,
                               const VELListValVELUnicodeString& values) override {
        server_ = values[keys.Locate("ServerName")];
        return S_OK;
    }
    VELResult GetServerDetails(VELListValVELUnicodeString& keys,
                               VELListValVELUnicodeString& values) override {
        keys.RemoveAll();
        values.RemoveAll();
        keys.Append("ServerName");
        values.Append(server_);
        return S_OK;
    }
    void CopyFrom(const VaultProvider& other) {
        connector_ = other.connector_;
        server_ = other.server_;
    }

private:
    VELUnicodeString connector_;
    VELUnicodeString server_;
};

class VaultFactory final : public VELDyadDbProviderFactory {
public:
    VELResult Create(VELIDyadDbProvider_var& provider) override {
        provider = VELIDyadDbProvider_var(new VaultProvider);
        return S_OK;
    }
    VELResult CreateFrom(const VELIDyadDbProvider_var& from,
                         VELIDyadDbProvider_var& provider) override {
        const auto* source = dynamic_cast<const VaultProvider*>(from.Get());
        if (source == nullptr)
            return E_FAIL;
        auto* copy = new VaultProvider;
        provider = VELIDyadDbProvider_var(copy);
        copy->CopyFrom(*source);
        return S_OK;
    }
};

class CountingSink final : public VELDyadTraceSink {
public:
    int errors = 0;
    void Write(VELDyadTraceKind kind, const char*) override {
        if (kind == VELDyadTraceKind::Error)
            ++errors;
    }
};

// Adds the key to the built-in text.
class KeyedCatalog final : public VELMsgCatalogSource {
    VELResult Build(const VELString& catalog, const VELString& key,
                    const VELUnicodeString* parameters, int count,
                    VELUnicodeString& text) override {
        const VELResult result =
            VELMsgCatalog::BuiltInSource().Build(catalog, key, parameters, count, text);
        text.Append(" [").Append(key.ConvertToChar()).Append("]");
        return result;
    }
};

class FixedSettings final : public VELSysSettingSource {
public:
    explicit FixedSettings(const char* file) : file_(file) {}
    bool HasRepository(const char*) override { return true; }
    VELResult Read(const char*, const char*, VELUnicodeString& value) override {
        value = file_;
        return S_OK;
    }

private:
    VELUnicodeString file_;
};

class AlwaysOn final : public VELDbContextEnvironmentSource {
    bool IsActive() noexcept override { return true; }
};

void PrintProviders(VELDyadCtxCollector& collector) {
    VELListValVELUnicodeString names;
    collector.GetContextNamesFromDbProviderName("Vault-KRL", names);
    for (int pos = 1; pos <= names.Size(); ++pos)
        std::printf("Vault-KRL: %s\n", names[pos].ConvertToChar());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: host CONTEXT_FILE\n", stderr);
        return 2;
    }
    VaultFactory factory;
    CountingSink sink;
    KeyedCatalog catalog;
    FixedSettings settings(argv[1]);
    AlwaysOn environment;
    VELDyadDbProviderServices::SetFactory(&factory);
    SetDyadTraceSink(&sink);
    VELMsgCatalog::SetSource(&catalog);
    VELSysSettingRepository::SetSource(&settings);
    SetDbContextEnvironmentSource(&environment);
    int traceOn = 1;
    DyadContextTrace.activity = &traceOn;

    VELUnicodeString message;
    {
        const std::unique_ptr<VELDyadCtxCollector> collector(
            VELDyadCtxCollector::CreateCollector(message));
        if (collector)
            PrintProviders(*collector);
        std::printf("%s, %d trace errors\n", collector ? "read" : "refused", sink.errors);
    }
    std::fputs(message.ConvertToChar(), stdout);

    DyadContextTrace.activity = nullptr;
    SetDbContextEnvironmentSource(nullptr);
    VELSysSettingRepository::SetSource(nullptr);
    VELMsgCatalog::SetSource(nullptr);
    SetDyadTraceSink(nullptr);
    VELDyadDbProviderServices::SetFactory(nullptr);
    return 0;
}
