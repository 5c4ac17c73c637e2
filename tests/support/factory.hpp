#pragma once

#include <cppmicroservices/ServiceFactory.h>

#include <functional>
#include <stdexcept>
#include <utility>

namespace tests {

using Make =
    std::function<cppmicroservices::InterfaceMapConstPtr(const cppmicroservices::ServiceRegistrationBase&)>;

/// Makes services in the way that a test wants, and raises std::domain_error when one is given back.
struct Factory final : cppmicroservices::ServiceFactory
{
    using Bundle = cppmicroservices::Bundle;
    using Registration = cppmicroservices::ServiceRegistrationBase;
    using Service = cppmicroservices::InterfaceMapConstPtr;

    explicit Factory(Make making) : make(std::move(making)) {}
    Service GetService(const Bundle&, const Registration& own) override { return make(own); }
    void UngetService(const Bundle&, const Registration&, const Service&) override
    {
        ++returned;
        throw std::domain_error("does not take it back");
    }

    Make make;
    int returned = 0;
};

}  // namespace tests
