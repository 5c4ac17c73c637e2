#include "search/search_entries.hpp"

#include <settings_core/releases/release_history.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vx::tool {

namespace {

using core::Node;
using foundation::verdixdata::ArrayType;

bool hasStrings(const foundation::verdixdata::Array& value)
{
    return value.isAssigned() && (value.getType() == ArrayType::CHAR ||
                                  value.getType() == ArrayType::STRING || value.getType() == ArrayType::CELL);
}

/// Returns the allowed strings, what they do, and the strings of the factory value.
std::vector<std::string> valuesOf(const Node& node, const review::CatalogEntry& entry)
{
    std::vector<std::string> values;
    const Node::Properties& properties = node.properties();
    for (const auto& validator : properties.valueValidators) {
        std::ranges::transform(validator.allowedValues, std::back_inserter(values),
                               foundation::verdixdata::toUtf8);
    }
    for (const auto& [value, phrase] : entry.values) {
        values.push_back(phrase);
    }
    if (hasStrings(properties.factoryValue)) {
        values.push_back(core::formatValue(properties.factoryValue));
    }
    return values;
}

}  // namespace

std::vector<SearchEntry> searchEntries(const Session& session, Catalog& catalog)
{
    const core::ReleaseHistory history(session.releaseChanges());
    std::vector<SearchEntry> entries;
    entries.reserve(session.tree().nodes().size());
    std::unordered_map<const Node*, std::vector<std::string_view>> titles{{session.tree().root().get(), {}}};
    for (const Node* node : session.tree().nodes()) {
        const review::CatalogEntry& described = catalog.entryOf(*node);
        SearchEntry& entry = entries.emplace_back(SearchEntry{.path = node->fullName()});
        entry.titles = titles.at(node->parent());
        entry.titles.push_back(described.title.empty() ? node->name() : std::string_view(described.title));
        entry.sentence = described.sentence;
        entry.keywords = described.keywords;
        entry.values = valuesOf(*node, described);
        entry.isSecondary = node->kind() == core::NodeKind::group || node->isHidden();
        for (const core::ReleaseStep& step : history.movesTo(node->fullName())) {
            entry.oldPaths.emplace_back(step.from);
        }
        if (node->kind() == core::NodeKind::group) {
            titles.emplace(node, entry.titles);
        }
    }
    return entries;
}

}  // namespace vx::tool
