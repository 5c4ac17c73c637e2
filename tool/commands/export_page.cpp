#include "export_page.hpp"

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/releases/release_name.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/algorithm/string/join.hpp>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>

#include "catalog/catalog.hpp"
#include "page/page_files.hpp"
#include "page_data.hpp"
#include "render/css_preview.hpp"
#include "render/effective_value.hpp"
#include "render/escaping.hpp"
#include "render/node_labels.hpp"

namespace vx::tool {

namespace {

using core::Node;
using core::NodeKind;
using foundation::verdixdata::Array;

/// Width in characters; longer values are collapsed.
constexpr std::size_t valueWidth = 160;

/// What the page is made from.
struct Source
{
    const core::SettingsTree& tree;
    const core::ReleaseHistory history;
    const std::optional<core::ReleaseName> release;
    core::Layers& layers;
    Catalog& catalog;
    PageData data;
};

std::string badge(std::string_view kind, std::string_view text)
{
    return " <span class=\"badge " + std::string(kind) + "\">" + escapeHtml(text) + "</span>";
}

// Values

std::string valueHtml(const Node& setting, const Array& value, const std::string& font)
{
    std::string text;
    if (const std::string colour = cssColour(setting, value); !colour.empty()) {
        text = "<span class=\"swatch\" style=\"background: " + colour + "\"></span>";
    }
    const std::string brief = core::formatValueOnOneLine(value, valueWidth);
    const std::string style = font.empty() ? "" : " class=\"font\" style=\"" + escapeHtml(font) + "\"";
    const std::string code = "<code" + style + ">" + escapeHtml(brief) + "</code>";
    if (!brief.ends_with("…")) {
        return text + code;
    }
    const std::string whole = core::formatValueOnOneLine(value, std::string::npos);
    return text + "<details><summary>" + code + "</summary><code>" + escapeHtml(whole) + "</code></details>";
}

std::string factoryHtml(const Node& setting, const std::string& font)
{
    const auto& properties = setting.properties();
    if (properties.factoryValue.isAssigned()) {
        return valueHtml(setting, properties.factoryValue, font);
    }
    const std::string function = qualifiedName(properties.runTimeDefault);
    return "<span class=\"note\">" +
           (function.empty() ? "no factory value" : "computed by <code>" + escapeHtml(function) + "</code>") +
           "</span>";
}

std::string classOf(const Node& setting)
{
    const auto elementClass = core::constraintOf(setting.properties()).elementClass;
    return elementClass ? className(*elementClass) : "any";
}

// Rows

std::string historyHtml(const Source& source, const Node& node)
{
    std::string text;
    for (const core::ReleaseStep& step : source.history.movesTo(node.fullName())) {
        text.append("<div class=\"history\">moved from <code>").append(escapeHtml(step.from));
        text.append("</code> in ").append(escapeHtml(step.release)).append("</div>");
    }
    return text;
}

/// Returns a name as HTML that may break before capitals, if it is long.
std::string nameHtml(std::string_view name)
{
    constexpr std::size_t longName = 16;
    const auto isCapital = [](char c) { return c >= 'A' && c <= 'Z'; };
    std::string html;
    char before = 'A';
    for (const char c : name) {
        html += name.size() > longName && isCapital(c) && !isCapital(before) ? "<wbr>" : "";
        html += escapeHtml({&c, 1});
        before = c;
    }
    return html;
}

struct Row
{
    std::string attributes;
    std::string badges;
    std::string value;
    std::string constraints;
};

Row aliasRow(const Source& source, const Node& node)
{
    const std::string& target = node.properties().aliasName();
    const bool isResolved = source.tree.find(target) != nullptr;
    const std::string name = "<code>" + escapeHtml(target) + "</code>";
    return {" data-fixed data-class=\"alias\" data-constraints=\"none\"", badge("kind", "alias"),
            isResolved ? "<a href=\"#" + escapeHtml(target) + "\">" + name + "</a>" : name,
            isResolved ? "alias of that setting" : "alias of a setting that is not in this tree"};
}

Row settingRow(const Source& source, const Node& node, const std::string& font)
{
    const auto& properties = node.properties();
    const std::string elementClass = classOf(node);
    Row row{" data-class=\"" + elementClass + "\" data-constraints=\"" +
                escapeHtml(boost::algorithm::join(constraintNames(node), " ")) + "\"",
            properties.readOnly.value() ? badge("access", "read-only") : "", factoryHtml(node, font),
            escapeHtml(core::describeConstraint(properties))};
    const Array& factory = properties.factoryValue;
    row.constraints += "<div class=\"shape\">" +
                       escapeHtml(factory.isAssigned() ? core::formatClassAndSize(factory) : elementClass) +
                       "</div>";
    const auto lock = source.layers.lockOf(node);
    row.attributes += lock || properties.readOnly.value() ? " data-fixed" : "";
    if (lock) {
        row.badges += badge("access", "locked");
        row.constraints +=
            "<div class=\"history\">locked by <code>" + escapeHtml(lock->file.string()) + "</code></div>";
    }
    if (auto modified = modifiedValue(source.layers, node)) {
        const std::string origin(core::originName(modified->origin));
        row.attributes += " data-modified=\"" + origin + "\"";
        row.badges += badge("modified", origin);
        row.value = "<div class=\"held\">" +
                    valueHtml(node, core::shownValue(node, *std::move(modified)).value, "") +
                    "</div><div class=\"factory\">factory: " + row.value + "</div>";
    }
    return row;
}

/// Returns the catalog's sentence; empty if there is none.
std::string sentenceHtml(const Source& source, const Node& node)
{
    const std::string& sentence = source.catalog.entryOf(node).sentence;
    return sentence.empty() ? "" : "<p class=\"sentence\">" + escapeHtml(sentence) + "</p>";
}

void writeRow(Source& source, const Node& node, const std::string& font, Output& out)
{
    const std::string path = escapeHtml(node.fullName());
    const bool isHidden = node.isHidden();
    Row row = node.kind() == NodeKind::alias ? aliasRow(source, node) : settingRow(source, node, font);
    out << "<tr id=\"" << path << "\" data-visibility=\"" << (isHidden ? "hidden" : "visible") << '"'
        << row.attributes << "><th scope=\"row\"><a href=\"#" << path << "\">" << nameHtml(node.name())
        << "</a>" << (isHidden ? badge("visibility", "hidden") : "") << row.badges
        << sentenceHtml(source, node) << "</th><td>" << row.value << "</td><td>" << row.constraints
        << historyHtml(source, node) << "</td></tr>\n";
    source.data.add(node);
}

/// Writes the settings in a group, then its groups.
void writeGroup(Source& source, const Node& group, Output& out)
{
    const auto& children = group.children();
    const auto isGroup = [](const Node& child) { return child.kind() == NodeKind::group; };
    if (children.empty() || !std::all_of(children.begin(), children.end(), isGroup)) {
        const std::string path = escapeHtml(group.fullName());
        out << "<section id=\"" << path << "\">\n<div class=\"heading\"><h2><a href=\"#" << path << "\">"
            << path << "</a></h2>" << (group.isHidden() ? badge("visibility", "hidden") : "")
            << sentenceHtml(source, group) << "</div>\n<table aria-label=\"" << path << "\">\n"
            << "<thead><tr><th scope=\"col\">Setting</th><th scope=\"col\">Value</th>"
            << "<th scope=\"col\">Accepts</th></tr></thead>\n<tbody>\n";
        const std::string font = cssFont(group);
        for (const Node& child : children) {
            if (!isGroup(child)) {
                writeRow(source, child, child.name() == "Name" ? font : "", out);
            }
        }
        out << "</tbody></table></section>\n";
    }
    for (const Node& child : children) {
        if (isGroup(child)) {
            writeGroup(source, child, out);
        }
    }
}

// Document

std::string summary(const Source& source)
{
    const auto nodes = source.tree.nodes();
    const auto count = [&](NodeKind kind) { return std::ranges::count(nodes, kind, &Node::kind); };
    const auto aliases = count(NodeKind::alias);
    return std::to_string(count(NodeKind::setting)) + " settings" +
           (aliases == 0 ? "" : " and " + std::to_string(aliases) + (aliases == 1 ? " alias" : " aliases")) +
           (source.release ? ", release " + core::formatReleaseName(*source.release) : "");
}

/// Writes the document, with each {{placeholder}} replaced by the output of its function.
void fill(std::string_view document, const std::map<std::string_view, std::function<void()>>& placeholders,
          Output& out)
{
    for (;;) {
        const std::size_t start = document.find("{{");
        out << Exact{document.substr(0, start)};
        if (start == std::string_view::npos) {
            return;
        }
        const std::size_t end = document.find("}}", start);
        placeholders.at(document.substr(start + 2, end - start - 2))();
        document.remove_prefix(end + 2);
    }
}

}  // namespace

void exportPage(const Session& session, core::Layers& layers, Output& out)
{
    Catalog catalog(session.tree());
    Source source{session.tree(),
                  core::ReleaseHistory(session.releaseChanges()),
                  session.publishedRelease(),
                  layers,
                  catalog,
                  PageData(layers, catalog)};
    const Node& root = *source.tree.root();
    fill(page::document,
         {{"root", [&] { out << escapeHtml(root.fullName()); }},
          {"summary", [&] { out << escapeHtml(summary(source)); }},
          {"style", [&] { out << Exact{page::style}; }},
          {"scripts", [&] { std::ranges::for_each(page::scripts, [&](auto part) { out << Exact{part}; }); }},
          {"scriptHash", [&] { out << page::scriptHash; }},
          {"rows", [&] { writeGroup(source, root, out); }},
          {"data", [&] { out << Exact{source.data.text(session)}; }}},
         out);
}

}  // namespace vx::tool
