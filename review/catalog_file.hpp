#pragma once

// The catalog: files with titles, sentences and keywords of groups and settings, one folder for each
// language.

#include <settings_core/tree/node.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vx::review {

/// What the catalog says about a group or setting in one language; all parts may be empty.
struct CatalogEntry
{
    std::string title = {};     ///< in place of the title made from the name
    std::string sentence = {};  ///< what the setting does, or what the group holds
    std::vector<std::string> keywords = {};
    std::vector<std::pair<std::string, std::string>> values = {};  ///< allowed strings and what each does

    /// Returns what an allowed string does; empty if that is not known.
    [[nodiscard]] std::string_view phraseOf(std::string_view value) const;
};

/// An entry in a catalog file.
struct FiledEntry
{
    std::string path;
    std::size_t offset = 0;  ///< of the path in the file, in bytes
    CatalogEntry entry = {};
    std::vector<std::string> unknownMembers = {};
};

/// Parses a catalog file into its entries, in the file's order. Unknown members are no error. Throws
/// core::ParseError.
[[nodiscard]] std::vector<FiledEntry> parseCatalogFile(std::string_view text);

/// The name, without extension, of the file with words of the same meaning, beside the catalog files.
constexpr std::string_view synonymsFile = "synonyms";

/// Parses a file of synonyms into its lists of words. Throws core::ParseError.
[[nodiscard]] std::vector<std::vector<std::string>> parseSynonyms(std::string_view text);

/// Returns the name of the catalog file, without extension, that holds the entry of a node: that of the top
/// group, or "root" for settings directly under the root.
[[nodiscard]] std::string_view catalogFileOf(const core::Node& node);

/// Returns a title made from the name of a node, as editors do it: "Show HTML Tags" for ShowHtmlTags.
[[nodiscard]] std::string makeTitle(std::string_view name);

/// Returns the title of a node, without those of its groups.
[[nodiscard]] std::string ownTitle(const core::Node& node, const CatalogEntry& entry);

}  // namespace vx::review
