// SPDX-License-Identifier: MIT
#include "xml/ReaderSupport.h"

#include "collector/detail/CollectorAccess.h"
#include "collector/detail/CollectorInternals.h"
#include "support/ContextFile.h"
#include "support/TemporaryFolder.h"
#include "xml/detail/VELDyadCtxXml.h"

namespace dyadctx::test {

namespace {

std::string Element(const std::string& tag, const std::string& attributes,
                    const std::string& inner) {
    if (inner.empty())
        return "<" + tag + attributes + "/>";
    return "<" + tag + attributes + ">" + inner + "</" + tag + ">";
}

std::string Attribute(const std::string& name, const std::string& value) {
    return " " + name + "=\"" + value + "\"";
}

} // namespace

std::string Path(const std::string& name, const std::string& inner) {
    return Element("Context", Attribute("Name", name) + R"( Parameter="p" ParameterType="Path")",
                   inner);
}

std::string Named(const std::string& name, const std::string& inner) {
    return Element("Context", Attribute("Name", name), inner);
}

std::string Database(const std::string& name, const std::string& connector,
                     const std::string& server, const std::string& role, const std::string& inner) {
    return Element("Context",
                   Attribute("Name", name) + R"( Parameter="p" ParameterType="Database")" +
                       Attribute("ConnectorName", connector) + Attribute("ServerName", server) +
                       Attribute("Role", role),
                   inner);
}

std::string Friends(const std::string& inner) {
    return Element("CtxFriends", "", inner);
}

std::string Associated(const std::string& inner) {
    return Element("CtxAssociated", "", inner);
}

std::string Scenario(const std::string& inner) {
    return Element("Scenario", "", inner);
}

std::string ScenarioId(const std::string& ident, const std::string& name,
                       const std::string& inner) {
    return Element("ScenarioID", Attribute("Ident", ident) + Attribute("name", name), inner);
}

std::string Option(const std::string& name, const std::string& value) {
    return Element("Option", Attribute("name", name) + Attribute("value", value), "");
}

Reading ReadFile(const std::string& path, const std::string& message) {
    Reading reading;
    reading.collector.reset(CollectorAccess::New(VELUnicodeString(path.c_str()), 0));
    VELUnicodeString text(message.c_str());
    reading.result = VELDyadCtxXml(reading.collector.get()).Unstream(text);
    reading.message = Text(text);
    return reading;
}

Reading ReadText(std::string_view document, const std::string& message) {
    const TemporaryFolder folder;
    return ReadFile(folder.Write("contexts.xml", document), message);
}

Reading ReadContexts(std::string_view contexts, const std::string& message) {
    return ReadText(DocumentWith(contexts), message);
}

std::vector<std::string> AllOf(const Reading& reading) {
    return NamesOf(CollectorInternals::Contexts(*reading.collector));
}

std::vector<std::string> DeclaredOf(const Reading& reading) {
    return NamesOf(CollectorInternals::MainContexts(*reading.collector));
}

VELDyadContext& DeclaredAt(const Reading& reading, int position) {
    return *CollectorInternals::MainContexts(*reading.collector)[position];
}

std::vector<std::string> FriendsAt(const Reading& reading, int position) {
    return FriendsOf(DeclaredAt(reading, position));
}

std::string AssociatedAt(const Reading& reading, int position) {
    VELDyadContext* associated = nullptr;
    DeclaredAt(reading, position).GetAssociatedContext(associated);
    return associated == nullptr ? "none" : Text(associated->GetName());
}

std::vector<std::string> RowsOf(const Reading& reading) {
    const VELDyadCtxCollector& c = *reading.collector;
    std::vector<std::string> rows;
    for (int i = 1; i <= CollectorInternals::Channels(c).Size(); ++i) {
        rows.push_back(Text(CollectorInternals::Channels(c)[i]) + "|" +
                       Text(CollectorInternals::ChannelContexts(c)[i]) + "|" +
                       Text(CollectorInternals::Profiles(c)[i]) + "|" +
                       Text(CollectorInternals::Ids(c)[i]) + "|" +
                       Text(CollectorInternals::OptionNames(c)[i]) + "|" +
                       Text(CollectorInternals::OptionValues(c)[i]));
    }
    return rows;
}

std::vector<std::string> ProviderOf(const VELIDyadDbProvider_var& provider) {
    std::vector<std::string> texts;
    if (provider.IsNull())
        return texts;
    VELUnicodeString connector;
    VELListValVELUnicodeString keys;
    VELListValVELUnicodeString values;
    provider->GetName(connector);
    provider->GetServerDetails(keys, values);
    texts.push_back(Text(connector));
    for (int pos = 1; pos <= keys.Size(); ++pos)
        texts.push_back(Text(keys[pos]) + "=" + Text(values[pos]));
    return texts;
}

std::vector<std::string> SitesOf(VELDyadContext& context) {
    VELListValVELUnicodeString sites;
    context.GetListOfSites(sites);
    return Texts(sites);
}

} // namespace dyadctx::test
