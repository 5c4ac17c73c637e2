#pragma once

#include <foundation/export.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <string>

namespace settings::core::detail {

/// Names a function that the settings core can call: the place where it is found, and its name there. As
/// cheap to copy as a pointer: copies share their strings, which never change. What was moved from has empty
/// strings.
class VX_API FunctionName
{
public:
    /// Names `function` of `scope`; what these are depends on the kind of function.
    FunctionName(std::string scope, std::string function);
    FunctionName(const FunctionName& other) noexcept;
    FunctionName(FunctionName&& other) noexcept;
    FunctionName& operator=(const FunctionName& other) noexcept;
    FunctionName& operator=(FunctionName&& other) noexcept;
    ~FunctionName();

    /// Qualifying prefix, library name or class name, by the kind of function.
    [[nodiscard]] const std::string& scope() const noexcept;
    /// The name in that place.
    [[nodiscard]] const std::string& function() const noexcept;

protected:
    /// What copies share.
    struct Names;

    /// Takes over names, to which a kind of function may have added something of its own.
    explicit FunctionName(boost::shared_ptr<const Names> names) noexcept;

    /// Null in what was moved from.
    [[nodiscard]] const Names* names() const noexcept { return names_.get(); }

private:
    boost::shared_ptr<const Names> names_;
};

}  // namespace settings::core::detail
