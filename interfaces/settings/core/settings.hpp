#pragma once

#include <foundation/export.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <string>

/// The interface between the settings core and the providers of factory settings.
namespace settings::core {

namespace detail {
class FactorySettingProperties;
}

/// A node of the settings tree as validators see it.
class VX_API Settings
{
public:
    Settings() = default;
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;
    virtual ~Settings() = default;

    /// Returns the names from the root to this node, joined with ".".
    [[nodiscard]] virtual std::string getFullName() const = 0;
};

/// A node of the settings tree as factory-settings providers see it.
class VX_API MSettings : public Settings
{
public:
    /// Creates a child node, a setting if `isSetting` is true, else a group, and returns its handle. The
    /// settings core copies what it needs from `properties`. Throws std::invalid_argument when this node
    /// already has a child with that name or cannot have children.
    virtual boost::shared_ptr<MSettings>
    createFactorySetting(const std::string& name, bool isSetting,
                         const detail::FactorySettingProperties& properties) = 0;
};

}  // namespace settings::core
