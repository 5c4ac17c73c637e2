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
    MValidator(std::string scope, std::string function);
    MValidator(const MValidator& other) noexcept;
    MValidator(MValidator&& other) noexcept;
    MValidator& operator=(const MValidator& other) noexcept;
    MValidator& operator=(MValidator&& other) noexcept;
    ~MValidator();
};

/// A native function: (library name, function name). It has the type NativeValidator.
class VX_API CValidator : public detail::FunctionName
{
public:
    CValidator(std::string scope, std::string function);
    CValidator(const CValidator& other) noexcept;
    CValidator(CValidator&& other) noexcept;
    CValidator& operator=(const CValidator& other) noexcept;
    CValidator& operator=(CValidator&& other) noexcept;
    ~CValidator();
};

/// A method of the managed runtime: (class name, method name).
class VX_API JValidator : public detail::FunctionName
{
public:
    JValidator(std::string scope, std::string function);
    JValidator(const JValidator& other) noexcept;
    JValidator(JValidator&& other) noexcept;
    JValidator& operator=(const JValidator& other) noexcept;
    JValidator& operator=(JValidator&& other) noexcept;
    ~JValidator();
};

/// A callable of this process, with two names for messages. It refuses a value by throwing an exception
/// whose text is what the user reads.
class VX_API CPPValidator : public detail::FunctionName
{
public:
    /// Called with the setting, its own name, and the value proposed.
    using Callable = std::function<void(const boost::shared_ptr<const Settings>& node,
                                        const std::string& name, const foundation::verdixdata::Array& value)>;

    /// `scope` and `function` are only named in messages. The callable lives as long as the record does, and
    /// so must the library that it comes from.
    CPPValidator(Callable callable, std::string scope, std::string function);
    CPPValidator(const CPPValidator& other) noexcept;
    CPPValidator(CPPValidator&& other) noexcept;
    CPPValidator& operator=(const CPPValidator& other) noexcept;
    CPPValidator& operator=(CPPValidator&& other) noexcept;
    ~CPPValidator();

    /// What to call; empty in what was moved from.
    [[nodiscard]] const Callable& callable() const noexcept;

private:
    /// The callable stands with its names, so that a record of another kind has no room to keep for it.
    struct NamedCallable;
};

/// How a value is checked by a function; std::monostate where none is. The order of the alternatives is
/// fixed.
using Validator = std::variant<std::monostate, MValidator, CValidator, JValidator, CPPValidator>;

/// What a native library exports, with C linkage, for a CValidator: it refuses a value by throwing an
/// exception whose text is what the user reads.
using NativeValidator = void(const foundation::verdixdata::Array& value);

}  // namespace settings::core
