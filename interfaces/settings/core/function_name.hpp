#pragma once

#include <string>
#include <utility>

namespace settings::core::detail {

/// Names a function that the settings core can call: the place where it is found, and its name there.
class FunctionName
{
public:
    FunctionName(std::string scope, std::string function)
        : scope_(std::move(scope)), function_(std::move(function))
    {}

    /// Qualifying prefix, library name or class name, by the kind of function.
    [[nodiscard]] const std::string& scope() const noexcept { return scope_; }
    [[nodiscard]] const std::string& function() const noexcept { return function_; }

private:
    std::string scope_;
    std::string function_;
};

}  // namespace settings::core::detail
