#pragma once

#include <foundation/verdixdata/array.hpp>
#include <settings/core/function_name.hpp>
#include <settings/core/settings.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <functional>
#include <string>
#include <variant>

namespace settings::core {

/// A function of the scripting language: (qualifying prefix, function name).
class VX_API MValidator : public detail::FunctionName
{
public:
    /// As of FunctionName.
    MValidator(std::string scope, std::string function);
    /// As of FunctionName.
    ///@{
    MValidator(const MValidator& other) noexcept;
    MValidator(MValidator&& other) noexcept;
    MValidator& operator=(const MValidator& other) noexcept;
    MValidator& operator=(MValidator&& other) noexcept;
    ///@}
    ~MValidator();
};

/// A native function of type NativeValidator: (library name, function name).
class VX_API CValidator : public detail::FunctionName
{
public:
    /// As of FunctionName.
    CValidator(std::string scope, std::string function);
    /// As of FunctionName.
    ///@{
    CValidator(const CValidator& other) noexcept;
    CValidator(CValidator&& other) noexcept;
    CValidator& operator=(const CValidator& other) noexcept;
    CValidator& operator=(CValidator&& other) noexcept;
    ///@}
    ~CValidator();
};

/// A method of the managed runtime: (class name, method name).
class VX_API JValidator : public detail::FunctionName
{
public:
    /// As of FunctionName.
    JValidator(std::string scope, std::string function);
    /// As of FunctionName.
    ///@{
    JValidator(const JValidator& other) noexcept;
    JValidator(JValidator&& other) noexcept;
    JValidator& operator=(const JValidator& other) noexcept;
    JValidator& operator=(JValidator&& other) noexcept;
    ///@}
    ~JValidator();
};

/// A callable in this process, with two names for messages. If a value is invalid, the callable throws an
/// exception whose message is shown to the user.
class VX_API CPPValidator : public detail::FunctionName
{
public:
    /// Called with the setting, the last component of its path, and the value to validate.
    using Callable = std::function<void(const boost::shared_ptr<const Settings>& node,
                                        const std::string& name, const foundation::verdixdata::Array& value)>;

    /// `scope` and `function` are only used in messages. The library that defines the callable must stay
    /// loaded as long as any copy of this object exists.
    CPPValidator(Callable callable, std::string scope, std::string function);
    /// Copies share the callable and the strings; a moved-from object has none.
    ///@{
    CPPValidator(const CPPValidator& other) noexcept;
    CPPValidator(CPPValidator&& other) noexcept;
    CPPValidator& operator=(const CPPValidator& other) noexcept;
    CPPValidator& operator=(CPPValidator&& other) noexcept;
    ///@}
    ~CPPValidator();

    /// Returns the callable; empty for a moved-from object.
    [[nodiscard]] const Callable& callable() const noexcept;

private:
    /// Stored together with the names on the heap, so that the other alternatives of Validator are no larger
    /// because of the callable.
    struct NamedCallable;
};

/// The function that validates a value; std::monostate if there is none. The order of the alternatives is
/// fixed.
using Validator = std::variant<std::monostate, MValidator, CValidator, JValidator, CPPValidator>;

/// Type of the function that a native library exports, with C linkage, for a CValidator. If the value is
/// invalid, it throws an exception whose message is shown to the user.
using NativeValidator = void(const foundation::verdixdata::Array& value);

}  // namespace settings::core
