#include "tree_document.hpp"

#include <settings_core/files/input_file.hpp>
#include <settings_core/files/text_position.hpp>

#include <boost/json/array.hpp>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "json.hpp"
#include "tree_json.hpp"

namespace vx::review {

namespace {

namespace json = boost::json;
using settings::core::ReleaseChangeSet;
using settings::core::ReleaseChangeTable;
using settings::core::SettingsFileChange;

/// A value in the document; the name, such as nodes[3].path, is for messages.
class Item
{
public:
    explicit Item(json::value& value, std::string name = {}) : value_(value), name_(std::move(name)) {}

    [[noreturn]] void fail(const std::string& expected) const
    {
        throw std::runtime_error(name_ + (name_.empty() ? "" : ": ") + "expected " + expected);
    }

    [[nodiscard]] json::object& object() const
    {
        if (json::object* const object = value_.if_object()) {
            return *object;
        }
        fail("an object");
    }

    [[nodiscard]] Item member(const std::string& name) const
    {
        if (json::value* const found = object().if_contains(name)) {
            return Item(*found, name_ + (name_.empty() ? "" : ".") + name);
        }
        fail("a member \"" + name + "\"");
    }

    [[nodiscard]] std::vector<Item> elements() const
    {
        if (!value_.is_array()) {
            fail("an array");
        }
        std::vector<Item> items;
        for (json::value& element : value_.get_array()) {
            items.emplace_back(element, name_ + "[" + std::to_string(items.size()) + "]");
        }
        return items;
    }

    [[nodiscard]] std::string string() const
    {
        if (const json::string* const string = value_.if_string()) {
            return std::string(*string);
        }
        fail("a string");
    }

private:
    json::value& value_;
    std::string name_;
};

DocumentNode nodeOf(const Item& node)
{
    std::string path = node.member("path").string();
    for (const char* name : {"node", "visibility", "readOnly", "value", "validator", "runTimeDefault",
                             "valueValidators", "aliasTarget", "errorHandler"})
    {
        static_cast<void>(node.member(name));
    }
    return {std::move(path), std::move(node.object())};
}

std::vector<std::string> pathsOf(const Item& list)
{
    std::vector<std::string> paths;
    std::ranges::transform(list.elements(), std::back_inserter(paths), &Item::string);
    return paths;
}

SettingsFileChange changeOf(const Item& change)
{
    auto from = pathsOf(change.member("from"));
    if (from.empty()) {
        change.member("from").fail("a path");
    }
    return {change.member("operation").string(), std::move(from), pathsOf(change.member("to"))};
}

ReleaseChangeSet releaseOf(const Item& release)
{
    ReleaseChangeSet set{release.member("release").string(), false, {}};
    std::ranges::transform(release.member("changes").elements(), std::back_inserter(set.changes), changeOf);
    return set;
}

std::string notATree(const char* reason)
{
    return std::string("not an exported tree: ") + reason +
           "; create one with: vxsettings export --format json -o FILE";
}

}  // namespace

TreeDocument::TreeDocument(json::value exported)
{
    const Item document(exported);
    for (const Item& node : document.member("nodes").elements()) {
        nodes_.push_back(nodeOf(node));
    }
    for (const Item& release : document.member("releaseChanges").elements()) {
        releases_.emplace(releases_.size(), releaseOf(release));
    }
    indexNodes();
}

TreeDocument::TreeDocument(const core::SettingsTree& tree, const ReleaseChangeTable& releases)
{
    for (const core::Node* node : tree.nodes()) {
        nodes_.push_back({node->getFullName(), nodeJson(*node)});
    }
    for (const auto& [index, set] : releases) {
        releases_.emplace(releases_.size(), set);
    }
    indexNodes();
}

TreeDocument TreeDocument::read(const std::string& file)
{
    const std::string text = contentOf(file);
    try {
        return TreeDocument(parseJson(text));
    } catch (const core::ParseError& error) {
        throw std::runtime_error(core::formatDiagnostic(
            {"", notATree(error.what()), core::positionAt(text, error.offset(), core::inputName(file))}));
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(core::inputName(file) + ": " + notATree(error.what()));
    }
}

const DocumentNode* TreeDocument::find(std::string_view path) const noexcept
{
    const auto found = byPath_.find(path);
    return found == byPath_.end() ? nullptr : found->second;
}

void TreeDocument::indexNodes()
{
    for (const DocumentNode& node : nodes_) {
        byPath_.emplace(node.path, &node);
    }
}

std::string contentOf(const std::string& file)
{
    return core::readInput(file, core::maximumTreeFileSize);
}

}  // namespace vx::review
