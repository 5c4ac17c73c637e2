#pragma once

#include <foundation/export.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <string>

/// What the settings core and the providers of factory settings say to each other.
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

    /// Names from the root down to this node, joined by ".".
    [[nodiscard]] virtual std::string getFullName() const = 0;
};

/// A node of the settings tree as factory-settings providers see it.
class VX_API MSettings : public Settings
{
public:
    /// Creates a node under this one and returns its handle. `isSetting` tells a setting from a group.
    /// The settings core takes what it needs out of the properties; the caller keeps its record.
    /// Raises std::invalid_argument when this node already has a child of that name or cannot have children.
    virtual boost::shared_ptr<MSettings>
    createFactorySetting(const std::string& name, bool isSetting,
                         const detail::FactorySettingProperties& properties) = 0;
};

}  // namespace settings::core
