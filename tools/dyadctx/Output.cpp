// SPDX-License-Identifier: MIT
#include "tools/dyadctx/Output.h"

#include "platform/VELEnvironment.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/SystemServices.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <system_error>
#include <utility>

namespace dyadctx::tool {

namespace {

constexpr std::string_view ColumnGap = "  ";

bool TerminalTakesColor() {
    const char* noColor = VELGetEnv("NO_COLOR");
    if (noColor != nullptr && *noColor != '\0')
        return false;
    const char* terminal = VELGetEnv("TERM");
    return terminal == nullptr || std::string_view(terminal) != "dumb";
}

bool IsColored(ColorChoice choice, std::FILE* stream) {
    if (choice == ColorChoice::Auto)
        return IsTerminal(stream) && TerminalTakesColor();
    return choice == ColorChoice::Always;
}

const char* StartOf(Paint paint) {
    switch (paint) {
    case Paint::Heading:
        return "\x1b[1m";
    case Paint::Good:
        return "\x1b[32m";
    case Paint::Bad:
        return "\x1b[31m";
    case Paint::Changed:
        return "\x1b[33m";
    case Paint::Dim:
        return "\x1b[2m";
    case Paint::None:
        break;
    }
    return "";
}

std::string InColor(Paint paint, const std::string& text) {
    return paint == Paint::None || text.empty() ? text : StartOf(paint) + text + "\x1b[0m";
}

// The library's own message stays as it is.
void Mask(Json& json, std::string_view key = {}) {
    if (json.is_string() && key != "message") {
        const std::string& text = json.get_ref<const std::string&>();
        if (text.find("//") != std::string::npos)
            json = Masked(text);
    } else if (json.is_object()) {
        for (auto& [name, value] : json.items())
            Mask(value, name);
    } else if (json.is_array()) {
        for (Json& value : json)
            Mask(value);
    }
}

void WriteRemark(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
}

} // namespace

Output::Output(ColorChoice color, bool quiet)
    : answer_(TakeStandardOutput()), quiet_(quiet), answerColored_(IsColored(color, answer_)),
      remarksColored_(IsColored(color, stderr)) {}

Output::~Output() {
    Finish();
}

void Output::Write(std::string_view text) {
    errno = 0;
    if (answer_ == nullptr || std::fwrite(text.data(), 1, text.size(), answer_) != text.size())
        NoteFailure();
}

void Output::WriteJson(Json document) {
    Mask(document);
    // A file name may hold bytes that are no text; JSON may not.
    Write(document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
}

void Output::Note(const std::string& text) {
    if (!quiet_)
        Remark((remarksColored_ ? InColor(Paint::Heading, "note:") : "note:") + " " + text);
}

void Output::Error(const std::string& text) {
    Remark("dyadctx: " + (remarksColored_ ? InColor(Paint::Bad, "error:") : "error:") + " " + text);
}

void Output::Remark(const std::string& line) {
    WriteRemark(line + "\n");
}

std::string Output::Painted(Paint paint, const std::string& text) const {
    return answerColored_ ? InColor(paint, text) : text;
}

bool Output::Finish() {
    errno = 0;
    if (answer_ != nullptr && std::fclose(answer_) != 0)
        NoteFailure();
    answer_ = nullptr;
    return failure_ == 0;
}

std::string Output::WhyFailed() const {
    return std::generic_category().message(failure_);
}

void Output::NoteFailure() {
    if (failure_ == 0)
        failure_ = errno != 0 ? errno : EIO;
}

Table::Table(std::vector<std::string> headings)
    : headings_(std::move(headings)), widths_(headings_.size(), 0) {}

void Table::AddRow(std::vector<std::string> cells) {
    assert(cells.size() == headings_.size());
    for (std::size_t i = 0; i < cells.size(); ++i)
        widths_[i] = std::max(widths_[i], DisplayWidth(cells[i]));
    rows_.push_back(std::move(cells));
}

std::string Table::Render(const Output& output) const {
    std::vector<std::size_t> columns;
    for (std::size_t i = 0; i < headings_.size(); ++i) {
        if (widths_[i] > 0)
            columns.push_back(i);
    }
    std::string text;
    const auto render = [&](const std::vector<std::string>& cells, Paint paint) {
        std::string gap;
        for (const std::size_t i : columns) {
            text += gap + output.Painted(paint, cells[i]);
            const int width = std::max(widths_[i], DisplayWidth(headings_[i]));
            gap = std::string(static_cast<std::size_t>(width - DisplayWidth(cells[i])), ' ');
            gap += ColumnGap;
        }
        text.erase(text.find_last_not_of(' ') + 1);
        text += "\n";
    };
    if (!rows_.empty())
        render(headings_, Paint::Heading);
    for (const std::vector<std::string>& row : rows_)
        render(row, Paint::None);
    return text;
}

} // namespace dyadctx::tool
