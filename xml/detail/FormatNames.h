// The names of the context file format as texts, made once for reader and writer.
#pragma once

#include "platform/VELListVal.h"
#include "platform/VELUnicodeString.h"
#include "xml/detail/ContextFileFormat.h"

namespace dyadctx {

struct FormatNames {
    FormatNames();

    const VELUnicodeString root{format::RootTag};
    const VELUnicodeString data{format::DataTag};
    const VELUnicodeString context{format::ContextTag};
    const VELUnicodeString friends{format::FriendsTag};
    const VELUnicodeString associated{format::AssociatedTag};
    const VELUnicodeString scenario{format::ScenarioTag};
    const VELUnicodeString scenarioId{format::ScenarioIdTag};
    const VELUnicodeString option{format::OptionTag};

    const VELUnicodeString name{format::NameAttribute};
    const VELUnicodeString parameter{format::ParameterAttribute};
    const VELUnicodeString parameterType{format::ParameterTypeAttribute};
    const VELUnicodeString connector{format::ConnectorAttribute};

    const VELUnicodeString scenarioIdent{format::ScenarioIdentAttribute};
    const VELUnicodeString scenarioName{format::ScenarioNameAttribute};
    const VELUnicodeString optionName{format::OptionNameAttribute};
    const VELUnicodeString optionValue{format::OptionValueAttribute};

    const VELUnicodeString databaseType;
    // All server details, in the order in which a provider receives them.
    VELListValVELUnicodeString serverDetails;
};

const FormatNames& Names();

} // namespace dyadctx
