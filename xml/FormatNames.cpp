// SPDX-License-Identifier: MIT
#include "xml/detail/FormatNames.h"

#include "context/detail/ParameterTypes.h"
#include "platform/detail/DomAccess.h"

#include <algorithm>

namespace dyadctx {

FormatNames::FormatNames() : databaseType(DatabaseType) {
    for (const char* detail : format::ServerDetails)
        serverDetails.Append(VELUnicodeString(detail));
}

const FormatNames& Names() {
    static const FormatNames names;
    return names;
}

FormatIds::FormatIds(const VELIDOMHandle& document) {
    const auto idOf = [&document](const char* text) { return DomAccess::NameId(document, text); };
    context = idOf(format::ContextTag);
    friends = idOf(format::FriendsTag);
    associated = idOf(format::AssociatedTag);
    scenario = idOf(format::ScenarioTag);
    scenarioId = idOf(format::ScenarioIdTag);
    option = idOf(format::OptionTag);
    name = idOf(format::NameAttribute);
    parameter = idOf(format::ParameterAttribute);
    parameterType = idOf(format::ParameterTypeAttribute);
    connector = idOf(format::ConnectorAttribute);
    std::transform(format::ServerDetails.begin(), format::ServerDetails.end(),
                   serverDetails.begin(), idOf);
    scenarioIdent = idOf(format::ScenarioIdentAttribute);
    scenarioName = idOf(format::ScenarioNameAttribute);
    optionName = idOf(format::OptionNameAttribute);
    optionValue = idOf(format::OptionValueAttribute);
}

} // namespace dyadctx
