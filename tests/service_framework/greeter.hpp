#pragma once

#include <string>

namespace greetings {

/// The interface of the test services.
class __attribute__((visibility("default"))) Greeter
{
public:
    virtual ~Greeter() = default;
    virtual std::string greet() const = 0;
};

/// A second interface of the same services.
class __attribute__((visibility("default"))) Counter
{
public:
    virtual ~Counter() = default;
    virtual int next() = 0;
};

}  // namespace greetings
