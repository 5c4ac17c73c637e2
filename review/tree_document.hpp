#pragma once

#include <settings_core/tree/settings_tree.hpp>

#include <settings/core/settings_file_change.hpp>

#include <boost/json/object.hpp>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::review {

/// A node of an exported tree.
struct DocumentNode
{
    std::string path;
    boost::json::object properties;  ///< as from nodeJson()

    /// Returns whether the node is a group rather than a setting or alias.
    [[nodiscard]] bool isGroup() const { return properties.at("node") == "group"; }
};

/// An exported tree, or a live one that could be exported.
class TreeDocument
{
public:
    /// Reads an exported tree; "-" is standard input. Throws std::runtime_error with the file, and the line
    /// and column or the member that is wrong.
    [[nodiscard]] static TreeDocument read(const std::string& file);

    /// Takes an exported tree. Throws std::runtime_error with the member that is wrong.
    explicit TreeDocument(boost::json::value exported);

    /// Takes a live tree and its release changes.
    TreeDocument(const core::SettingsTree& tree, const ::settings::core::ReleaseChangeTable& releases);

    TreeDocument(TreeDocument&&) = default;  // a copy would refer to the nodes of the original

    /// Returns the nodes in creation order.
    [[nodiscard]] const std::vector<DocumentNode>& nodes() const noexcept { return nodes_; }

    /// Returns the node at this full path, or null.
    [[nodiscard]] const DocumentNode* find(std::string_view path) const noexcept;

    /// Returns the release changes, indexed from 0.
    [[nodiscard]] const ::settings::core::ReleaseChangeTable& releaseChanges() const noexcept
    {
        return releases_;
    }

private:
    void indexNodes();

    std::vector<DocumentNode> nodes_;
    std::unordered_map<std::string_view, const DocumentNode*> byPath_;
    ::settings::core::ReleaseChangeTable releases_;
};

/// Returns the content of a file; "-" is standard input. Throws std::runtime_error if it cannot be read.
[[nodiscard]] std::string contentOf(const std::string& file);

}  // namespace vx::review
