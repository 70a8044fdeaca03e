#include "xml/detail/ContextValues.h"

#include "context/detail/DbEnvironment.h"
#include "trace/VELDyadMessageKeys.h"
#include "xml/detail/FormatNames.h"
#include "xml/detail/ReadState.h"

namespace dyadctx {

namespace {

constexpr const char* ValuesMethod = "VELDyadCtxXml::GetXMLValuesContext";
constexpr const char* DatabaseValuesMethod = "VELDyadCtxXml::GetXMLDbValuesContext";

// Traces the message alone, before it is added to the caller's text.
void LogAlone(const ReadState& state, const char* method, const char* key,
              const VELIDOMElement& element, const VELUnicodeString* parameters = nullptr,
              int count = 0) {
    LogReaderError(state, method, key, element, parameters, count, LogText::Alone);
}

void LogNoName(const ReadState& state, const VELIDOMElement& element, ContextLevels levels,
               const VELUnicodeString& ownerName) {
    if (levels.friendLevel > 0)
        LogAlone(state, ValuesMethod, key::CtxFriendNoName, element, &ownerName, 1);
    else if (levels.associatedLevel > 0 && IsDbEnvironmentOn())
        LogAlone(state, ValuesMethod, key::CtxAssocNoName, element, &ownerName, 1);
    else
        LogAlone(state, ValuesMethod, key::CtxNoName, element);
}

// A friend or associated context may have only a name.
bool IsNameEnough(ContextLevels levels) {
    return levels.friendLevel > 0 || (levels.associatedLevel > 0 && IsDbEnvironmentOn());
}

bool IsFriendAndAssociated(ContextLevels levels) {
    return levels.friendLevel > 0 && levels.associatedLevel > 0;
}

bool MayLackConnector(ContextLevels levels) {
    return IsDbEnvironmentOn() ? IsFriendAndAssociated(levels) : levels.friendLevel > 0;
}

bool MayGoOn(const ContextValues& values, const ReadState& state) {
    return values.missing == 0 || state.ContinuesAfterFault();
}

VELResult GetXMLDbValuesContext(const VELIDOMElement& element, ContextLevels levels,
                                const ReadState& state, ContextValues& values) {
    if (!ReadAttribute(element, state.ids->connector, values.connector) &&
        !MayLackConnector(levels)) {
        values.missing |= MissingConnector;
        LogAlone(state, DatabaseValuesMethod, key::CtxNoConnector, element);
        return E_FAIL;
    }
    for (const std::uint32_t detail : state.ids->serverDetails)
        values.detailValues.Append(AttributeOrEmpty(element, detail));
    return S_OK;
}

} // namespace

void ContextValues::Clear() {
    texts = ContextTexts();
    connector = VELUnicodeString();
    detailValues.RemoveAll();
    missing = 0;
}

VELResult GetXMLValuesContext(const VELIDOMElement& element, ContextLevels levels,
                              const VELUnicodeString& ownerName, const ReadState& state,
                              ContextValues& values) {
    const FormatIds& ids = *state.ids;
    if (!ReadAttribute(element, ids.name, values.texts.name)) {
        values.missing |= MissingName;
        LogNoName(state, element, levels, ownerName);
    }
    if (MayGoOn(values, state) && !ReadAttribute(element, ids.parameter, values.texts.parameter) &&
        !IsNameEnough(levels)) {
        values.missing |= MissingParameter;
        LogReaderError(state, ValuesMethod, key::CtxNoParam, element, &values.texts.name, 1);
    }
    if (MayGoOn(values, state) &&
        !ReadAttribute(element, ids.parameterType, values.texts.parameterType) &&
        !IsNameEnough(levels)) {
        values.missing |= MissingParameterType;
        LogReaderError(state, ValuesMethod, key::CtxNoParamType, element, &values.texts.name, 1);
    }
    const bool isDatabase =
        MayGoOn(values, state) && values.texts.parameterType == Names().databaseType;
    if (isDatabase && IsDbEnvironmentOn() &&
        GetXMLDbValuesContext(element, levels, state, values) < 0 && !IsFriendAndAssociated(levels))
        LogReaderError(state, ValuesMethod, key::CtxNoDatabase, element, &values.texts.name, 1);
    return values.missing == 0 ? S_OK : E_FAIL;
}

} // namespace dyadctx
