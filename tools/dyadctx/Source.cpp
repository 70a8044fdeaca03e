// SPDX-License-Identifier: MIT
#include "tools/dyadctx/Source.h"

#include "platform/VELDbContextEnvironment.h"
#include "platform/VELEnvironment.h"
#include "platform/VELFileSystem.h"
#include "platform/VELMsgCatalog.h"
#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/FileChoiceText.h"
#include "tools/dyadctx/Paths.h"
#include "tools/dyadctx/SystemServices.h"
#include "tools/dyadctx/Words.h"
#include "trace/VELDyadMessageKeys.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <new>
#include <string_view>
#include <system_error>
#include <unordered_set>
#include <utility>

namespace dyadctx::tool {

namespace {

constexpr const char* ChannelVariable = "ExchangeChannel";
constexpr const char* OutputVariable = "VELDyadCtxOut";
constexpr std::string_view OptionWithoutName = "option-without-name";

std::string& StandardInputName() {
    static std::string name = StandardInput;
    return name;
}

std::unique_ptr<VELDyadCtxCollector> ReadFile(const std::string& file, VELUnicodeString& message) {
    SetEnvironment(ChannelVariable, WithFolder(file));
    return std::unique_ptr<VELDyadCtxCollector>(
        VELDyadCtxCollector::CreateExchangeChannelCollector(message));
}

bool IsOutputNamed() {
    const char* target = VELGetEnv(OutputVariable);
    return target != nullptr && *target != '\0';
}

// Asks the system once more, as a factory does not pass its reason on.
std::string ReasonNotWritten(VELDyadCtxCollector& collector) {
    VELUnicodeString content;
    if (collector.StreamText(content) < 0)
        return Words("failure.not-storable");
    VELFileRefusal refusal;
    if (VELReplaceFile(VELUnicodeString(VELGetEnv(OutputVariable)), content.AsView(), &refusal) >=
        0)
        return Words("source.second-attempt");
    return Visible(refusal.reason.AsView());
}

// Empty for a file that can be read to its end.
std::string WhyNotRead(const std::string& file) {
    constexpr std::size_t PieceSize = std::size_t{64} << 10U;
    std::string piece(PieceSize, '\0');
    std::ifstream stream(NativePath(file), std::ios::binary);
    errno = 0;
    while (stream.read(piece.data(), static_cast<std::streamsize>(piece.size())))
        continue;
    return stream.bad() ? std::generic_category().message(errno != 0 ? errno : EIO) : "";
}

// A fault of the file has a place in it. Where a read fails or memory runs out, the library calls
// the file no XML just the same, but its check knows no place. Throws where it was the memory.
std::string WhyReadingEnded(const Source& source) {
    if (std::none_of(source.findings.begin(), source.findings.end(), IsSyntaxError))
        return "";
    VELDyadCtxFileCheck check;
    RunCheck(check, source);
    const std::vector<Finding> errors = ErrorsOf(check);
    const auto fault = std::find_if(errors.begin(), errors.end(), IsSyntaxError);
    if (fault == errors.end())
        throw Failure(ExitStatus::Internal,
                      "the file could not be loaded, but could be read again");
    if (fault->place.line > 0)
        return "";
    std::string reason = WhyNotRead(source.path);
    if (reason.empty())
        throw std::bad_alloc();
    return reason;
}

// What the library says of a file that cannot be opened.
Finding UnreadableFile(const Source& source) {
    const VELUnicodeString path(source.path);
    Finding finding;
    finding.id = VELUnicodeString(key::XMLFileNotValid);
    finding.text =
        VELMsgCatalog::BuildMessage(key::Catalog, key::XMLFileNotValid, &path, 1, finding.id);
    finding.parameters.Append(path);
    finding.related.Append({VELUnicodeString(source.whyNotRead), {}, {}});
    return finding;
}

// A failed write of VELDyadCtxOut leaves neither collector nor message, as a few failed readings
// do: they differ in that the file can be read.
void ClassifyFailure(Source& source) {
    source.status = ExitStatus::NotLoadable;
    if (std::any_of(source.findings.begin(), source.findings.end(), IsAboutFileChoice)) {
        source.status = ExitStatus::NoFile;
        return;
    }
    source.whyNotRead = WhyReadingEnded(source);
    if (!source.whyNotRead.empty()) {
        source.status = ExitStatus::NoFile;
        source.findings = {UnreadableFile(source)};
        return;
    }
    if (source.isNamed || !IsOutputNamed() || !source.findings.empty())
        return;
    VELUnicodeString message;
    if (const auto collector = ReadFile(source.file, message)) {
        source.status = ExitStatus::NotWritten;
        source.whyNotWritten = ReasonNotWritten(*collector);
    }
}

Source NamedSource(const std::string& file) {
    Source source;
    source.file = file;
    source.path = WithFolder(file);
    source.isNamed = true;
    return source;
}

Source ChosenSource() {
    VELDyadCtxFileChoice choice;
    MakeChoice(choice);
    Source source;
    unsigned char isDefault = 0;
    source.file = choice.GetFile(isDefault).AsView();
    source.isDefault = isDefault != 0;
    source.path = source.file;
    return source;
}

// By the factory for a named file, or by the one that chooses.
void Load(Source& source) {
    FindingRecorder recorder;
    VELUnicodeString message;
    if (source.isNamed)
        source.made = ReadFile(source.file, message);
    else
        source.made.reset(VELDyadCtxCollector::CreateCollector(message));
    source.collector = source.made.get();
    source.message = message.AsView();
    source.findings = recorder.Findings();
    if (source.collector == nullptr)
        ClassifyFailure(source);
}

// The contexts come from the check unless a factory would refuse them.
bool TakeFrom(std::unique_ptr<VELDyadCtxFileCheck>& check, Source& source) {
    if (check->GetNbFindings(Severity::Error) > 0)
        return false;
    source.check = std::move(check);
    source.collector = source.check->GetCollector();
    source.made.reset();
    return true;
}

// False, and the source as before, for what a factory refuses.
bool LoadWithPlaces(Source& source) {
    auto check = std::make_unique<VELDyadCtxFileCheck>();
    RunCheck(*check, source);
    return TakeFrom(check, source);
}

std::string TextOfStandardInput() {
    static bool isRead = false;
    if (std::exchange(isRead, true))
        throw Failure(ExitStatus::Usage, Words("source.once"));
    try {
        return ReadStandardInput();
    } catch (const std::system_error& error) {
        throw Failure(ExitStatus::NoFile, Words("source.input-unreadable", {error.what()}));
    }
}

// Nothing but a check can read a text. Its findings have their places already.
Source LoadStandardInput() {
    Source source;
    source.file = StandardInputName();
    source.path = source.file;
    source.isNamed = true;
    source.text = VELUnicodeString(TextOfStandardInput());
    auto check = std::make_unique<VELDyadCtxFileCheck>();
    RunCheck(*check, source);
    if (TakeFrom(check, source))
        return source;
    VELUnicodeString message;
    if (check->GetFactoryMessage(message) < 0)
        throw std::bad_alloc();
    source.message = message.AsView();
    source.findings = ErrorsOf(*check);
    source.status = ExitStatus::NotLoadable;
    return source;
}

std::string Advice(const Source& source) {
    if (source.file.empty())
        return Words("source.none");
    const std::string reason =
        source.whyNotRead.empty() ? ReasonAgainst(source.path) : Visible(source.whyNotRead);
    return reason.empty() ? Words("choice.settings-unreadable", {Visible(source.file)})
                          : Words("failure.not-readable", {Visible(source.file), reason});
}

// As a shell takes it.
std::string AsWord(const std::string& file) {
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                       "0123456789/._-+,:@%\\";
    if (file.find_first_not_of(plain) == std::string::npos)
        return file;
    std::string word = "'";
    for (const char one : file)
        word += one == '\'' ? std::string("'\\''") : std::string(1, one);
    return Visible(word + "'");
}

std::string CheckCommand(const Source& source) {
    const std::string file = source.text ? StandardInput : source.isNamed ? source.file : "";
    return std::string("`dyadctx check") + (IsDbContextEnvironmentOn() ? " --db-context" : "") +
           (file.empty() ? "" : " " + AsWord(file)) + "`";
}

std::string FailureText(const Source& source) {
    switch (source.status) {
    case ExitStatus::NoFile:
        return Advice(source);
    case ExitStatus::NotWritten:
        return ReasonOfSilentFailure(source);
    default:
        if (!source.findings.empty())
            return Words("source.not-loadable", {Visible(source.file), CheckCommand(source)});
        return Words("source.not-loadable-because",
                     {Visible(source.file), ReasonOfSilentFailure(source), CheckCommand(source)});
    }
}

// What the library said, where in the file it belongs, faults before their consequences.
std::vector<Finding> WithPlaces(const Source& source) {
    std::unordered_set<std::string> unplaced;
    for (const Finding& finding : source.findings)
        unplaced.insert(IdentityOf(finding));
    std::vector<Finding> findings;
    if (!source.path.empty())
        findings = Diagnose(source, {});
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
    if (file.find_first_of("/\\") != std::string::npos)
        return file;
    // On Windows "D:site.xml" lies in the current folder of that drive.
    const std::string drive = TextOf(NativePath(file).root_name());
    return drive + "./" + file.substr(drive.size());
}

void SetStandardInputName(const std::string& name) {
    StandardInputName() = name;
}

void RunCheck(VELDyadCtxFileCheck& check, const Source& source) {
    const VELUnicodeString path(source.path);
    const VELResult result = source.text ? check.Run(path, *source.text) : check.Run(path);
    if (result < 0)
        throw std::bad_alloc();
}

Source LoadSource(const std::optional<std::string>& file, Reading reading) {
    if (file && file->empty())
        throw Failure(ExitStatus::NoFile, Words("source.empty-name"));
    if (file == StandardInput)
        return LoadStandardInput();
    Source source = file ? NamedSource(*file) : ChosenSource();
    // The file that VELDyadCtxOut names is written by the factory that chooses.
    const bool isToBeWritten = !source.isNamed && IsOutputNamed();
    if (reading == Reading::WithPlaces && !isToBeWritten && LoadWithPlaces(source))
        return source;
    Load(source);
    if (reading == Reading::WithPlaces && source.collector != nullptr)
        LoadWithPlaces(source);
    return source;
}

Source LoadSourceOrFail(const std::optional<std::string>& file, Output& output, Reading reading) {
    Source source = LoadSource(file, reading);
    if (source.collector == nullptr)
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
        return Words("source.output",
                     {Visible(target != nullptr ? target : ""), source.whyNotWritten});
    }
    // Its own check knows the one fault that the library has no message for.
    VELDyadCtxFileCheck check;
    RunCheck(check, source);
    const std::vector<Finding> errors = ErrorsOf(check);
    const bool lacksName = std::any_of(errors.begin(), errors.end(), [](const Finding& one) {
        return one.id.AsView() == OptionWithoutName;
    });
    return Words(lacksName ? "source.silent" : "source.no-reason");
}

bool IsDbContextEnvironmentOn() {
    return IsDbContextEnvironmentActivated() == VELUnicodeString("1");
}

} // namespace dyadctx::tool
