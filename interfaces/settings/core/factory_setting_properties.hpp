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

/// The records behind a node.
namespace settings::core::detail {

/// A flag that remembers whether somebody wrote it, because an unwritten false and a written one differ:
/// a node whose visibility was never written is visible.
class WritableFlag
{
public:
    /// A flag that starts as false counts as not written.
    constexpr explicit WritableFlag(bool value) noexcept : value_(value), written_(value) {}

    /// Writes the flag, also when it has that value already.
    constexpr WritableFlag& operator=(bool value) noexcept
    {
        value_ = value;
        written_ = true;
        return *this;
    }

    /// What was written last, or what it started as.
    [[nodiscard]] constexpr bool value() const noexcept { return value_; }
    /// Whether value() is what somebody said, and not the start.
    [[nodiscard]] constexpr bool isWritten() const noexcept { return written_; }

private:
    bool value_;
    bool written_;
};

/// Refuses or reports a value that a setting did not accept; called with the setting's name and the value.
/// What it throws is the message that the user reads.
using ErrorHandler = std::function<void(const std::string& name, const foundation::verdixdata::Array& value)>;

/// The description of one node.
class VX_API FactorySettingProperties
{
public:
    /// `reservedFlag` is stored and has no effect. An unassigned `value` means that there is none.
    FactorySettingProperties(bool isVisible, bool isReadOnly, foundation::verdixdata::Array value,
                             Validator function, RunTimeDefault computedDefault, bool hasAdditionalFile,
                             bool reservedFlag, std::vector<SettingValueValidator::ConfigData> records);
    FactorySettingProperties(const FactorySettingProperties& other);
    FactorySettingProperties(FactorySettingProperties&& other) noexcept;
    FactorySettingProperties& operator=(const FactorySettingProperties& other);
    FactorySettingProperties& operator=(FactorySettingProperties&& other) noexcept;
    ~FactorySettingProperties();

    /// Makes the node an alias of the setting at this path.
    void setAliasName(std::string&& target);

    /// Whether an alias target was given, if only an empty one.
    [[nodiscard]] bool isAlias() const noexcept;

    /// Path of the alias target; empty for a node that is no alias.
    [[nodiscard]] const std::string& aliasName() const noexcept;

    WritableFlag visible;   ///< the node is hidden only when this was written false
    WritableFlag readOnly;  ///< values of a setting that is read-only are not changed by users
    bool additionalFile;    ///< whether the provider keeps a file of its own beside the settings
    bool reserved;          ///< stored, without effect
    foundation::verdixdata::Array factoryValue;  ///< unassigned where there is none, or it is computed
    Validator validator;                         ///< function that checks a value
    RunTimeDefault runTimeDefault;               ///< function that computes the factory value
    /// Value validators, in the order in which they were given; a value must pass all of them.
    std::vector<SettingValueValidator::ConfigData> valueValidators;
    /// Called for every value that was refused; empty for the messages of the settings core.
    ErrorHandler errorHandler;
    /// The tree context of the provider that asked for the additional file.
    boost::shared_ptr<void> additionalFileContext;

private:
    boost::shared_ptr<const std::string> aliasName_;  ///< few nodes have one
};

}  // namespace settings::core::detail
