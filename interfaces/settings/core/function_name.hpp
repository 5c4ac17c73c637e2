#pragma once

#include <boost/smart_ptr/make_shared.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>

#include <string>
#include <utility>

namespace settings::core::detail {

/// Names a function that the settings core can call: the place where it is found, and its name there. As
/// cheap to copy as a pointer: copies share their texts, which never change.
class FunctionName
{
public:
    /// Names `function` of `scope`; what these are depends on the kind of function.
    FunctionName(std::string scope, std::string function)
        : texts_(boost::make_shared<const Texts>(Texts{std::move(scope), std::move(function)}))
    {}

    /// A copy shares the texts. There are no moves, which would leave a name without texts.
    ///@{
    FunctionName(const FunctionName&) = default;
    FunctionName& operator=(const FunctionName&) = default;
    ///@}
    ~FunctionName() = default;

    /// Qualifying prefix, library name or class name, by the kind of function.
    [[nodiscard]] const std::string& scope() const noexcept { return texts_->scope; }
    /// The name in that place.
    [[nodiscard]] const std::string& function() const noexcept { return texts_->function; }

protected:
    /// What copies share.
    struct Texts
    {
        std::string scope;     ///< as scope()
        std::string function;  ///< as function()
    };

    /// Takes over texts, to which a kind of function may have added something of its own.
    explicit FunctionName(boost::shared_ptr<const Texts> texts) noexcept : texts_(std::move(texts)) {}

    /// Never null.
    [[nodiscard]] const Texts& texts() const noexcept { return *texts_; }

private:
    boost::shared_ptr<const Texts> texts_;
};

}  // namespace settings::core::detail
