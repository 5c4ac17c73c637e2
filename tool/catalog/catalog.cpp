#include "catalog/catalog.hpp"

#include <settings_core/files/input_file.hpp>
#include <settings_core/files/text_position.hpp>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <set>
#include <stdexcept>
#include <utility>

#include "cli/diagnostics.hpp"
#include "host/host.hpp"

namespace vx::tool {

namespace {

using core::Node;
using review::CatalogEntry;
namespace fs = std::filesystem;

/// The name of the root of the tree that the catalog describes.
constexpr std::string_view describedRoot = "verdix";

/// Returns the locale for messages, as POSIX defines it; empty if none is set.
std::string_view messageLocale()
{
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const char* value = std::getenv(variable); value != nullptr && *value != '\0') {
            return value;
        }
    }
    return {};
}

/// Returns the languages to look in, each one once, the preferred one first: de_DE, de and en for
/// de_DE.UTF-8.
std::vector<std::string> messageLanguages()
{
    constexpr auto isPartOfName = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
    };
    const std::string_view locale = messageLocale();
    const std::string language(locale.begin(), std::ranges::find_if_not(locale, isPartOfName));
    std::vector<std::string> languages;
    if (!language.empty() && language != "C" && language != "POSIX") {
        languages = {language, language.substr(0, language.find('_'))};
    }
    languages.emplace_back("en");
    languages.erase(std::unique(languages.begin(), languages.end()), languages.end());
    return languages;
}

/// Returns what `parse` makes of a file of the catalog; nothing if it does not exist. Throws
/// std::runtime_error, with the place, if it is damaged or cannot be read.
template <class Content>
Content parseFile(const fs::path& folder, std::string_view name, Content (*parse)(std::string_view))
{
    const fs::path file = folder / (std::string(name) + ".json");
    const std::optional<std::string> text = core::readFile(file);
    try {
        return text ? parse(*text) : Content();
    } catch (const core::ParseError& error) {
        throw std::runtime_error(
            core::formatDiagnostic({"", error.what(), core::positionAt(*text, error.offset(), file)}));
    }
}

/// As parseFile; nothing also for a damaged file, which is hinted at.
template <class Content>
Content readFile(const fs::path& folder, std::string_view name, Content (*parse)(std::string_view))
try {
    return parseFile(folder, name, parse);
} catch (const std::runtime_error& error) {
    printHint(std::string(error.what()) + "; the file is ignored");
    return {};
}

template <class Part>
void fillIfEmpty(Part& part, Part& from)
{
    if (part.empty()) {
        part = std::move(from);
    }
}

}  // namespace

Catalog::Catalog(const core::SettingsTree& tree)
{
    if (tree.root()->fullName() == describedRoot) {
        const fs::path folder = defaultCatalogFolder();
        std::ranges::transform(messageLanguages(), std::back_inserter(folders_),
                               [&folder](const std::string& language) { return folder / language; });
    }
}

const CatalogEntry& Catalog::entryOf(const Node& node)
{
    static const CatalogEntry none;
    const Entries& entries = entriesOf(review::catalogFileOf(node));
    const auto found = entries.find(node.fullName());
    return found == entries.end() ? none : found->second;
}

std::string Catalog::ownTitleOf(const Node& node)
{
    return review::ownTitle(node, entryOf(node));
}

std::string Catalog::titleOf(const Node& node)
{
    std::string title = ownTitleOf(node);
    std::string_view separator = node.kind() == core::NodeKind::group ? " › " : ": ";
    const Node* group = node.parent();
    for (; group != nullptr && group->parent() != nullptr; group = group->parent()) {
        title.insert(0, ownTitleOf(*group).append(separator));
        separator = " › ";
    }
    return title;
}

std::vector<std::vector<std::string>> Catalog::synonyms() const
{
    std::vector<std::vector<std::string>> synonyms;
    for (const fs::path& folder : folders_) {
        std::ranges::move(readFile(folder, review::synonymsFile, review::parseSynonyms),
                          std::back_inserter(synonyms));
    }
    return synonyms;
}

std::vector<std::string> Catalog::diagnostics(const core::SettingsTree& tree) const
{
    std::set<std::string_view> areas;
    for (const Node* node : tree.nodes()) {
        areas.insert(review::catalogFileOf(*node));
    }
    std::vector<std::string> diagnostics;
    const auto tryFile = [&diagnostics](const fs::path& folder, std::string_view name, auto parse) {
        try {
            static_cast<void>(parseFile(folder, name, parse));
        } catch (const std::runtime_error& error) {
            diagnostics.emplace_back(error.what());
        }
    };
    for (const fs::path& folder : folders_) {
        tryFile(folder, review::synonymsFile, review::parseSynonyms);
        for (const std::string_view area : areas) {
            tryFile(folder, area, review::parseCatalogFile);
        }
    }
    return diagnostics;
}

const Catalog::Entries& Catalog::entriesOf(std::string_view name)
{
    const auto [file, isNew] = files_.try_emplace(std::string(name));
    if (isNew) {
        for (const fs::path& folder : folders_) {
            for (review::FiledEntry& filed : readFile(folder, name, review::parseCatalogFile)) {
                CatalogEntry& entry = file->second[std::move(filed.path)];
                fillIfEmpty(entry.title, filed.entry.title);
                fillIfEmpty(entry.sentence, filed.entry.sentence);
                fillIfEmpty(entry.keywords, filed.entry.keywords);
                fillIfEmpty(entry.values, filed.entry.values);
            }
        }
    }
    return file->second;
}

}  // namespace vx::tool
