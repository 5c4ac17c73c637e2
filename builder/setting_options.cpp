#include <builder/factory_tree.hpp>
#include <builder/setting_options.hpp>
#include <builder/validators.hpp>
#include <builder/values.hpp>

#include <array>
#include <stdexcept>

namespace verdix::settings::detail {

using foundation::verdixdata::Array;

::settings::core::detail::FactorySettingProperties defaultProperties()
{
    return {false, false, {}, {}, {}, false, false, {}};
}

SettingOptions defaultOptions(const FactorySettingNode& node)
{
    return {defaultProperties(), {}, node.treeContext, fullName(node)};
}

void throwInvalidName(const SettingOptions& options, std::string_view name)
{
    throw std::logic_error(options.fullName + ": " + std::string(name) + " is not a valid input argument.");
}

namespace {

/// Returns a logical scalar whose elements are shared by all settings.
const Array& logicalScalar(bool value)
{
    static const std::array scalars{internal::makeScalar<bool>(false), internal::makeScalar<bool>(true)};
    return scalars[value ? 1 : 0];
}

const char* typeErrorMessage(Option option)
{
    switch (option) {
    case Option::hidden:
        return "Hidden flag must be true or false.";
    case Option::readOnly:
        return "ReadOnly flag must be true or false.";
    case Option::additionalFile:
        return "AdditionalFile flag must be true or false.";
    case Option::validationFcn:
        return "Invalid type for ValidationFcn. Must be a string for a VERDIX function or a "
               "FunctionDescriptor for a C function.";
    case Option::factoryValueFcn:
        return "Invalid type for FactoryValueFcn. Must be a string for a VERDIX function or a "
               "FunctionDescriptor for a C function.";
    case Option::valueValidator:
        return "Invalid type for ValueValidator. Must be verdix::settings::internal::SettingValueValidator.";
    case Option::errorHandler:
        return "Error Handler must be function";
    case Option::factoryValue:
        break;
    }
    return "Value is invalid.";
}

}  // namespace

void throwInvalidType(const SettingOptions& options, Option option)
{
    if (option == Option::factoryValue) {
        throw std::logic_error(typeErrorMessage(option));
    }
    throw std::logic_error(options.fullName + ": " + typeErrorMessage(option));
}

void store(SettingOptions& options, Option option, bool value)
{
    switch (option) {
    case Option::hidden:
        options.properties.visible = !value;
        return;
    case Option::readOnly:
        options.properties.readOnly = value;
        return;
    case Option::additionalFile:
        options.properties.additionalFile = value;
        options.properties.additionalFileContext = options.treeContext;
        return;
    case Option::factoryValue:
        options.properties.factoryValue = logicalScalar(value);
        return;
    default:
        throwInvalidType(options, option);
    }
}

void store(SettingOptions& options, Option option, int value)
{
    if (option != Option::factoryValue) {
        throwInvalidType(options, option);
    }
    options.properties.factoryValue = internal::makeScalar<double>(value, options.arrayFactory);
}

void store(SettingOptions& options, Option option, const char* value)
{
    if (value == nullptr) {
        throwInvalidType(options, option);
    }
    switch (option) {
    case Option::factoryValue:
        options.properties.factoryValue = options.arrayFactory.createScalarInternal(value);
        return;
    case Option::validationFcn:
        options.properties.validator = makeValidator(value);
        return;
    case Option::factoryValueFcn:
        options.properties.runTimeDefault = makeRunTimeDefault(value);
        return;
    default:
        throwInvalidType(options, option);
    }
}

void store(SettingOptions& options, Option option, Array&& value)
{
    if (option != Option::factoryValue) {
        throwInvalidType(options, option);
    }
    options.properties.factoryValue = std::move(value);
}

void store(SettingOptions& options, Option option, const FunctionDescriptor& value)
{
    switch (option) {
    case Option::validationFcn:
        options.properties.validator = makeValidator(value, options.fullName);
        return;
    case Option::factoryValueFcn:
        options.properties.runTimeDefault = makeRunTimeDefault(value, options.fullName);
        return;
    default:
        throwInvalidType(options, option);
    }
}

void store(SettingOptions& options, Option option, ::settings::core::CPPValidator&& value)
{
    if (option != Option::validationFcn) {
        throwInvalidType(options, option);
    }
    options.properties.validator = std::move(value);
}

void store(SettingOptions& options, Option option, internal::SettingValueValidator&& value)
{
    if (option != Option::valueValidator) {
        throwInvalidType(options, option);
    }
    options.properties.valueValidators.push_back(std::move(value));
}

void store(SettingOptions& options, Option option, std::vector<internal::SettingValueValidator>&& value)
{
    if (option != Option::valueValidator) {
        throwInvalidType(options, option);
    }
    options.properties.valueValidators = std::move(value);
}

void store(SettingOptions& options, Option option, ::settings::core::detail::ErrorHandler&& value)
{
    if (option != Option::errorHandler || !value) {
        throwInvalidType(options, option);
    }
    options.properties.errorHandler = std::move(value);
}

}  // namespace verdix::settings::detail
