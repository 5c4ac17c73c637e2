#pragma once

#include <foundation/export.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <string>

namespace settings::core::detail {

/// The name of a function that the settings core can call, and the scope that contains it. Copies share their
/// strings, which are immutable. A moved-from object has empty strings.
class VX_API FunctionName
{
public:
    /// Names `function` in `scope`; the derived classes say what these are.
    FunctionName(std::string scope, std::string function);
    /// Copies share the strings; a moved-from object has empty ones.
    ///@{
    FunctionName(const FunctionName& other) noexcept;
    FunctionName(FunctionName&& other) noexcept;
    FunctionName& operator=(const FunctionName& other) noexcept;
    FunctionName& operator=(FunctionName&& other) noexcept;
    ///@}
    ~FunctionName();

    /// Returns the qualifying prefix, library name or class name, depending on the kind of function.
    [[nodiscard]] const std::string& scope() const noexcept;
    /// Returns the name of the function within its scope.
    [[nodiscard]] const std::string& function() const noexcept;

protected:
    /// The data that copies share.
    struct Names;

    /// Takes names, which may be of a derived class with additional data.
    explicit FunctionName(boost::shared_ptr<const Names> names) noexcept;

    /// Returns null for a moved-from object.
    [[nodiscard]] const Names* names() const noexcept { return names_.get(); }

private:
    boost::shared_ptr<const Names> names_;
};

}  // namespace settings::core::detail
