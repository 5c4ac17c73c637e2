#pragma once

#include <foundation/verdixdata/array.hpp>
#include <settings/core/function_name.hpp>

#include <string>
#include <variant>

namespace settings::core {

/// A native function of type NativeRunTimeDefault that computes the factory value: (library name, function
/// name).
class VX_API CRunTimeDefault : public detail::FunctionName
{
public:
    /// As of FunctionName.
    CRunTimeDefault(std::string scope, std::string function);
    /// As of FunctionName.
    ///@{
    CRunTimeDefault(const CRunTimeDefault& other) noexcept;
    CRunTimeDefault(CRunTimeDefault&& other) noexcept;
    CRunTimeDefault& operator=(const CRunTimeDefault& other) noexcept;
    CRunTimeDefault& operator=(CRunTimeDefault&& other) noexcept;
    ///@}
    ~CRunTimeDefault();
};

/// A function of the scripting language that computes the factory value: (qualifying prefix, function name).
class VX_API MRunTimeDefault : public detail::FunctionName
{
public:
    /// As of FunctionName.
    MRunTimeDefault(std::string scope, std::string function);
    /// As of FunctionName.
    ///@{
    MRunTimeDefault(const MRunTimeDefault& other) noexcept;
    MRunTimeDefault(MRunTimeDefault&& other) noexcept;
    MRunTimeDefault& operator=(const MRunTimeDefault& other) noexcept;
    MRunTimeDefault& operator=(MRunTimeDefault&& other) noexcept;
    ///@}
    ~MRunTimeDefault();
};

/// A method of the managed runtime that computes the factory value: (class name, method name).
class VX_API JRunTimeDefault : public detail::FunctionName
{
public:
    /// As of FunctionName.
    JRunTimeDefault(std::string scope, std::string function);
    /// As of FunctionName.
    ///@{
    JRunTimeDefault(const JRunTimeDefault& other) noexcept;
    JRunTimeDefault(JRunTimeDefault&& other) noexcept;
    JRunTimeDefault& operator=(const JRunTimeDefault& other) noexcept;
    JRunTimeDefault& operator=(JRunTimeDefault&& other) noexcept;
    ///@}
    ~JRunTimeDefault();
};

/// The order of the alternatives differs from that of Validator; both are fixed.
using RunTimeDefault = std::variant<std::monostate, CRunTimeDefault, MRunTimeDefault, JRunTimeDefault>;

/// Type of the function that a native library exports, with C linkage, for a CRunTimeDefault. It assigns the
/// factory value to `value`.
using NativeRunTimeDefault = void(foundation::verdixdata::Array& value);

}  // namespace settings::core
