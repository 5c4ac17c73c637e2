#pragma once

#include <foundation/verdixdata/array.hpp>
#include <settings/core/function_name.hpp>
#include <settings/core/settings.hpp>

#include <boost/smart_ptr/make_shared.hpp>

#include <functional>
#include <string>
#include <utility>
#include <variant>

namespace settings::core {

/// A function of the scripting language: (qualifying prefix, function name).
class MValidator : public detail::FunctionName
{
public:
    using FunctionName::FunctionName;
};

/// A native function: (library name, function name). It has the type NativeValidator.
class CValidator : public detail::FunctionName
{
public:
    using FunctionName::FunctionName;
};

/// A method of the managed runtime: (class name, method name).
class JValidator : public detail::FunctionName
{
public:
    using FunctionName::FunctionName;
};

/// A callable of this process, with two names for messages. It refuses a value by raising an exception
/// whose text is what the user reads.
class CPPValidator : public detail::FunctionName
{
public:
    /// Called with the setting, its own name, and the value proposed.
    using Callable = std::function<void(const boost::shared_ptr<const Settings>& node,
                                        const std::string& name, const foundation::verdixdata::Array& value)>;

    /// `scope` and `function` are only named in messages. The callable lives as long as the record does, and
    /// so must the library that it comes from.
    CPPValidator(Callable callable, std::string scope, std::string function)
        : FunctionName(boost::make_shared<const NamedCallable>(
              NamedCallable{{std::move(scope), std::move(function)}, std::move(callable)}))
    {}

    /// What to call.
    [[nodiscard]] const Callable& callable() const noexcept
    {
        return static_cast<const NamedCallable&>(texts()).callable;
    }

private:
    /// The callable stands with its names, so that a record of another kind has no room to keep for it.
    struct NamedCallable : Texts
    {
        Callable callable;
    };
};

/// How a value is checked by a function; std::monostate where none is. The order of the alternatives is
/// fixed.
using Validator = std::variant<std::monostate, MValidator, CValidator, JValidator, CPPValidator>;

/// What a native library exports, with C linkage, for a CValidator: it refuses a value by raising an
/// exception whose text is what the user reads.
using NativeValidator = void(const foundation::verdixdata::Array& value);

}  // namespace settings::core
