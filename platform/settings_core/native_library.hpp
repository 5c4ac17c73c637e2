#pragma once

#include <foundation/export.hpp>

#include <string>

namespace vx::core {

namespace detail {

/// The address behind nativeFunction, which raises what this raises.
[[nodiscard]] VX_API void* nativeSymbol(const std::string& library, const std::string& function);

}  // namespace detail

/// A function with C linkage of the native library "<library>.so" (elsewhere: with the system's own ending),
/// which is looked for in the folder verdix/native beside the settings core's own library first and then
/// where the system looks. Libraries stay loaded until the process ends; any thread may ask. Raises
/// std::runtime_error that says what was looked for where, and what to do.
///
/// Signature is the function's type, such as settings::core::NativeValidator; nothing can check it.
template <class Signature>
[[nodiscard]] Signature* nativeFunction(const std::string& library, const std::string& function)
{
    return reinterpret_cast<Signature*>(detail::nativeSymbol(library, function));
}

}  // namespace vx::core
