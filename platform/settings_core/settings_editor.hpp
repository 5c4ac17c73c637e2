#pragma once

#include <settings_core/node.hpp>
#include <settings_core/settings_tree.hpp>

#include <foundation/verdixdata/array.hpp>
#include <settings/core/settings_file_change.hpp>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vx::core {

/// A value that a setting does not take; says the setting, the value, the rules it broke and what is
/// accepted.
class VX_API InvalidValue : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// How a value is written that a person gives.
enum class Notation : std::uint8_t
{
    script,  ///< as parseValue reads it
    json     ///< as settings files have it
};

/// Changes what one settings file states. A file that is not there yet is made, of the newest release; one
/// that is there keeps every byte that is not part of the change, and is replaced as a whole. While it is
/// being changed, other writers wait. Tree and table have to outlive the changer.
///
/// Raises, with nothing changed: UnknownPath; std::runtime_error for groups, aliases that lead nowhere,
/// read-only settings and a damaged file; InvalidValue; std::system_error when the file cannot be written.
class VX_API SettingsEditor
{
public:
    /// Changes `file`, which need not exist.
    SettingsEditor(const SettingsTree& tree, const ::settings::core::ReleaseChangeTable& releases,
                   std::filesystem::path file);

    /// States a value, given the class of the setting where that loses nothing. Paths may leave out the root;
    /// an alias changes the setting behind it, which is returned.
    ///@{
    const Node& set(std::string_view path, foundation::verdixdata::Array value);
    const Node& set(std::string_view path, std::string_view value, Notation notation);
    ///@}

    /// Takes away what the file states of this setting, or of everything in this group, also of paths that
    /// the tree does not know. Returns how many settings that were.
    std::size_t reset(std::string_view path);
    /// Takes away everything that the file states. Returns how many settings that were.
    std::size_t resetAll();

private:
    [[nodiscard]] const Node& changeable(std::string_view path) const;
    void store(const Node& setting, const foundation::verdixdata::Array& value);
    template <class Belongs>
    std::size_t removeWhere(Belongs belongs);

    const SettingsTree& tree_;
    const ::settings::core::ReleaseChangeTable& releases_;
    std::filesystem::path file_;
};

}  // namespace vx::core
