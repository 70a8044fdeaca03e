#include "tools/dyadctx/Source.h"

#include "platform/VELDbContextEnvironment.h"
#include "platform/VELEnvironment.h"
#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/FileChoiceText.h"
#include "tools/dyadctx/SystemServices.h"

#include <algorithm>
#include <unordered_set>

namespace dyadctx::tool {

namespace {

constexpr const char* ChannelVariable = "ExchangeChannel";
constexpr const char* OutputVariable = "VELDyadCtxOut";

std::unique_ptr<VELDyadCtxCollector> ReadFile(const std::string& file, VELUnicodeString& message) {
    SetEnvironment(ChannelVariable, WithFolder(file));
    return std::unique_ptr<VELDyadCtxCollector>(
        VELDyadCtxCollector::CreateExchangeChannelCollector(message));
}

bool LoadsByItself(const std::string& file) {
    VELUnicodeString message;
    return ReadFile(file, message) != nullptr;
}

// A failed write of VELDyadCtxOut leaves neither collector nor message, as a few failed readings
// do: they differ in that the file can be read.
ExitStatus StatusOfFailure(const Source& source, bool named) {
    if (std::any_of(source.findings.begin(), source.findings.end(), IsAboutFileChoice))
        return ExitStatus::NoFile;
    const char* target = VELGetEnv(OutputVariable);
    const bool writes = !named && target != nullptr && *target != '\0';
    if (writes && source.findings.empty() && LoadsByItself(source.file))
        return ExitStatus::NotWritten;
    return ExitStatus::NotLoadable;
}

Source LoadNamed(const std::string& file) {
    Source source;
    source.file = file;
    source.path = WithFolder(file);
    FindingRecorder recorder;
    VELUnicodeString message;
    source.collector = ReadFile(file, message);
    source.message = message.AsView();
    source.findings = recorder.Findings();
    return source;
}

Source LoadChosen() {
    Source source;
    FindingRecorder recorder;
    VELUnicodeString message;
    source.collector.reset(VELDyadCtxCollector::CreateCollector(message));
    source.message = message.AsView();
    source.findings = recorder.Findings();
    if (source.collector) {
        unsigned char isDefault = 0;
        source.file = source.collector->GetXMLFile(isDefault).AsView();
        source.isDefault = isDefault != 0;
    } else {
        VELDyadCtxFileChoice choice;
        MakeChoice(choice);
        unsigned char isDefault = 0;
        source.file = choice.GetFile(isDefault).AsView();
        source.isDefault = isDefault != 0;
    }
    source.path = source.file;
    return source;
}

std::string Subject(const Source& source) {
    return source.file.empty() ? "no context file" : Visible(source.file);
}

std::string Advice(const Source& source) {
    if (source.file.empty())
        return "no context file could be chosen; name one, or see `dyadctx which`";
    const std::string reason = ReasonAgainst(WithFolder(source.file));
    return Visible(source.file) + " cannot be read" + (reason.empty() ? "" : ": " + reason);
}

std::string FailureText(const Source& source) {
    switch (source.status) {
    case ExitStatus::NoFile:
        return Advice(source);
    case ExitStatus::NotWritten:
        return ReasonOfSilentFailure(source);
    default:
        return Subject(source) + " cannot be loaded" +
               (source.findings.empty() ? ": " + ReasonOfSilentFailure(source) : "");
    }
}

// What the library said, where in the file it belongs, faults before their consequences.
std::vector<Finding> WithPlaces(const Source& source) {
    std::unordered_set<std::string> unplaced;
    for (const Finding& finding : source.findings)
        unplaced.insert(IdentityOf(finding));
    std::vector<Finding> findings;
    if (!source.path.empty())
        findings = DiagnoseFile(source.path, {});
    std::erase_if(findings,
                  [&](const Finding& one) { return unplaced.erase(IdentityOf(one)) == 0; });
    for (const Finding& finding : source.findings) {
        if (unplaced.contains(IdentityOf(finding)))
            findings.push_back(finding);
    }
    return findings;
}

} // namespace

std::string WithFolder(const std::string& file) {
    return file.find_first_of("/\\") == std::string::npos ? "./" + file : file;
}

Source LoadSource(const std::optional<std::string>& file) {
    if (file && file->empty())
        throw Failure(ExitStatus::NoFile, "the name of the file is empty");
    Source source = file ? LoadNamed(*file) : LoadChosen();
    if (!source.collector)
        source.status = StatusOfFailure(source, file.has_value());
    return source;
}

Source LoadSourceOrFail(const std::optional<std::string>& file, Output& output) {
    Source source = LoadSource(file);
    if (!source.collector)
        FailWith(source, output);
    return source;
}

void FailWith(const Source& source, Output& output) {
    for (const Finding& finding : WithPlaces(source))
        output.Remark(FindingLine(source.file, NameOf(finding.severity), finding));
    throw Failure(source.status, FailureText(source));
}

std::string ReasonOfSilentFailure(const Source& source) {
    if (source.status == ExitStatus::NotWritten) {
        const char* target = VELGetEnv(OutputVariable);
        return Visible(target != nullptr ? target : "") + ", which " + OutputVariable +
               " names, could not be written";
    }
    return "the library gives no reason; look for an Option without a name";
}

bool IsDbContextEnvironmentOn() {
    return IsDbContextEnvironmentActivated() == VELUnicodeString("1");
}

} // namespace dyadctx::tool
