#pragma once

#include <settings_core/tree/node.hpp>

#include <settings/core/factory_settings_loader.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The embedded settings core: the tree of settings and the operations on it.
namespace vx::core {

/// A tree of settings with constant-time look-up by path. Only one thread at a time may add nodes; a complete
/// tree may be read from several threads. Callables in the tree are code of the provider, whose library must
/// stay loaded; the service framework ensures that for bundles.
class VX_API SettingsTree
{
public:
    /// Creates a tree with only the root group. Throws std::invalid_argument for an invalid name.
    explicit SettingsTree(std::string_view rootName);

    /// Returns the root group; never null.
    [[nodiscard]] const boost::shared_ptr<Node>& root() const noexcept { return root_; }

    /// Returns the node at this full path, or null.
    [[nodiscard]] const Node* find(std::string_view path) const noexcept;

    /// Returns every node except the root, in creation order.
    [[nodiscard]] std::span<const Node* const> nodes() const noexcept;

private:
    boost::shared_ptr<NodeStore> store_;
    boost::shared_ptr<Node> root_;
};

/// Creates the provider's root group and calls the provider to build its tree under it. Passes on exceptions
/// of the provider.
[[nodiscard]] VX_API SettingsTree loadTree(::settings::core::FactorySettingsLoader& loader);

/// Returns the provider's table of settings that each release moved or removed. Throws std::invalid_argument,
/// with release and row, if a change is neither a move nor a removal of one path.
[[nodiscard]] VX_API ::settings::core::ReleaseChangeTable
loadReleaseChanges(::settings::core::FactorySettingsLoader& loader);

/// Returns the paths on the provider's setting path list.
[[nodiscard]] VX_API std::vector<std::string>
loadSettingPathList(::settings::core::FactorySettingsLoader& loader);

}  // namespace vx::core
