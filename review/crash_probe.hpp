#pragma once

// Finds calls that end the process, without ending this one.

#include <cstddef>
#include <functional>
#include <map>
#include <string>

namespace vx::review {

/// Makes the calls call(0) to call(count - 1) in child processes, one child as long as none crashes. Returns
/// what ended the process in those calls that did: "Segmentation fault". Exceptions are ignored. Returns
/// nothing if the system grants no process.
[[nodiscard]] std::map<std::size_t, std::string> findCrashes(std::size_t count,
                                                             const std::function<void(std::size_t)>& call);

}  // namespace vx::review
