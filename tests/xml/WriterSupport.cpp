// SPDX-License-Identifier: MIT
#include "xml/WriterSupport.h"

#include "platform/VELDyadDbProviderServices.h"
#include "support/ContextFile.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

VELUnicodeString Unicode(const std::string& text) {
    return {text.c_str(), text.size()};
}

Writing WriteInto(const TemporaryFolder& folder, VELDyadCtxCollector& collector) {
    Writing writing;
    VELUnicodeString message("before");
    writing.result = collector.Stream(Unicode(folder.PathOf("out.xml")), message);
    EXPECT_EQ(Text(message), "before");
    writing.text = "absent";
    if (std::filesystem::exists(folder.PathOf("out.xml")))
        writing.text = folder.Read("out.xml");
    // Nothing else may be left over.
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        EXPECT_EQ(entry.path().filename(), "out.xml");
    return writing;
}

} // namespace

CollectorPtr EmptyCollector() {
    return CollectorPtr(VELDyadCtxCollector::CreateCollectorFromScratch());
}

VELDyadContext& Declare(VELDyadCtxCollector& collector, const std::string& name,
                        const std::string& parameter, const std::string& type) {
    auto* context = new VELDyadContext(Unicode(name), Unicode(parameter), Unicode(type));
    EXPECT_EQ(collector.AddContext(context, nullptr, 0), S_OK);
    return *context;
}

VELIDyadDbProvider_var ProviderWith(const std::string& connector,
                                    const std::vector<std::string>& keys,
                                    const std::vector<std::string>& values) {
    VELIDyadDbProvider_var provider;
    EXPECT_EQ(VELDyadDbProviderServices::CreateDyadDbProvider(provider), S_OK);
    provider->SetConnectorName(Unicode(connector));
    provider->SetServerDetails(ListOf(keys), ListOf(values));
    return provider;
}

Writing Write(VELDyadCtxCollector& collector) {
    const TemporaryFolder folder;
    return WriteInto(folder, collector);
}

Writing WriteOver(VELDyadCtxCollector& collector, const std::string& former) {
    const TemporaryFolder folder;
    folder.Write("out.xml", former);
    return WriteInto(folder, collector);
}

std::string WrittenDocument(const std::vector<std::string>& lines) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<DyAdDescription>\n";
    if (lines.empty())
        return text + "  <CtxData/>\n</DyAdDescription>\n";
    text += "  <CtxData>\n";
    for (const std::string& line : lines)
        text += "    " + line + "\n";
    return text + "  </CtxData>\n</DyAdDescription>\n";
}

} // namespace dyadctx::test
