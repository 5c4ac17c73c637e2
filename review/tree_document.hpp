#pragma once

#include <settings/core/settings_file_change.hpp>

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::tool {

class Session;

/// A node of an exported tree. Its properties are kept as JSON in a normal form, so that equal properties are
/// equal strings.
struct DocumentNode
{
    std::string path;
    std::map<std::string, std::string, std::less<>> properties;

    /// Returns whether the node is a group rather than a setting or alias.
    [[nodiscard]] bool isGroup() const { return properties.at("node") == "\"group\""; }
};

/// A tree in the form of `export --format json`: read from a file, or built from the running bundle.
class TreeDocument
{
public:
    /// Reads an exported tree. Throws CommandError with file, line and column.
    [[nodiscard]] static TreeDocument read(const std::string& file);

    /// Returns the tree of a session.
    [[nodiscard]] static TreeDocument of(const Session& session);

    /// Returns the nodes in creation order.
    [[nodiscard]] const std::vector<DocumentNode>& nodes() const noexcept { return nodes_; }

    /// Returns the node at this full path, or null.
    [[nodiscard]] const DocumentNode* find(std::string_view path) const noexcept;

    [[nodiscard]] const ::settings::core::ReleaseChangeTable& releaseChanges() const noexcept
    {
        return releases_;
    }

private:
    explicit TreeDocument(std::string_view text);

    std::vector<DocumentNode> nodes_;
    std::unordered_map<std::string_view, const DocumentNode*> byPath_;
    ::settings::core::ReleaseChangeTable releases_;
};

}  // namespace vx::tool
