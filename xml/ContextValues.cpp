#include "xml/detail/ContextValues.h"

#include "context/detail/DbEnvironment.h"
#include "trace/detail/MessageKeys.h"
#include "xml/detail/FormatNames.h"
#include "xml/detail/ReadState.h"

namespace dyadctx {

namespace {

constexpr const char* ValuesMethod = "VELDyadCtxXml::GetXMLValuesContext";
constexpr const char* DatabaseValuesMethod = "VELDyadCtxXml::GetXMLDbValuesContext";

// Such a message is traced alone, before it joins the text of the caller.
VELResult FailAlone(const char* method, const char* key, VELUnicodeString& message,
                    const VELUnicodeString* parameters = nullptr, int count = 0) {
    VELUnicodeString text;
    LogReaderError(method, key, text, parameters, count);
    message.Append(text);
    return E_FAIL;
}

VELResult FailWithoutName(ContextLevels levels, const VELUnicodeString& ownerName,
                          VELUnicodeString& message) {
    if (levels.friendLevel > 0)
        return FailAlone(ValuesMethod, key::CtxFriendNoName, message, &ownerName, 1);
    if (levels.associatedLevel > 0 && IsDbEnvironmentOn())
        return FailAlone(ValuesMethod, key::CtxAssocNoName, message, &ownerName, 1);
    return FailAlone(ValuesMethod, key::CtxNoName, message);
}

// A friend or associated context may be written by its name alone.
bool IsNameEnough(ContextLevels levels) {
    return levels.friendLevel > 0 || (levels.associatedLevel > 0 && IsDbEnvironmentOn());
}

bool IsFriendAndAssociated(ContextLevels levels) {
    return levels.friendLevel > 0 && levels.associatedLevel > 0;
}

bool MayLackConnector(ContextLevels levels) {
    return IsDbEnvironmentOn() ? IsFriendAndAssociated(levels) : levels.friendLevel > 0;
}

VELResult GetXMLDbValuesContext(const VELIDOMElement& element, ContextLevels levels,
                                VELUnicodeString& message, ContextValues& values) {
    if (!ReadAttribute(element, Names().connector, values.connector) && !MayLackConnector(levels))
        return FailAlone(DatabaseValuesMethod, key::CtxNoConnector, message);
    const VELListValVELUnicodeString& details = Names().serverDetails;
    for (int pos = 1; pos <= details.Size(); ++pos)
        values.detailValues.Append(AttributeOrEmpty(element, details[pos]));
    return S_OK;
}

} // namespace

void ContextValues::Clear() {
    name = parameter = parameterType = connector = VELUnicodeString();
    detailValues.RemoveAll();
}

VELResult GetXMLValuesContext(const VELIDOMElement& element, ContextLevels levels,
                              const VELUnicodeString& ownerName, VELUnicodeString& message,
                              ContextValues& values) {
    const FormatNames& names = Names();
    if (!ReadAttribute(element, names.name, values.name))
        return FailWithoutName(levels, ownerName, message);
    if (!ReadAttribute(element, names.parameter, values.parameter) && !IsNameEnough(levels)) {
        LogReaderError(ValuesMethod, key::CtxNoParam, message, &values.name, 1);
        return E_FAIL;
    }
    if (!ReadAttribute(element, names.parameterType, values.parameterType) &&
        !IsNameEnough(levels)) {
        LogReaderError(ValuesMethod, key::CtxNoParamType, message, &values.name, 1);
        return E_FAIL;
    }
    if (values.parameterType != names.databaseType || !IsDbEnvironmentOn())
        return S_OK;
    const VELResult result = GetXMLDbValuesContext(element, levels, message, values);
    if (result < 0 && !IsFriendAndAssociated(levels))
        LogReaderError(ValuesMethod, key::CtxNoDatabase, message, &values.name, 1);
    return result;
}

} // namespace dyadctx
