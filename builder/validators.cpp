#include <builder/validators.hpp>

#include <stdexcept>

namespace verdix::settings {

namespace {

template <class Result, class Script>
Result fromQualifiedName(std::string_view name)
{
    auto [prefix, function] = splitQualifiedName(name);
    return Script(std::move(prefix), std::move(function));
}

template <class Result, class Native, class Managed>
Result fromDescriptor(const FunctionDescriptor& function, const std::string& settingName)
{
    if (function.language == "C") {
        return Native(function.owner, function.function);
    }
    if (function.language == "Java") {
        return Managed(function.owner, function.function);
    }
    throw std::logic_error(settingName + ": " + function.language +
                           " is not a valid language for a FunctionDescriptor. It must be 'C' or 'Java'.");
}

}  // namespace

std::pair<std::string, std::string> splitQualifiedName(std::string_view name)
{
    const std::size_t dot = name.rfind('.');
    // Without a dot, npos + 1 is 0, so both parts are the whole name.
    return {std::string(name.substr(0, dot)), std::string(name.substr(dot + 1))};
}

::settings::core::Validator makeValidator(std::string_view qualifiedName)
{
    return fromQualifiedName<::settings::core::Validator, ::settings::core::MValidator>(qualifiedName);
}

::settings::core::Validator makeValidator(const FunctionDescriptor& function, const std::string& settingName)
{
    using namespace ::settings::core;
    return fromDescriptor<Validator, CValidator, JValidator>(function, settingName);
}

::settings::core::RunTimeDefault makeRunTimeDefault(std::string_view qualifiedName)
{
    return fromQualifiedName<::settings::core::RunTimeDefault, ::settings::core::MRunTimeDefault>(
        qualifiedName);
}

::settings::core::RunTimeDefault makeRunTimeDefault(const FunctionDescriptor& function,
                                                    const std::string& settingName)
{
    using namespace ::settings::core;
    return fromDescriptor<RunTimeDefault, CRunTimeDefault, JRunTimeDefault>(function, settingName);
}

::settings::core::CPPValidator makeCppValidator(::settings::core::CPPValidator::Callable callable)
{
    return {std::move(callable), "verdix", "function"};
}

}  // namespace verdix::settings
