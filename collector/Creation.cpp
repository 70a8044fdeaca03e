// SPDX-License-Identifier: MIT
// Makes a collector from a context file: chooses, checks, reads, links and validates it. A failure
// leaves a message and no collector.
#include "collector/VELDyadCtxCollector.h"

#include "collector/detail/CollectorAccess.h"
#include "collector/detail/ContextFileSource.h"
#include "collector/detail/Fault.h"
#include "platform/VELDyadTrace.h"
#include "platform/VELEnvironment.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/ProcessSettings.h"
#include "trace/detail/TraceLine.h"
#include "trace/detail/UserMessage.h"
#include "xml/detail/VELDyadCtxXml.h"

#include <array>
#include <cstdio>
#include <utility>

namespace {

using OwnedCollector = std::unique_ptr<VELDyadCtxCollector>;

constexpr const char* CreateMethod = "VELDyadCtxCollector::CreateCollector";
constexpr const char* DeleteMethod = "VELDyadCtxCollector::DeleteCollectorAtCreate";

struct ChosenFile {
    VELUnicodeString path;
    unsigned char isDefault = 0;
};

// Leaves `file` unchanged when no installation folder has a default file.
void FindInstalledFile(VELUnicodeString& file) {
    const VELUnicodeString& roots = dyadctx::InstallationRoots().text;
    if (roots.IsEmpty())
        return;
    VELUnicodeString found = dyadctx::FindDefaultContextFile(roots);
    if (!found.IsEmpty())
        file = std::move(found);
    TRACE_LOG("VELDyadCtxCollector:GetDefaultContextXML File <%s>", file.ConvertToChar());
}

// False, with a message, when neither settings nor installation have a file.
bool ChooseInstalledFile(ChosenFile& chosen, VELUnicodeString& message) {
    VELUnicodeString installed;
    FindInstalledFile(installed);
    TRACE_LOG("VELDyadCtxCollector:CreateCollector XMLFile (settings)=<%s>",
              installed.ConvertToChar());
    chosen.path = dyadctx::FileOfSettings();
    if (chosen.path.IsEmpty() && installed.IsEmpty()) {
        dyadctx::LogCollectorError(CreateMethod, dyadctx::key::XMLFileNotSet, message, nullptr, 0,
                                   1);
        TRACE_ERROR("VELDyadCtxCollector:CreateCollector No File-NoSettings <%s>",
                    installed.ConvertToChar());
        return false;
    }
    if (chosen.path.IsEmpty())
        chosen.path = std::move(installed);
    chosen.isDefault = dyadctx::ContainsDefaultContextFile(chosen.path) ? 1 : 0;
    return true;
}

bool ChooseFile(ChosenFile& chosen, VELUnicodeString& message) {
    const VELUnicodeString& setting = dyadctx::InitSetting().text;
    switch (dyadctx::InitChoiceOf(setting)) {
    case dyadctx::InitChoice::Path:
        chosen.path = setting;
        TRACE_LOG("VELDyadCtxCollector:CreateCollector XMLFile (VELDyadCtxInit)=<%s>",
                  chosen.path.ConvertToChar());
        return true;
    case dyadctx::InitChoice::NoFile:
        // The check of the file refuses the empty path.
        return true;
    case dyadctx::InitChoice::Installed:
        break;
    }
    return ChooseInstalledFile(chosen, message);
}

void MarkBatch() {
    if (dyadctx::IsTracerVariableSet())
        BatchStack();
}

void PutHeading(const char* step, VELUnicodeString& message) {
    // Formatted so that the prefix stays a literal of the library at every optimisation level.
    std::array<char, 64> key{};
    std::snprintf(key.data(), key.size(), "%s%s%s", dyadctx::key::StepPrefix, step,
                  dyadctx::key::StepSuffix);
    VELUnicodeString text = dyadctx::CatalogText(key.data());
    TRACE_WARNING("VELDyadCtxCollector::LogError Method <%s> Error=<%s>", DeleteMethod,
                  text.ConvertToChar());
    text.Append(" : ").Append(message);
    message = std::move(text);
}

} // namespace

VELDyadCtxCollector* VELDyadCtxCollector::CreateCollector(VELUnicodeString& message) {
    try {
        TRACE_ENTER("VELDyadCtxCollector:CreateCollector");
        ChosenFile chosen;
        if (!ChooseFile(chosen, message))
            return nullptr;
        MarkBatch();
        OwnedCollector collector(
            CreateCollectorFromXMLFile(chosen.path, chosen.isDefault, message));
        const VELUnicodeString& output = dyadctx::OutputSetting();
        if (collector != nullptr && !output.IsEmpty() &&
            VELDyadCtxXml(collector.get()).Stream(output, message) < 0) {
            VELDyadCtxCollector* refused = collector.release();
            DeleteCollectorAtCreate(refused, dyadctx::key::StepStream, message);
            TRACE_WARNING("VELDyadCtxCollector:CreateCollector Can not retrieve the Stream");
        }
        TRACE_LEAVE("VELDyadCtxCollector:CreateCollector Msg=<%s>", message.ConvertToChar());
        return collector.release();
    } catch (...) {
        return nullptr;
    }
}

VELDyadCtxCollector*
VELDyadCtxCollector::CreateExchangeChannelCollector(VELUnicodeString& message) {
    try {
        const VELUnicodeString file(VELGetEnv(dyadctx::ExchangeChannelVariable));
        if (file.IsEmpty()) {
            TRACE_WARNING("VELDyadCtxCollector:CreateExchangeChannelCollector - No envvar");
            return nullptr;
        }
        TRACE_LOG("VELDyadCtxCollector:CreateExchangeChannelCollector XMLFile "
                  "(VELDyadCtxInit)=<%s>",
                  file.ConvertToChar());
        OwnedCollector collector(CreateCollectorFromXMLFile(file, 0, message));
        MarkBatch();
        return collector.release();
    } catch (...) {
        return nullptr;
    }
}

VELDyadCtxCollector* VELDyadCtxCollector::CreateCollectorFromXMLFile(const VELUnicodeString& file,
                                                                     const unsigned char& isDefault,
                                                                     VELUnicodeString& message) {
    if (CheckXMLFile(file) < 0) {
        TRACE_WARNING("VELDyadCtxCollector:CreateCollector KO");
        LogError(CreateMethod, dyadctx::key::XMLFileNotValid, message, &file, 1, 1);
        return nullptr;
    }
    return dyadctx::CollectorAccess::CreateCollectorFromContents(file, isDefault, nullptr, message);
}

VELDyadCtxCollector* dyadctx::CollectorAccess::CreateCollectorFromContents(
    const VELUnicodeString& file, unsigned char isDefault, const VELUnicodeString* text,
    VELUnicodeString& message) {
    OwnedCollector collector(New(file, isDefault));
    VELDyadCtxXml xml(collector.get());
    const char* failedStep = nullptr;
    if ((text != nullptr ? xml.Unstream(*text, message) : xml.Unstream(message)) < 0)
        failedStep = dyadctx::key::StepParse;
    else if (collector->SetFriendsAndAssociated(message) < 0)
        failedStep = dyadctx::key::StepSetFriendsAndAssociated;
    else if (collector->Check(message) < 0)
        failedStep = dyadctx::key::StepCheck;
    if (failedStep != nullptr) {
        VELDyadCtxCollector* refused = collector.release();
        Collector::DeleteCollectorAtCreate(refused, failedStep, message);
        return nullptr;
    }
    // Fails only without memory; a collector with incomplete views must not get out.
    if (collector->SetCtxTypeList() < 0)
        return nullptr;
    return collector.release();
}

VELResult VELDyadCtxCollector::CheckXMLFile(const VELUnicodeString& file) {
    return dyadctx::JudgeContextFile(file) == VELDyadCtxPathVerdict::Usable ? S_OK : E_FAIL;
}

void VELDyadCtxCollector::DeleteCollectorAtCreate(VELDyadCtxCollector*& collector, const char* step,
                                                  VELUnicodeString& message) {
    // Deleted at the end, after the trace lines, whatever happens before.
    const OwnedCollector doomed(std::exchange(collector, nullptr));
    TRACE_WARNING("VELDyadCtxCollector:DeleteCollectorAtCreate KO with Method <%s> and Msg=<%s>",
                  step, message.ConvertToChar());
    if (!message.IsEmpty())
        PutHeading(step, message);
}

void VELDyadCtxCollector::GetDefaultContextXML(VELUnicodeString& file) {
    FindInstalledFile(file);
}

unsigned char VELDyadCtxCollector::LogError(const char* method, const char* key,
                                            VELUnicodeString& message,
                                            const VELUnicodeString* parameters, int count,
                                            int newLine) {
    return dyadctx::LogCollectorError(method, key, message, parameters, count, newLine);
}

VELResult VELDyadCtxCollector::Stream(const VELUnicodeString& file, VELUnicodeString& message) {
    try {
        return VELDyadCtxXml(this).Stream(file, message);
    } catch (...) {
        return E_FAIL;
    }
}

VELResult VELDyadCtxCollector::StreamText(VELUnicodeString& text) {
    try {
        return VELDyadCtxXml(this).StreamText(text);
    } catch (...) {
        return E_FAIL;
    }
}

void VELDyadCtxCollector::GetRelativeResourcesPath(VELUnicodeString& path) {
    try {
        path = VELUnicodeString(dyadctx::DefaultContextFile);
    } catch (...) {
        // Without memory the path is unchanged.
    }
}

unsigned char VELDyadCtxCollector::IsADefaultContextXML(const VELUnicodeString& file) {
    return dyadctx::ContainsDefaultContextFile(file) ? 1 : 0;
}
