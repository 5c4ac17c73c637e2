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
        : texts_(boost::make_shared<const Texts>(std::move(scope), std::move(function)))
    {}

    /// What a name consists of: scope and function.
    using Texts = std::pair<std::string, std::string>;

    /// Names a function by texts that stay as they are for as long as the provider is loaded; copies of such
    /// a name count nothing.
    explicit FunctionName(const Texts& lasting) noexcept : texts_(boost::shared_ptr<const Texts>(), &lasting)
    {}

    /// A copy shares the texts. There are no moves, which would leave a name without texts.
    ///@{
    FunctionName(const FunctionName&) = default;
    FunctionName& operator=(const FunctionName&) = default;
    ///@}
    ~FunctionName() = default;

    /// Qualifying prefix, library name or class name, by the kind of function.
    [[nodiscard]] const std::string& scope() const noexcept { return texts_->first; }
    /// The name in that place.
    [[nodiscard]] const std::string& function() const noexcept { return texts_->second; }

private:
    boost::shared_ptr<const Texts> texts_;
};

}  // namespace settings::core::detail
