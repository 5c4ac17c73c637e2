#include "export_table.hpp"

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/algorithm/string/join.hpp>

#include <array>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "render/escaping.hpp"
#include "render/node_labels.hpp"

namespace vx::tool {

namespace {

using core::Node;
using core::NodeKind;

constexpr std::size_t valueWidth = 120;
constexpr std::array<std::string_view, 7> columns = {"path",      "class", "shape",     "value",
                                                     "validator", "rules", "visibility"};
using Row = std::array<std::string, columns.size()>;

std::string constraints(const Node::Properties& properties)
{
    std::vector<std::string> descriptions;
    for (const auto& validator : properties.valueValidators) {
        descriptions.push_back(core::describeValueValidator(validator, properties.factoryValue));
    }
    return boost::algorithm::join(descriptions, "; ");
}

/// Returns the factory value in the scripting language's form, or where the value comes from.
std::string value(const Node& node)
{
    const auto& properties = node.properties();
    if (node.kind() == NodeKind::alias) {
        return "alias of " + properties.aliasName();
    }
    if (const auto* computed = std::get_if<settings::core::CRunTimeDefault>(&properties.runTimeDefault)) {
        return "computed by " + computed->function() + " of " + computed->scope();
    }
    return core::formatValueOnOneLine(properties.factoryValue, valueWidth);
}

Row rowOf(const Node& node)
{
    const auto& properties = node.properties();
    const auto& array = properties.factoryValue;
    return {node.getFullName(),
            array.isAssigned() ? className(array.getType()) : "",
            array.isAssigned() ? core::formatDimensions(array.getDimensions()) : "",
            value(node),
            qualifiedName(properties.validator),
            constraints(properties),
            std::string(visibilityLabel(node))};
}

template <class Write>
void forEachRow(const Session& session, Write write)
{
    for (const Node* node : session.tree().nodes()) {
        if (node->kind() != NodeKind::group) {
            write(rowOf(*node));
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
void writeMarkdownLine(const Fields& fields, Output& out)
{
    out << '|';
    for (const auto& field : fields) {
        out << ' ' << markdownText(field) << " |";
    }
    out << '\n';
}

}  // namespace

void exportCsv(const Session& session, Output& out)
{
    writeCsvLine(columns, out);
    forEachRow(session, [&](const Row& row) { writeCsvLine(row, out); });
}

void exportMarkdown(const Session& session, Output& out)
{
    writeMarkdownLine(columns, out);
    writeMarkdownLine(
        std::array<std::string_view, columns.size()>{"---", "---", "---", "---", "---", "---", "---"}, out);
    forEachRow(session, [&](const Row& row) { writeMarkdownLine(row, out); });
}

}  // namespace vx::tool
