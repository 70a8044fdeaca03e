// SPDX-License-Identifier: MIT
// Plain XML documents made by chance, and what is left of them after an accident.
#pragma once

#include <initializer_list>
#include <random>
#include <string>
#include <string_view>

namespace dyadctx::test {

// The same seed produces the same documents everywhere.
class GeneratedXml {
public:
    explicit GeneratedXml(unsigned int seed) : random_(seed) {}

    // Well-formed, in UTF-8 and without DOCTYPE.
    std::string Document();
    // The same with a few bytes taken out, put in or changed; it may still be well-formed.
    std::string Damage(std::string text);
    // From one byte to many.
    std::size_t PieceSize() { return std::size_t{1} << Below(17); }

private:
    unsigned int Below(unsigned int bound) { return static_cast<unsigned int>(random_() % bound); }
    bool Chance(unsigned int percent) { return Below(100) < percent; }
    std::string OneOf(std::initializer_list<const char*> choices);
    std::string Repeated(unsigned int most, std::string (GeneratedXml::*part)());

    std::string Blank() { return OneOf({" ", "\t", "\n", "\r", "\r\n", "  "}); }
    std::string Blanks() { return Chance(80) ? "" : Repeated(2, &GeneratedXml::Blank); }
    std::string Name();
    std::string Character();
    std::string Reference();
    std::string ValuePart();
    std::string TextPart();
    std::string Declaration();
    std::string Misc();
    std::string Section();
    std::string Attributes();
    std::string Element(unsigned int depth);

    std::mt19937 random_;
};

} // namespace dyadctx::test
