#pragma once

#include <foundation/verdixdata/array.hpp>
#include <settings/core/run_time_defaults.hpp>
#include <settings/core/setting_value_validator.hpp>
#include <settings/core/validators.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace settings::core::detail {

/// A flag that remembers whether somebody wrote it, because an unwritten false and a written one differ:
/// a node whose visibility was never written is visible.
class WritableFlag
{
public:
    /// A flag that starts as false counts as not written.
    constexpr explicit WritableFlag(bool value) noexcept : value_(value), written_(value) {}

    constexpr WritableFlag& operator=(bool value) noexcept
    {
        value_ = value;
        written_ = true;
        return *this;
    }

    [[nodiscard]] constexpr bool value() const noexcept { return value_; }
    [[nodiscard]] constexpr bool isWritten() const noexcept { return written_; }

private:
    bool value_;
    bool written_;
};

/// Refuses or reports a value that a setting did not accept; called with the setting's name and the value.
/// What it raises is the message that the user reads.
using ErrorHandler = std::function<void(const std::string& name, const foundation::verdixdata::Array& value)>;

/// Everything that a provider says of one node.
class FactorySettingProperties
{
public:
    /// `reservedFlag` is stored and has no effect. An unassigned `value` means that there is none.
    FactorySettingProperties(bool isVisible, bool isReadOnly, foundation::verdixdata::Array value,
                             Validator check, RunTimeDefault computedDefault, bool hasAdditionalFile,
                             bool reservedFlag, std::vector<SettingValueValidator::ConfigData> records)
        : visible(isVisible),
          readOnly(isReadOnly),
          factoryValue(std::move(value)),
          validator(std::move(check)),
          runTimeDefault(std::move(computedDefault)),
          additionalFile(hasAdditionalFile),
          reserved(reservedFlag),
          valueValidators(std::move(records))
    {}

    /// Makes the node an alias of the setting at this path.
    void setAliasName(std::string&& target) { aliasName_ = std::move(target); }

    /// Path of the alias target; empty for a node that is no alias.
    [[nodiscard]] const std::string& aliasName() const noexcept { return aliasName_; }

    WritableFlag visible;
    WritableFlag readOnly;
    foundation::verdixdata::Array factoryValue;
    Validator validator;
    RunTimeDefault runTimeDefault;
    bool additionalFile;
    bool reserved;
    std::vector<SettingValueValidator::ConfigData> valueValidators;
    ErrorHandler errorHandler = nullptr;
    /// The tree context of the provider that asked for the additional file.
    boost::shared_ptr<void> additionalFileContext = nullptr;

private:
    std::string aliasName_;
};

}  // namespace settings::core::detail
