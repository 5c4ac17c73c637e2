#pragma once

#include <foundation/export.hpp>

#include <string>

namespace vx::core {

namespace detail {

/// Returns the address of the function. Throws like nativeFunction.
[[nodiscard]] VX_API void* nativeSymbol(const std::string& library, const std::string& function);

}  // namespace detail

/// Returns a function with C linkage of the native library "<library>.so" (or the platform's own suffix). The
/// library is searched for first in the folder verdix/native beside the settings core's own library, then in
/// the system's search path. It stays loaded until the process ends. Thread-safe. Throws std::runtime_error
/// that names what was searched for, where, and what to do.
///
/// Signature is the function's type, such as settings::core::NativeValidator. It cannot be checked: with a
/// wrong one, a call has undefined behaviour.
template <class Signature>
[[nodiscard]] Signature* nativeFunction(const std::string& library, const std::string& function)
{
    return reinterpret_cast<Signature*>(detail::nativeSymbol(library, function));
}

}  // namespace vx::core
