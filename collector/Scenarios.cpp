// SPDX-License-Identifier: MIT
#include "collector/VELDyadCtxCollector.h"

#include "collector/detail/CollectorAccess.h"
#include "context/detail/GuardedCall.h"
#include "context/detail/TextHash.h"
#include "trace/detail/TraceLine.h"

#include <string>
#include <string_view>
#include <utility>

using dyadctx::CodeOf;
using dyadctx::SetOf;
using dyadctx::TextSet;

namespace {

// Identifies a row in the trace only; nothing is looked up by it.
VELUnicodeString KeyOf(const VELUnicodeString& channel, const VELUnicodeString& scenarioId,
                       const VELUnicodeString& profile, const VELUnicodeString& optionName,
                       const VELUnicodeString& optionValue) {
    const std::string_view parts[] = {channel.AsView(), scenarioId.AsView(), profile.AsView(),
                                      optionName.AsView(), optionValue.AsView()};
    std::size_t length = 0;
    for (const std::string_view part : parts)
        length += part.size() + 1;
    std::string key;
    key.reserve(length);
    for (const std::string_view part : parts)
        key.append(part).append("|");
    key.pop_back();
    return VELUnicodeString(key);
}

// Fills two parallel lists; both are empty when memory runs out.
template<class Fill>
VELResult FillLists(VELListValVELUnicodeString& first, VELListValVELUnicodeString& second,
                    Fill fill) noexcept {
    first.RemoveAll();
    second.RemoveAll();
    const VELResult result = CodeOf([&] {
        fill();
        return S_OK;
    });
    if (result < 0) {
        first.RemoveAll();
        second.RemoveAll();
    }
    return result;
}

// The trace shows every row compared, however the rows are found.
void TraceRows(const VELListValVELUnicodeString& contexts,
               const VELListValVELUnicodeString& profiles) {
    for (int row = 1; VELIsTraceActive() && row <= contexts.Size(); ++row) {
        TRACE_LOG("VELDyadCtxCollector:GetOptionsfromExchangeProfile Check Profile %s-%s",
                  contexts[row].ConvertToChar(), profiles[row].ConvertToChar());
    }
}

} // namespace

VELResult VELDyadCtxCollector::AddScenario(const VELUnicodeString& channel,
                                           const VELUnicodeString& channelContext,
                                           const VELUnicodeString& profile,
                                           const VELUnicodeString& scenarioId,
                                           const VELUnicodeString& optionName,
                                           const VELUnicodeString& optionValue) {
    const int rowsBefore = _ScenarioKeys.Size();
    const VELResult added = CodeOf([&] {
        _ScenarioChannels.Append(channel);
        _ScenarioChannelContexts.Append(channelContext);
        _ScenarioProfiles.Append(profile);
        _ScenarioIds.Append(scenarioId);
        _ScenarioOptionNames.Append(optionName);
        _ScenarioOptionValues.Append(optionValue);
        _ScenarioKeys.Append(KeyOf(channel, scenarioId, profile, optionName, optionValue));
        return S_OK;
    });
    if (added != S_OK) {
        // Keeps the lists parallel when one of them could not grow.
        for (auto* list :
             {&_ScenarioChannels, &_ScenarioChannelContexts, &_ScenarioProfiles, &_ScenarioIds,
              &_ScenarioOptionNames, &_ScenarioOptionValues, &_ScenarioKeys})
            dyadctx::CutTo(*list, rowsBefore);
        return S_OK;
    }
    TRACE_LOG("VELDyadCtxCollector:AddScenario n %d with UK <%s>", _ScenarioKeys.Size(),
              _ScenarioKeys[_ScenarioKeys.Size()].ConvertToChar());
    return S_OK;
}

VELResult VELDyadCtxCollector::GetScenarioAtIndex(int index, VELUnicodeString& channel,
                                                  VELUnicodeString& channelContext,
                                                  VELUnicodeString& profile,
                                                  VELUnicodeString& scenarioId,
                                                  VELUnicodeString& optionName,
                                                  VELUnicodeString& optionValue) const {
    if (index < 1 || index > GetNbScenarios())
        return E_FAIL;
    return CodeOf([&] {
        // Copies first: the assignments after them cannot fail half-way.
        VELUnicodeString row[] = {_ScenarioChannels[index],    _ScenarioChannelContexts[index],
                                  _ScenarioProfiles[index],    _ScenarioIds[index],
                                  _ScenarioOptionNames[index], _ScenarioOptionValues[index]};
        VELUnicodeString* outputs[] = {&channel,    &channelContext, &profile,
                                       &scenarioId, &optionName,     &optionValue};
        for (int i = 0; i < 6; ++i)
            *outputs[i] = std::move(row[i]);
        return S_OK;
    });
}

VELResult
VELDyadCtxCollector::GetExchangeChannelfromScenario(const VELListValVELUnicodeString& ids,
                                                    VELListValVELUnicodeString& channels,
                                                    VELListValVELUnicodeString& channelContexts) {
    const VELResult result = FillLists(channels, channelContexts, [&] {
        // `ids` may be one of the two lists and is then empty by now.
        const TextSet wanted = SetOf(ids);
        TextSet listed;
        for (int row = 1; row <= _ScenarioIds.Size(); ++row) {
            if (!wanted.contains(_ScenarioIds[row].AsView()) ||
                !listed.insert(_ScenarioChannels[row].AsView()).second)
                continue;
            channels.Append(_ScenarioChannels[row]);
            channelContexts.Append(_ScenarioChannelContexts[row]);
            // Passed as one list, the two hold each other's texts.
            if (&channels == &channelContexts)
                listed.insert(_ScenarioChannelContexts[row].AsView());
        }
    });
    if (result == S_OK)
        TRACE_LOG("VELDyadCtxCollector:GetExchangeChannelfromScenario find %d Channel",
                  channels.Size());
    return result;
}

VELResult VELDyadCtxCollector::GetProfilefromExchangeChannel(const VELUnicodeString& channel,
                                                             const VELListValVELUnicodeString& ids,
                                                             VELListValVELUnicodeString& matchedIds,
                                                             VELListValVELUnicodeString& profiles) {
    const VELResult result = CodeOf([&] {
        // `channel` may be an element of a list that is emptied.
        const VELUnicodeString channelAsked = channel;
        return FillLists(profiles, matchedIds, [&] {
            const TextSet wanted = SetOf(ids);
            TextSet listed;
            for (int row = state_->index.RowOfChannel(_ScenarioChannelContexts, channelAsked);
                 row != 0; row = state_->index.NextRowOfChannel(row)) {
                if (!wanted.contains(_ScenarioIds[row].AsView()) ||
                    !listed.insert(_ScenarioProfiles[row].AsView()).second)
                    continue;
                matchedIds.Append(_ScenarioIds[row]);
                profiles.Append(_ScenarioProfiles[row]);
                if (&matchedIds == &profiles)
                    listed.insert(_ScenarioIds[row].AsView());
            }
        });
    });
    if (result == S_OK)
        TRACE_LOG("VELDyadCtxCollector:GetProfilefromExchangeChannel find %d Profile",
                  profiles.Size());
    return result;
}

VELResult VELDyadCtxCollector::GetOptionsfromExchangeProfile(
    const VELUnicodeString& channel, const VELUnicodeString& profile,
    VELListValVELUnicodeString& optionNames, VELListValVELUnicodeString& optionValues) {
    const VELResult result = CodeOf([&] {
        // Both may be elements of a list that is emptied.
        const VELUnicodeString channelAsked = channel;
        const VELUnicodeString profileAsked = profile;
        return FillLists(optionNames, optionValues, [&] {
            TraceRows(_ScenarioChannelContexts, _ScenarioProfiles);
            for (int row = state_->index.RowOfProfile(_ScenarioChannelContexts, _ScenarioProfiles,
                                                      channelAsked, profileAsked);
                 row != 0; row = state_->index.NextRowOfProfile(row)) {
                if (_ScenarioOptionNames[row].IsEmpty())
                    continue;
                optionNames.Append(_ScenarioOptionNames[row]);
                optionValues.Append(_ScenarioOptionValues[row]);
            }
        });
    });
    if (result == S_OK)
        TRACE_LOG("VELDyadCtxCollector:GetOptionsfromExchangeProfile find %d Profile",
                  optionNames.Size());
    return result;
}
