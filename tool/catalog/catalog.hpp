#pragma once

#include <review/catalog_file.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::tool {

/// What people read about groups and settings, in their language. Each catalog file is read when the first
/// node of its area is asked for. Without a catalog, and for the trees of others, there are only the titles
/// made from names.
class Catalog
{
public:
    /// Takes the language from the environment. The tree must outlive this object.
    explicit Catalog(const core::SettingsTree& tree);

    /// Returns the entry of a node, with what a translation lacks from the English one; an empty entry if
    /// there is none. Valid as long as this object. Gives a hint at each damaged file, and ignores it.
    [[nodiscard]] const review::CatalogEntry& entryOf(const core::Node& node);

    /// Returns the title with those of its groups: "Editor › Display: Show Line Numbers".
    [[nodiscard]] std::string titleOf(const core::Node& node);

    /// Returns the title without those of its groups: "Show Line Numbers".
    [[nodiscard]] std::string ownTitleOf(const core::Node& node);

    /// Returns lists of words of the same meaning, in all languages that are looked in. Gives a hint at each
    /// damaged file, and ignores it.
    [[nodiscard]] std::vector<std::vector<std::string>> synonyms() const;

    /// Returns the folders of the languages that are looked in, the preferred one first. They need not exist.
    [[nodiscard]] const std::vector<std::filesystem::path>& folders() const noexcept { return folders_; }

    /// Returns the diagnostics of the synonyms and of the files for the areas of a tree, with place. There is
    /// at most one for each file.
    [[nodiscard]] std::vector<std::string> diagnostics(const core::SettingsTree& tree) const;

private:
    /// So that strings are looked up without a copy.
    struct Hash : std::hash<std::string_view>
    {
        using is_transparent = void;
    };
    using Entries = std::unordered_map<std::string, review::CatalogEntry, Hash, std::equal_to<>>;  // by path

    const Entries& entriesOf(std::string_view name);

    std::vector<std::filesystem::path> folders_;
    std::map<std::string, Entries, std::less<>> files_;  // by name without extension
};

}  // namespace vx::tool
