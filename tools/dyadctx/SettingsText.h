// The settings file of the library: finding it, reading it, and changing one line of it.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace dyadctx::tool {

inline constexpr const char* SettingsRepository = "DyadSettingsRep";
// Names the context file.
inline constexpr const char* FileAttribute = "DYAD_Ctx_XmlFile";

// The path of the settings file, whether it exists or not; empty when the environment names no
// folder for it.
std::string SettingsFile();

// The text of a settings file. Operations throw a Failure that names file, place and reason.
class SettingsText {
public:
    // An absent file counts as an empty one.
    static SettingsText Read(const std::string& file);
    // `file` only serves the messages.
    SettingsText(std::string file, std::string text);

    // Name and value of each attribute that is a text, in the order of the file.
    std::vector<std::pair<std::string, std::string>> All() const;
    // Without a value when there is no such attribute. Throws for one that is not a text.
    std::optional<std::string> Get(const std::string& name) const;
    // The line on which the attribute stands, from 1; 0 when there is no such attribute.
    int LineOf(const std::string& name) const;
    // Changes the value where it stands, or adds a line behind the other attributes. All else stays
    // as it is.
    void Set(const std::string& name, const std::string& value);
    // Removes the lines of the attribute; false when there is no such attribute.
    bool Unset(const std::string& name);

    const std::string& Text() const noexcept { return text_; }

private:
    // Takes the new text if this attribute now has that value (or is gone) and nothing else
    // differs; otherwise throws.
    void Accept(const std::string& name, const std::optional<std::string>& value,
                const std::string& newText);

    std::string file_;
    std::string text_;
};

} // namespace dyadctx::tool
