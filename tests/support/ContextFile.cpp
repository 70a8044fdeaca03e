// SPDX-License-Identifier: MIT
#include "support/ContextFile.h"

#include "platform/VELDbContextEnvironment.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

namespace dyadctx::test {

DbEnvironment::DbEnvironment(bool active) {
    SetDbContextEnvironment(active);
}

DbEnvironment::~DbEnvironment() {
    SetDbContextEnvironment(false);
}

std::string DocumentWith(std::string_view contexts) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<DyAdDescription><CtxData>" +
           std::string(contexts) + "</CtxData></DyAdDescription>\n";
}

Creation CreateFromFile(const std::string& path, const std::string& message) {
    const EnvironmentVariable variable("ExchangeChannel", path);
    VELUnicodeString text(message.c_str());
    Creation creation;
    creation.collector.reset(VELDyadCtxCollector::CreateExchangeChannelCollector(text));
    creation.message = Text(text);
    return creation;
}

Creation CreateFromText(std::string_view document, const std::string& message) {
    const TemporaryFolder folder;
    return CreateFromFile(folder.Write("contexts.xml", document), message);
}

Creation CreateFromContexts(std::string_view contexts, const std::string& message) {
    return CreateFromText(DocumentWith(contexts), message);
}

std::string Text(const VELUnicodeString& text) {
    return std::string(text.AsView());
}

std::vector<std::string> Texts(const VELListValVELUnicodeString& list) {
    std::vector<std::string> texts;
    for (int pos = 1; pos <= list.Size(); ++pos)
        texts.push_back(Text(list[pos]));
    return texts;
}

VELListValVELUnicodeString ListOf(const std::vector<std::string>& texts) {
    VELListValVELUnicodeString list;
    for (const std::string& text : texts)
        list.Append(VELUnicodeString(text.c_str(), text.size()));
    return list;
}

std::vector<std::string> NamesOf(const VELListPtrVELDyadContext& contexts) {
    std::vector<std::string> names;
    for (int pos = 1; pos <= contexts.Size(); ++pos)
        names.push_back(contexts[pos] == nullptr ? "(null)" : Text(contexts[pos]->GetName()));
    return names;
}

std::vector<std::string> ViewOf(VELDyadCtxCollector& collector) {
    VELListPtrVELDyadContext contexts;
    for (int pos = 1; pos <= collector.GetNbCtxs(); ++pos) {
        VELDyadContext* context = nullptr;
        if (collector.GetCtxAtIndex(pos, context) == S_OK)
            contexts.Append(context);
    }
    return NamesOf(contexts);
}

std::vector<std::string> FriendsOf(const VELDyadContext& context) {
    VELListPtrVELDyadContext friends;
    context.GetFriends(friends);
    return NamesOf(friends);
}

} // namespace dyadctx::test
