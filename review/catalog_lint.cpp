#include "catalog_lint.hpp"

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/files/text_position.hpp>
#include <settings_core/tree/suggestions.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "catalog_file.hpp"
#include "words.hpp"

namespace vx::review {

namespace {

using core::Node;
using core::NodeKind;
namespace fs = std::filesystem;

constexpr std::size_t maximumLength = 120;  // of a sentence, in characters
constexpr std::string_view sourceLanguage = "en";
constexpr std::string_view listName = "undescribed";

// Words

using Words = std::set<std::string, std::less<>>;

/// Returns the words of a sentence or title, which are not split at capitals.
Words wordsOf(std::string_view text)
{
    const std::vector<std::string> words = lowerWords(lowerCase(text));
    return {words.begin(), words.end()};
}

/// Returns the stems of all words that are not stop words.
Words stemsOf(std::string_view text)
{
    constexpr std::array<std::string_view, 22> stopWords = {
        "a",  "an", "and", "are", "as", "at", "be", "by",      "for", "from",     "holds",
        "in", "is", "it",  "its", "of", "on", "or", "setting", "the", "settings", "to"};
    Words stems;
    for (const std::string& word : wordsOf(text)) {
        if (std::ranges::find(stopWords, word) == stopWords.end()) {
            stems.insert(stemOf(word));
        }
    }
    return stems;
}

bool isWithin(const Words& part, const Words& whole)
{
    return std::ranges::includes(whole, part);
}

std::vector<std::string> namesIn(const fs::path& folder, bool wantsFolders)
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.is_directory() == wantsFolders) {
            names.push_back(entry.path().filename().string());
        }
    }
    std::ranges::sort(names);
    return names;
}

class CatalogLint
{
public:
    CatalogLint(const core::SettingsTree& tree, fs::path folder)
        : folder_(std::move(folder)), tree_(tree), suggestions_(tree)
    {
        for (const Node* node : tree.nodes()) {
            positions_.emplace(node, positions_.size());
            files_.insert(catalogFileOf(*node));
        }
    }

    std::vector<core::Diagnostic> run() &&
    {
        if (!fs::is_directory(folder_)) {
            add("", "there is no catalog in " + folder_.string() + ": reinstall vxsettings", {});
            return std::move(diagnostics_);
        }
        for (const std::string& language : namesIn(folder_, true)) {
            for (const std::string& name : namesIn(folder_ / language, false)) {
                checkFile(language, name);
            }
        }
        checkUndescribed();
        checkDescribed();
        return std::move(diagnostics_);
    }

private:
    /// An entry, and where it is.
    struct Located
    {
        const std::string& language;
        const std::string& file;  // without extension
        const FiledEntry& filed;
        core::Position position;
    };

    void add(std::string path, std::string message, core::Position position)
    {
        position.file = position.file.empty() ? "catalog" : "catalog/" + position.file;
        diagnostics_.push_back({std::move(path), std::move(message), std::move(position)});
    }

    void report(const Located& located, std::string message)
    {
        add(located.filed.path, std::move(message), located.position);
    }

    // Files

    void checkFile(const std::string& language, const std::string& name)
    {
        const std::string file = language + "/" + name;
        const std::string area = fs::path(name).stem().string();
        const bool isSynonyms = area == synonymsFile;
        if (!(isSynonyms || files_.contains(area)) || name != area + ".json") {
            add("", "is not the file of an area of the tree: rename or remove it", {.file = file});
            return;
        }
        const std::string text = core::readInput((folder_ / file).string());
        const core::PositionIndex index(text);
        try {
            if (isSynonyms) {
                static_cast<void>(parseSynonyms(text));
                return;
            }
            std::size_t last = 0;
            for (const FiledEntry& filed : parseCatalogFile(text)) {
                checkEntry({language, area, filed, index.at(filed.offset, file)}, last);
            }
        } catch (const core::ParseError& error) {
            add("", error.what(), index.at(error.offset(), file));
            if (language == sourceLanguage) {
                broken_.insert(area);
            }
        }
    }

    /// `last` is the number after the one that the last entry has in the tree; it is advanced.
    void checkEntry(const Located& located, std::size_t& last)
    {
        const Node* node = tree_.find(located.filed.path);
        if (!isDescribable(node)) {
            reportUnknown(located.filed.path, located.position);
            return;
        }
        const std::size_t position = positions_.at(node);
        if (position < last) {
            report(located, "is not in tree order, or is here twice: move or remove it");
        }
        last = position + 1;
        if (catalogFileOf(*node) != located.file) {
            report(located, "belongs in " + std::string(catalogFileOf(*node)) + ".json: move it");
        }
        for (const std::string& member : located.filed.unknownMembers) {
            report(located,
                   "unknown member \"" + member + "\": title, sentence, keywords and values are known");
        }
        checkKeywords(located);
        checkValues(located, *node);
        if (located.language == sourceLanguage && !located.filed.entry.sentence.empty()) {
            described_.insert(node);
            checkSentence(located, *node);
        }
    }

    static bool isDescribable(const Node* node) { return node != nullptr && node->kind() != NodeKind::alias; }

    /// Reports a path that is none of a group or setting.
    void reportUnknown(const std::string& path, const core::Position& position)
    {
        if (tree_.find(path) != nullptr) {
            add(path, "is an alias, which the catalog does not describe: remove it", position);
            return;
        }
        const auto similar = suggestions_.suggest(path);
        add(path,
            "is not a group or setting of the tree: correct or remove it" +
                (similar.empty() ? "" : "; " + core::didYouMean(similar)),
            position);
    }

    // Entries

    void checkSentence(const Located& located, const Node& node)
    {
        const CatalogEntry& entry = located.filed.entry;
        if (isWithin(stemsOf(entry.sentence), stemsOf(titleWords(node, entry)))) {
            report(located, "the sentence only repeats the title: say what a user gets, or remove it");
        }
        if (const std::size_t length = core::characterCount(entry.sentence); length > maximumLength) {
            report(located, "the sentence has " + std::to_string(length) + " characters: shorten it to " +
                                std::to_string(maximumLength));
        }
        if (!entry.sentence.ends_with('.')) {
            report(located, "the sentence does not end with a period: add one");
        }
    }

    /// Returns the words of the title: those of the catalog and of the names.
    static std::string titleWords(const Node& node, const CatalogEntry& entry)
    {
        std::string words = entry.title;
        for (const Node* group = &node; group != nullptr; group = group->parent()) {
            words.append(" ").append(makeTitle(group->name()));
        }
        return words;
    }

    void checkKeywords(const Located& located)
    {
        const CatalogEntry& entry = located.filed.entry;
        const Words path = wordsOf(makeTitle(located.filed.path));
        const Words sentence = wordsOf(entry.sentence);
        for (const std::string& keyword : entry.keywords) {
            const Words words = wordsOf(keyword);
            if (isWithin(words, path) || isWithin(words, sentence)) {
                report(located,
                       "the keyword \"" + keyword + "\" repeats the path or the sentence: remove it");
            }
        }
    }

    void checkValues(const Located& located, const Node& node)
    {
        if (located.filed.entry.values.empty()) {
            return;
        }
        const core::Constraint constraint = core::constraintOf(node.properties());
        std::set<std::string, std::less<>> allowed;
        for (const auto& strings :
             {constraint.allowedStrings.value_or(constraint.colourNames), constraint.colourNames})
        {
            std::ranges::transform(strings, std::inserter(allowed, allowed.end()),
                                   [](std::u16string_view string) {
                                       return foundation::verdixdata::toUtf8(std::u16string(string));
                                   });
        }
        for (const auto& [value, phrase] : located.filed.entry.values) {
            if (!allowed.contains(value)) {
                report(located,
                       "the constraint does not allow \"" + value + "\", which \"values\" describes");
            }
        }
    }

    // What has no sentence

    void checkUndescribed()
    {
        std::istringstream lines(core::readFile(folder_ / listName).value_or(""));
        std::size_t last = 0;
        std::string path;
        for (core::Position position{std::string(listName), 1}; std::getline(lines, path); ++position.line) {
            const Node* node = tree_.find(path);
            if (!isDescribable(node)) {
                reportUnknown(path, position);
                continue;
            }
            if (positions_.at(node) < last) {
                add(path, "is not in tree order, or is here twice: move or remove it", position);
            }
            if (described_.contains(node)) {
                add(path, "has a sentence: remove this line", position);
            }
            last = positions_.at(node) + 1;
            undescribed_.insert(node);
        }
    }

    void checkDescribed()
    {
        for (const Node* node : tree_.nodes()) {
            const std::string_view file = catalogFileOf(*node);
            if (isDescribable(node) && !described_.contains(node) && !undescribed_.contains(node) &&
                !broken_.contains(file))
            {
                add(node->getFullName(),
                    "has no sentence: say what it does, or add the path to catalog/undescribed if that is "
                    "not known",
                    {.file = std::string(sourceLanguage) + "/" + std::string(file) + ".json"});
            }
        }
    }

    const fs::path folder_;
    const core::SettingsTree& tree_;
    core::PathSuggestions suggestions_;
    std::unordered_map<const Node*, std::size_t> positions_;  // in tree order
    std::set<std::string_view> files_;                        // names without extension
    std::set<std::string, std::less<>> broken_;               // of the source language
    std::set<const Node*> described_;
    std::set<const Node*> undescribed_;
    std::vector<core::Diagnostic> diagnostics_;
};

}  // namespace

std::vector<core::Diagnostic> lintCatalog(const core::SettingsTree& tree, const fs::path& folder)
{
    return CatalogLint(tree, folder).run();
}

}  // namespace vx::review
