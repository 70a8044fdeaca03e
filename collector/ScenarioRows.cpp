#include "collector/VELDyadCtxCollector.h"

#include <exception>
#include <utility>

VELResult VELDyadCtxCollector::GetScenarioAtIndex(int index, VELUnicodeString& channel,
                                                  VELUnicodeString& channelContext,
                                                  VELUnicodeString& profile,
                                                  VELUnicodeString& scenarioId,
                                                  VELUnicodeString& optionName,
                                                  VELUnicodeString& optionValue) const {
    if (index < 1 || index > GetNbScenarios())
        return E_FAIL;
    try {
        // Copies first: only then can nothing fail half-way.
        VELUnicodeString rowChannel = _ScenarioChannels[index];
        VELUnicodeString rowContext = _ScenarioChannelContexts[index];
        VELUnicodeString rowProfile = _ScenarioProfiles[index];
        VELUnicodeString rowId = _ScenarioIds[index];
        VELUnicodeString rowName = _ScenarioOptionNames[index];
        VELUnicodeString rowValue = _ScenarioOptionValues[index];
        channel = std::move(rowChannel);
        channelContext = std::move(rowContext);
        profile = std::move(rowProfile);
        scenarioId = std::move(rowId);
        optionName = std::move(rowName);
        optionValue = std::move(rowValue);
    } catch (const std::exception&) {
        return E_FAIL;
    }
    return S_OK;
}
