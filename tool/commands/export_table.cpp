#include "export_table.hpp"

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/algorithm/string/join.hpp>

#include <array>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "catalog/catalog.hpp"
#include "render/effective_value.hpp"
#include "render/escaping.hpp"
#include "render/node_labels.hpp"

namespace vx::tool {

namespace {

using core::Node;
using core::NodeKind;

constexpr std::array<std::string_view, 8> columns = {"path",      "class", "shape",      "value",
                                                     "validator", "rules", "visibility", "origin"};
using Row = std::array<std::string, columns.size()>;

std::string constraints(const Node::Properties& properties)
{
    std::vector<std::string> descriptions;
    for (const auto& validator : properties.valueValidators) {
        descriptions.push_back(core::describeValueValidator(validator, properties.factoryValue));
    }
    return boost::algorithm::join(descriptions, "; ");
}

/// Returns the value in the scripting language's form, or where the factory value comes from.
std::string valueText(const Node& setting, const core::LayerValue& effective)
{
    const auto& runTimeDefault = setting.properties().runTimeDefault;
    const auto* computed = std::get_if<settings::core::CRunTimeDefault>(&runTimeDefault);
    return computed != nullptr && effective.origin == core::Origin::factory
               ? "computed by " + computed->function() + " of " + computed->scope()
               : core::formatValueOnOneLine(effective.value, std::string::npos);
}

Row aliasRow(const Node& alias)
{
    return {alias.getFullName(),
            "",
            "",
            "alias of " + alias.properties().aliasName(),
            "",
            "",
            std::string(visibilityLabel(alias)),
            ""};
}

Row settingRow(const Node& setting, const core::LayerValue& effective)
{
    const auto& properties = setting.properties();
    const auto& array = effective.origin == core::Origin::factory ? properties.factoryValue : effective.value;
    return {setting.getFullName(),
            array.isAssigned() ? className(array.getType()) : "",
            array.isAssigned() ? core::formatDimensions(array.getDimensions()) : "",
            valueText(setting, effective),
            qualifiedName(properties.validator),
            constraints(properties),
            std::string(visibilityLabel(setting)),
            std::string(originName(effective.origin))};
}

template <class Write>
void forEachRow(const Session& session, core::Layers& layers, Write write)
{
    for (const Node* node : session.tree().nodes()) {
        if (node->kind() != NodeKind::group) {
            write(*node, node->kind() == NodeKind::alias ? aliasRow(*node)
                                                         : settingRow(*node, shownEffective(layers, *node)));
        }
    }
}

template <class Fields>
void writeCsvLine(const Fields& fields, Output& out)
{
    std::string_view separator;
    for (const auto& field : fields) {
        out << separator << csvField(std::string(field));
        separator = ",";
    }
    out << "\r\n";
}

template <class Fields>
void writeMarkdownLine(const Fields& fields, std::string_view description, Output& out)
{
    for (const auto& field : fields) {
        out << "| " << markdownText(field) << ' ';
    }
    out << "| " << markdownText(description) << " |\n";
}

}  // namespace

void exportCsv(const Session& session, core::Layers& layers, Output& out)
{
    writeCsvLine(columns, out);
    forEachRow(session, layers, [&](const Node&, const Row& row) { writeCsvLine(row, out); });
}

void exportMarkdown(const Session& session, core::Layers& layers, Output& out)
{
    Catalog catalog(session.tree());
    writeMarkdownLine(columns, "description", out);
    std::array<std::string_view, columns.size()> ruler;
    ruler.fill("---");
    writeMarkdownLine(ruler, "---", out);
    forEachRow(session, layers, [&](const Node& node, const Row& row) {
        writeMarkdownLine(row, catalog.entryOf(node).sentence, out);
    });
}

}  // namespace vx::tool
