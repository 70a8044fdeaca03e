// SPDX-License-Identifier: MIT
// Where the tool writes: the answer to standard output, everything else to standard error.
#pragma once

#include "tools/dyadctx/ExitStatus.h"

#include <nlohmann/json_fwd.hpp>

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::tool {

using Json = nlohmann::ordered_json;

enum class Paint { None, Heading, Good, Bad, Changed, Dim };
enum class ColorChoice { Auto, Always, Never };

class Output {
public:
    Output(ColorChoice color, bool quiet);
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    // A piece of the answer, unchanged.
    void Write(std::string_view text);
    // A document as the whole answer, with passwords in URLs masked.
    void WriteJson(Json document);

    // What a person may want to know beside the answer; left out when the user wants quiet.
    void Note(const std::string& text);
    void Error(const std::string& text);
    // A line for standard error without a heading of its own.
    void Remark(const std::string& line);

    bool IsQuiet() const noexcept { return quiet_; }
    // The text in that colour when the answer is coloured; an empty one stays empty.
    std::string Painted(Paint paint, const std::string& text) const;

    // Hands the rest of the answer over; false when any of it could not be written, for the
    // system's reason in WhyFailed.
    bool Finish();
    std::string WhyFailed() const;

private:
    void NoteFailure();

    std::FILE* answer_;
    bool quiet_;
    bool answerColored_;
    bool remarksColored_;
    // The system's code of the first failure; 0 when there is none.
    int failure_ = 0;
};

// Rows in aligned columns. A column without content is left out.
class Table {
public:
    explicit Table(std::vector<std::string> headings);
    // One cell per heading, visible text.
    void AddRow(std::vector<std::string> cells);
    // Empty without rows.
    std::string Render(const Output& output) const;

private:
    std::vector<std::string> headings_;
    std::vector<std::vector<std::string>> rows_;
    std::vector<int> widths_;
};

} // namespace dyadctx::tool
