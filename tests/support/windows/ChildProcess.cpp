// SPDX-License-Identifier: MIT
#include "support/ChildProcess.h"

#include "support/ChildEnvironment.h"
#include "support/windows/WideText.h"

#include <array>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>

namespace dyadctx::test {

namespace {

struct HandleCloser {
    void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

struct Pipe {
    Handle readEnd;
    Handle writeEnd;
};

// A pipe of which the child inherits one end.
Pipe MakePipe(Handle Pipe::*inherited) {
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    if (CreatePipe(&readEnd, &writeEnd, nullptr, 1U << 20U) == 0)
        throw std::runtime_error("no pipe");
    Pipe pipe{Handle(readEnd), Handle(writeEnd)};
    SetHandleInformation((pipe.*inherited).get(), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    return pipe;
}

// As the runtime of the child takes it apart again: backslashes count only before a quote.
void AppendArgument(std::wstring& line, const std::wstring& argument) {
    if (!line.empty())
        line += L' ';
    line += L'"';
    std::size_t backslashes = 0;
    for (const wchar_t letter : argument) {
        if (letter == L'"')
            line.append(backslashes + 1, L'\\');
        backslashes = letter == L'\\' ? backslashes + 1 : 0;
        line += letter;
    }
    line.append(backslashes, L'\\');
    line += L'"';
}

std::wstring LineOf(const ChildRun& run) {
    std::wstring line;
    AppendArgument(line, Wide(run.program));
    for (const std::string& argument : run.arguments)
        AppendArgument(line, Wide(argument));
    return line;
}

std::vector<std::string> OwnEnvironment() {
    const std::unique_ptr<wchar_t, decltype(&FreeEnvironmentStringsW)> block(
        GetEnvironmentStringsW(), FreeEnvironmentStringsW);
    std::vector<std::string> entries;
    for (const wchar_t* entry = block.get(); *entry != L'\0';
         entry += std::wstring_view(entry).size() + 1)
        entries.push_back(Narrow(entry));
    return entries;
}

std::wstring BlockOf(const std::vector<std::string>& entries) {
    std::wstring block;
    for (const std::string& entry : entries)
        block += Wide(entry) + L'\0';
    return block + L'\0';
}

std::string ReadAll(HANDLE pipe) {
    std::string text;
    std::array<char, 65536> buffer;
    DWORD got = 0;
    while (ReadFile(pipe, buffer.data(), static_cast<DWORD>(buffer.size()), &got, nullptr) != 0 &&
           got > 0)
        text.append(buffer.data(), got);
    return text;
}

void WriteAll(HANDLE pipe, const std::string& text) {
    DWORD written = 0;
    WriteFile(pipe, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

std::string WithoutCarriageReturns(const std::string& text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n')
            plain += text[i];
    }
    return plain;
}

Handle Start(const ChildRun& run, HANDLE input, HANDLE output, HANDLE error) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input;
    start.hStdOutput = output;
    start.hStdError = error;
    std::wstring line = LineOf(run);
    std::wstring environment = BlockOf(ChildEnvironment(run, OwnEnvironment()));
    const std::wstring folder = Wide(run.workingFolder);
    std::wstring program = Wide(run.program);
    if (GetFileAttributesW(program.c_str()) == INVALID_FILE_ATTRIBUTES)
        program += L".exe";
    PROCESS_INFORMATION started{};
    if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE,
                       CREATE_UNICODE_ENVIRONMENT, environment.data(),
                       folder.empty() ? nullptr : folder.c_str(), &start, &started) == 0)
        throw std::runtime_error("no child process: " + run.program);
    CloseHandle(started.hThread);
    return Handle(started.hProcess);
}

int StatusOf(HANDLE process) {
    DWORD status = 0;
    GetExitCodeProcess(process, &status);
    return static_cast<int>(status);
}

} // namespace

ChildResult RunChild(const ChildRun& run) {
    Pipe input = MakePipe(&Pipe::readEnd);
    Pipe output = MakePipe(&Pipe::writeEnd);
    Pipe error = MakePipe(&Pipe::writeEnd);
    const Handle child =
        Start(run, input.readEnd.get(), output.writeEnd.get(), error.writeEnd.get());
    input.readEnd.reset();
    output.writeEnd.reset();
    error.writeEnd.reset();
    ChildResult result;
    std::thread outputReader([&] { result.standardOutput = ReadAll(output.readEnd.get()); });
    std::thread errorReader([&] { result.standardError = ReadAll(error.readEnd.get()); });
    WriteAll(input.writeEnd.get(), run.standardInput);
    input.writeEnd.reset();
    const DWORD milliseconds = static_cast<DWORD>(run.timeoutSeconds) * 1000;
    result.timedOut = WaitForSingleObject(child.get(), milliseconds) != WAIT_OBJECT_0;
    if (result.timedOut)
        TerminateProcess(child.get(), 1);
    outputReader.join();
    errorReader.join();
    result.status = StatusOf(child.get());
    if (!run.hasBinaryStreams) {
        result.standardOutput = WithoutCarriageReturns(result.standardOutput);
        result.standardError = WithoutCarriageReturns(result.standardError);
    }
    return result;
}

} // namespace dyadctx::test
