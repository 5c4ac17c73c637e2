#include <settings/core/factory_setting_properties.hpp>
#include <settings/core/settings_file_change.hpp>

#include <boost/smart_ptr/make_shared.hpp>

#include <utility>

// The types that providers pass to the settings core. Their members are compiled here and not inline, so that
// objects stay usable after the provider's library is unloaded; only callables still need that library.

// NOLINTBEGIN(bugprone-macro-parentheses): the argument is the name of a class.
#define VX_DEFINE_VALUE_CLASS(Class)                                                                         \
    Class::Class(const Class&) noexcept = default;                                                           \
    Class::Class(Class&&) noexcept = default;                                                                \
    Class& Class::operator=(const Class&) noexcept = default;                                                \
    Class& Class::operator=(Class&&) noexcept = default;                                                     \
    Class::~Class() = default;

#define VX_DEFINE_FUNCTION_KIND(Class)                                                                       \
    Class::Class(std::string scope, std::string function)                                                    \
        : FunctionName(std::move(scope), std::move(function))                                                \
    {}                                                                                                       \
    VX_DEFINE_VALUE_CLASS(Class)
// NOLINTEND(bugprone-macro-parentheses)

namespace settings::core {

namespace detail {

struct FunctionName::Names
{
    std::string scope;
    std::string function;
};

namespace {

/// The function name or alias target of an object that has none.
const std::string& emptyString()
{
    static const std::string empty;
    return empty;
}

}  // namespace

FunctionName::FunctionName(std::string scope, std::string function)
    : names_(boost::make_shared<const Names>(Names{std::move(scope), std::move(function)}))
{}

FunctionName::FunctionName(boost::shared_ptr<const Names> names) noexcept : names_(std::move(names)) {}

VX_DEFINE_VALUE_CLASS(FunctionName)

const std::string& FunctionName::scope() const noexcept
{
    return names_ ? names_->scope : emptyString();
}

const std::string& FunctionName::function() const noexcept
{
    return names_ ? names_->function : emptyString();
}

FactorySettingProperties::FactorySettingProperties(bool isVisible, bool isReadOnly,
                                                   foundation::verdixdata::Array value, Validator function,
                                                   RunTimeDefault computedDefault, bool hasAdditionalFile,
                                                   bool reservedFlag,
                                                   std::vector<SettingValueValidator::ConfigData> validators)
    : visible(isVisible),
      readOnly(isReadOnly),
      additionalFile(hasAdditionalFile),
      reserved(reservedFlag),
      factoryValue(std::move(value)),
      validator(std::move(function)),
      runTimeDefault(std::move(computedDefault)),
      valueValidators(std::move(validators))
{}

FactorySettingProperties::FactorySettingProperties(const FactorySettingProperties&) = default;
FactorySettingProperties::FactorySettingProperties(FactorySettingProperties&&) noexcept = default;
FactorySettingProperties& FactorySettingProperties::operator=(const FactorySettingProperties&) = default;
FactorySettingProperties& FactorySettingProperties::operator=(FactorySettingProperties&&) noexcept = default;
FactorySettingProperties::~FactorySettingProperties() = default;

void FactorySettingProperties::setAliasName(std::string&& target)
{
    aliasName_ = boost::make_shared<const std::string>(std::move(target));
}

bool FactorySettingProperties::isAlias() const noexcept
{
    return aliasName_ != nullptr;
}

const std::string& FactorySettingProperties::aliasName() const noexcept
{
    return aliasName_ ? *aliasName_ : emptyString();
}

}  // namespace detail

VX_DEFINE_FUNCTION_KIND(MValidator)
VX_DEFINE_FUNCTION_KIND(CValidator)
VX_DEFINE_FUNCTION_KIND(JValidator)
VX_DEFINE_FUNCTION_KIND(CRunTimeDefault)
VX_DEFINE_FUNCTION_KIND(MRunTimeDefault)
VX_DEFINE_FUNCTION_KIND(JRunTimeDefault)

struct CPPValidator::NamedCallable : Names
{
    Callable callable;
};

CPPValidator::CPPValidator(Callable callable, std::string scope, std::string function)
    : FunctionName(boost::make_shared<const NamedCallable>(
          NamedCallable{{std::move(scope), std::move(function)}, std::move(callable)}))
{}

VX_DEFINE_VALUE_CLASS(CPPValidator)

const CPPValidator::Callable& CPPValidator::callable() const noexcept
{
    static const Callable none;
    return names() == nullptr ? none : static_cast<const NamedCallable*>(names())->callable;
}

using ConfigData = SettingValueValidator::ConfigData;

ConfigData::ConfigData() noexcept = default;
ConfigData::ConfigData(Constraints&& constraints) noexcept : Constraints(std::move(constraints)) {}
ConfigData::ConfigData(const ConfigData&) = default;
ConfigData::ConfigData(ConfigData&&) noexcept = default;
ConfigData& ConfigData::operator=(const ConfigData&) = default;
ConfigData& ConfigData::operator=(ConfigData&&) noexcept = default;
ConfigData::~ConfigData() = default;

SettingsFileChange::SettingsFileChange(const std::string& operation, std::vector<std::string>&& from,
                                       std::vector<std::string>&& to)
    : operation_(operation), from_(std::move(from)), to_(std::move(to))
{}

SettingsFileChange::SettingsFileChange(const SettingsFileChange&) = default;
SettingsFileChange::SettingsFileChange(SettingsFileChange&&) noexcept = default;
SettingsFileChange& SettingsFileChange::operator=(const SettingsFileChange&) = default;
SettingsFileChange& SettingsFileChange::operator=(SettingsFileChange&&) noexcept = default;
SettingsFileChange::~SettingsFileChange() = default;

const std::string& SettingsFileChange::operation() const noexcept
{
    return operation_;
}

const std::vector<std::string>& SettingsFileChange::from() const noexcept
{
    return from_;
}

const std::vector<std::string>& SettingsFileChange::to() const noexcept
{
    return to_;
}

}  // namespace settings::core
