#pragma once

#include <settings/core/settings_file_change.hpp>

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::tool {

class Session;

/// A node of an exported tree. What is said of it besides its path is kept as JSON, in one spelling, so that
/// equal facts are equal texts.
struct DocumentNode
{
    std::string path;
    std::map<std::string, std::string, std::less<>> facts;

    /// Settings and aliases can be set by users, groups cannot.
    [[nodiscard]] bool isGroup() const { return facts.at("node") == "\"group\""; }
};

/// A tree in the form of `export --format json`: that of another release, or the one that runs.
class TreeDocument
{
public:
    /// Reads an exported tree. Raises Failure with the file, the place and what is wrong.
    [[nodiscard]] static TreeDocument read(const std::string& file);

    [[nodiscard]] static TreeDocument of(const Session& session);

    /// In creation order.
    [[nodiscard]] const std::vector<DocumentNode>& nodes() const noexcept { return nodes_; }

    /// The node at this full path, or null.
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
