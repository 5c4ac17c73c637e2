#include "catalog_file.hpp"

#include <settings_core/files/json_reader.hpp>

#include <boost/algorithm/string/case_conv.hpp>

#include <algorithm>
#include <array>
#include <locale>
#include <utility>

#include "json_item.hpp"
#include "words.hpp"

namespace vx::review {

namespace {

using core::Node;
using core::NodeKind;

/// Words in capitals wherever they are in a title.
constexpr std::array<std::string_view, 22> acronyms = {
    "API", "ASCII", "CPU", "CSS", "CSV", "DPI", "GPU", "GUI", "HTML", "HTTP", "ID",
    "IP",  "JSON",  "PDF", "PNG", "RGB", "RTF", "SVG", "UI",  "URL",  "UTF",  "XML"};

/// Words without a capital inside a title.
constexpr std::array<std::string_view, 17> smallWords = {"a",   "an",   "and", "as",    "at",  "by",
                                                         "for", "from", "if",  "in",    "of",  "on",
                                                         "or",  "the",  "to",  "while", "with"};

std::string titleWord(std::string_view word, bool isInside)
{
    std::string small = lowerCase(word);
    if (isInside && std::ranges::find(smallWords, small) != smallWords.end()) {
        return small;
    }
    std::string capitals = boost::algorithm::to_upper_copy(small, std::locale::classic());
    if (std::ranges::find(acronyms, capitals) != acronyms.end()) {
        return capitals;
    }
    std::string result(word);
    result.front() = capitals.front();
    return result;
}

CatalogEntry entryOf(const core::JsonValue& object, std::vector<std::string>& unknownMembers)
{
    CatalogEntry entry;
    for (const core::JsonMember& member : JsonItem(object).members()) {
        const JsonItem value(member.value);
        if (member.name == "title") {
            entry.title = value.string();
        } else if (member.name == "sentence") {
            entry.sentence = value.string();
        } else if (member.name == "keywords") {
            for (const JsonItem& keyword : value.elements()) {
                entry.keywords.push_back(keyword.string());
            }
        } else if (member.name == "values") {
            for (const core::JsonMember& phrase : value.members()) {
                entry.values.emplace_back(phrase.name, JsonItem(phrase.value).string());
            }
        } else {
            unknownMembers.push_back(member.name);
        }
    }
    return entry;
}

}  // namespace

std::string_view CatalogEntry::phraseOf(std::string_view value) const
{
    const auto found = std::ranges::find(values, value, &std::pair<std::string, std::string>::first);
    return found == values.end() ? std::string_view() : found->second;
}

std::vector<FiledEntry> parseCatalogFile(std::string_view text)
{
    const core::JsonValue document = core::readJson(text);
    const std::vector<core::JsonMember>& members = JsonItem(document).members();
    std::vector<FiledEntry> entries;
    entries.reserve(members.size());
    for (const core::JsonMember& member : members) {
        FiledEntry& filed = entries.emplace_back(FiledEntry{member.name, member.offset});
        filed.entry = entryOf(member.value, filed.unknownMembers);
    }
    return entries;
}

std::vector<std::vector<std::string>> parseSynonyms(std::string_view text)
{
    const core::JsonValue document = core::readJson(text);
    std::vector<std::vector<std::string>> synonyms;
    for (const JsonItem& list : JsonItem(document).elements()) {
        std::vector<std::string>& words = synonyms.emplace_back();
        for (const JsonItem& word : list.elements()) {
            words.push_back(word.string());
        }
    }
    return synonyms;
}

std::string_view catalogFileOf(const Node& node)
{
    const Node* top = &node;
    while (top->parent() != nullptr && top->parent()->parent() != nullptr) {
        top = top->parent();
    }
    return top->kind() == NodeKind::group && top->parent() != nullptr ? top->name() : "root";
}

std::string makeTitle(std::string_view name)
{
    std::string title;
    const std::vector<std::string_view> words = splitWords(name);
    for (std::size_t index = 0; index < words.size(); ++index) {
        title.append(title.empty() ? "" : " ")
            .append(titleWord(words[index], index > 0 && index + 1 < words.size()));
    }
    return title;
}

std::string ownTitle(const Node& node, const CatalogEntry& entry)
{
    return entry.title.empty() ? makeTitle(node.name()) : entry.title;
}

}  // namespace vx::review
