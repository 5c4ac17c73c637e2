#pragma once

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>
#include <settings/core/run_time_defaults.hpp>
#include <settings/core/setting_value_validator.hpp>
#include <settings/core/validators.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <functional>
#include <string>
#include <vector>

/// Data of a node.
namespace settings::core::detail {

/// A bool that records whether it was ever assigned: a node is hidden only if its visibility was explicitly
/// set to false, not if false is the initial value.
class WritableFlag
{
public:
    /// Initialises the flag. Initial false counts as not written, initial true as written.
    constexpr explicit WritableFlag(bool value) noexcept : value_(value), written_(value) {}

    /// Sets the value and marks the flag as written, even when the value does not change.
    constexpr WritableFlag& operator=(bool value) noexcept
    {
        value_ = value;
        written_ = true;
        return *this;
    }

    /// Returns the current value.
    [[nodiscard]] constexpr bool value() const noexcept { return value_; }
    /// Returns true if the flag was assigned or initialised with true.
    [[nodiscard]] constexpr bool isWritten() const noexcept { return written_; }

private:
    bool value_;
    bool written_;
};

/// Called with the name of a setting and a value that its constraints rejected. If it throws, the message of
/// the exception is shown to the user.
using ErrorHandler = std::function<void(const std::string& name, const foundation::verdixdata::Array& value)>;

/// The properties of one node.
class VX_API FactorySettingProperties
{
public:
    /// `reservedFlag` is stored but has no effect. An unassigned `value` means that there is no factory
    /// value.
    FactorySettingProperties(bool isVisible, bool isReadOnly, foundation::verdixdata::Array value,
                             Validator function, RunTimeDefault computedDefault, bool hasAdditionalFile,
                             bool reservedFlag, std::vector<SettingValueValidator::ConfigData> records);
    /// A copy has copies of all members.
    ///@{
    FactorySettingProperties(const FactorySettingProperties& other);
    FactorySettingProperties(FactorySettingProperties&& other) noexcept;
    FactorySettingProperties& operator=(const FactorySettingProperties& other);
    FactorySettingProperties& operator=(FactorySettingProperties&& other) noexcept;
    ///@}
    ~FactorySettingProperties();

    /// Makes the node an alias of the setting at this path.
    void setAliasName(std::string&& target);

    /// Returns true if an alias target was set, even an empty one.
    [[nodiscard]] bool isAlias() const noexcept;

    /// Returns the path of the alias target; empty for a node that is not an alias.
    [[nodiscard]] const std::string& aliasName() const noexcept;

    WritableFlag visible;   ///< the node is hidden only if false was written
    WritableFlag readOnly;  ///< users cannot change the value of a read-only setting
    bool additionalFile;    ///< whether the provider keeps an additional file besides the settings file
    bool reserved;          ///< stored, but has no effect
    foundation::verdixdata::Array factoryValue;  ///< unassigned if there is none, or if it is computed
    Validator validator;                         ///< function that validates a value
    RunTimeDefault runTimeDefault;               ///< function that computes the factory value
    /// Value validators in the order in which they were added; a value must satisfy all of them.
    std::vector<SettingValueValidator::ConfigData> valueValidators;
    /// Called for each invalid value; if empty, the user gets the message of the settings core.
    ErrorHandler errorHandler;
    /// The tree context of the provider that keeps the additional file.
    boost::shared_ptr<void> additionalFileContext;

private:
    boost::shared_ptr<const std::string> aliasName_;  ///< a pointer, because few nodes are aliases
};

}  // namespace settings::core::detail
