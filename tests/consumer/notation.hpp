#pragma once

#include <string>
#include <string_view>

namespace consumer {

/// A service of the consumer's own bundle.
class __attribute__((visibility("default"))) Notation
{
public:
    virtual ~Notation() = default;
    virtual std::string assignment(std::string_view path, std::string_view value) const = 0;
};

}  // namespace consumer
