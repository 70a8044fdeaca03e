// SPDX-License-Identifier: MIT
// Calls CreateCollector once and prints what it returned, for what is fixed when
// the library is loaded.
//
//   trace            the lines of the platform trace come first, without those of reading and
//                    of single contexts
//   message TEXT     the message text holds that before the call
//   set NAME VALUE   changes the environment before the call, but after the library was loaded
//   host FILE        the settings are a host's and name that file, or none where it is empty
//   choice           prints all candidates of the choice first, and any line of trace they cost

#include "collector/VELDyadCtxCollector.h"
#include "collector/VELDyadCtxFileChoice.h"
#include "platform/VELSysSettingRepository.h"
#include "support/ContextFile.h"
#include "support/EnvironmentVariable.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"

#include <cstdio>
#include <list>
#include <memory>
#include <string>
#include <vector>

namespace test = dyadctx::test;

namespace {

// A host's settings with one attribute.
class HostSettings final : public VELSysSettingSource {
public:
    explicit HostSettings(const std::string& file) : file_(file) {}
    bool HasRepository(const char*) override { return true; }
    VELResult Read(const char*, const char*, VELUnicodeString& value) override {
        value = file_;
        return S_OK;
    }

private:
    VELUnicodeString file_;
};

struct Question {
    bool traced = false;
    bool choice = false;
    std::unique_ptr<HostSettings> settings;
    std::string message;
    std::list<test::EnvironmentVariable> changes;
};

void Read(const std::vector<std::string>& words, Question& question) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "trace")
            question.traced = true;
        else if (words[i] == "choice")
            question.choice = true;
        else if (words[i] == "host")
            question.settings = std::make_unique<HostSettings>(words.at(++i));
        else if (words[i] == "message")
            question.message = words.at(++i);
        else if (words[i] == "set") {
            question.changes.emplace_back(words.at(i + 1), words.at(i + 2));
            i += 2;
        }
    }
}

bool IsOfInterest(const std::string& line) {
    for (const char* part : {" VELDyadCtxXml:", " VELDyadContext:", ":CheckContext ", ":Check",
                             ":SetFriendsAndAssociated"}) {
        if (line.find(part) != std::string::npos)
            return false;
    }
    return true;
}

void Tell(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        if (IsOfInterest(line))
            std::printf("%s\n", line.c_str());
    }
}

void Tell(VELDyadCtxCollector& collector) {
    unsigned char isDefault = 2;
    const std::string file = test::Text(collector.GetXMLFile(isDefault));
    std::printf("file=%s\ndefault=%d\ncontexts=", file.c_str(), isDefault);
    for (const std::string& name : test::ViewOf(collector))
        std::printf("<%s>", name.c_str());
    std::printf("\n");
}

void Tell(const VELDyadCtxFileCandidate& candidate) {
    constexpr const char* origins[] = {"variable", "settings", "folder"};
    constexpr const char* verdicts[] = {"chosen", "rejected", "absent", "ignored"};
    std::printf("%s %d %s", origins[static_cast<int>(candidate.origin)], candidate.folder,
                verdicts[static_cast<int>(candidate.verdict)]);
    std::printf(" %s=%s", candidate.variable.ConvertToChar(),
                candidate.isSet ? candidate.value.ConvertToChar() : "(not set)");
    if (!candidate.settingsFile.IsEmpty())
        std::printf(" at %s:%d", candidate.settingsFile.ConvertToChar(), candidate.settingsLine);
    std::printf(" path=%s\n", candidate.hasPath ? candidate.path.ConvertToChar() : "(none)");
}

void TellChoice() {
    test::RecordingTrace trace;
    VELDyadCtxFileChoice choice;
    const VELResult result = choice.Run();
    Tell(trace.TakeLines());
    for (int i = 1; i <= choice.GetNbCandidates(); ++i)
        Tell(choice.GetCandidateAt(i));
    unsigned char isDefault = 2;
    const std::string file = test::Text(choice.GetFile(isDefault));
    std::printf("result=%d deciding=%d usable=%d\n", static_cast<int>(result),
                choice.GetDecidingIndex(), choice.IsUsable() ? 1 : 0);
    std::printf("file=%s\ndefault=%d\n", file.c_str(), isDefault);
}

void Ask(const Question& question) {
    VELSysSettingRepository::SetSource(question.settings.get());
    if (question.choice)
        TellChoice();
    const test::KeyCatalog catalog;
    VELUnicodeString message(question.message.c_str());
    auto trace = question.traced ? std::make_unique<test::RecordingTrace>() : nullptr;
    const std::unique_ptr<VELDyadCtxCollector> collector(
        VELDyadCtxCollector::CreateCollector(message));
    if (trace != nullptr)
        Tell(trace->TakeLines());
    trace.reset();
    if (collector != nullptr)
        Tell(*collector);
    std::printf("message=%s\n", message.ConvertToChar());
}

} // namespace

int main(int count, char** words) {
    Question question;
    Read(std::vector<std::string>(words + 1, words + count), question);
    Ask(question);
    return 0;
}
