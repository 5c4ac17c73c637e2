#pragma once

#include <settings_core/node.hpp>

#include <settings/core/factory_settings_loader.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The embedded settings core: the tree of settings, and what is done with it.
namespace vx::core {

/// A tree of settings with constant-time look-up by path. One builder at a time may add to a tree; a finished
/// tree may be read from several threads. Callables that a provider handed over need the provider's code: its
/// library has to stay loaded, as the service framework sees to for bundles.
class VX_API SettingsTree
{
public:
    /// A tree that holds the root group alone.
    explicit SettingsTree(std::string_view rootName);

    /// The root group; never null.
    [[nodiscard]] const boost::shared_ptr<Node>& root() const noexcept { return root_; }

    /// The node at this full path, or null.
    [[nodiscard]] const Node* find(std::string_view path) const noexcept;

    /// Every node but the root, in creation order.
    [[nodiscard]] std::span<const Node* const> nodes() const noexcept;

private:
    boost::shared_ptr<NodeStore> store_;
    boost::shared_ptr<Node> root_;
};

/// The node that an alias leads to, over further aliases if need be; null when the path leads out of the tree
/// or round in a circle. Any other node leads to itself.
[[nodiscard]] VX_API const Node* followAlias(const SettingsTree& tree, const Node& node) noexcept;

/// Runs a provider: makes its root group and lets it build its tree under it. What the provider raises, this
/// raises. The overload with a tree leaves the nodes made until then in it.
///@{
[[nodiscard]] VX_API SettingsTree loadTree(::settings::core::FactorySettingsLoader& loader);
VX_API void loadTree(::settings::core::FactorySettingsLoader& loader, SettingsTree& tree);
///@}

/// The provider's table of settings moved or removed per release.
[[nodiscard]] VX_API ::settings::core::ReleaseChangeTable
loadReleaseChanges(::settings::core::FactorySettingsLoader& loader);

/// The provider's list of settings to be known by name.
[[nodiscard]] VX_API std::vector<std::string>
loadSettingPathList(::settings::core::FactorySettingsLoader& loader);

}  // namespace vx::core
