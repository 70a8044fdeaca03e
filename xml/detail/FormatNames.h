// SPDX-License-Identifier: MIT
// The names of the context file format as texts, created once for reader and writer.
#pragma once

#include "platform/VELIXMLDOM.h"
#include "platform/VELListVal.h"
#include "platform/VELUnicodeString.h"
#include "xml/detail/ContextFileFormat.h"

#include <array>
#include <cstdint>

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

// The same names as numbers of one document, for the reader.
struct FormatIds {
    explicit FormatIds(const VELIDOMHandle& document);

    std::uint32_t context;
    std::uint32_t friends;
    std::uint32_t associated;
    std::uint32_t scenario;
    std::uint32_t scenarioId;
    std::uint32_t option;

    std::uint32_t name;
    std::uint32_t parameter;
    std::uint32_t parameterType;
    std::uint32_t connector;
    // In the order of FormatNames::serverDetails.
    std::array<std::uint32_t, format::ServerDetails.size()> serverDetails;

    std::uint32_t scenarioIdent;
    std::uint32_t scenarioName;
    std::uint32_t optionName;
    std::uint32_t optionValue;
};

} // namespace dyadctx
