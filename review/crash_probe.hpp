#pragma once

// Finds calls that end the process or do not return, without harm to this process.

#include <cstddef>
#include <functional>
#include <map>
#include <string>

namespace vx::review {

/// Makes the calls call(0) to call(count - 1) in child processes, one child as long as every call returns.
/// Returns what the others do: "ends the process (Segmentation fault)", "has not returned after 5 s".
/// Exceptions are ignored. Returns nothing if the system grants no process.
[[nodiscard]] std::map<std::size_t, std::string> findCrashes(std::size_t count,
                                                             const std::function<void(std::size_t)>& call);

}  // namespace vx::review
