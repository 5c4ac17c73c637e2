// A bundle with three components: one that works until it is deactivated, one that throws when it is made,
// one without exports.

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/BundleInitialization.h>
#include <cppmicroservices/servicecomponent/detail/ComponentInstanceImpl.hpp>

#include <greeter.hpp>
#include <lifecycle.hpp>
#include <memory>
#include <stdexcept>
#include <tuple>

namespace component = cppmicroservices::service::component;
using component::detail::ComponentInstance;
using component::detail::ComponentInstanceImpl;

namespace greetings {

class PoliteGreeter final : public Greeter, public Counter
{
public:
    PoliteGreeter() { lifecycle::note("constructed"); }
    ~PoliteGreeter() override { lifecycle::note("destroyed"); }

    void Activate(const std::shared_ptr<component::ComponentContext>& context)
    {
        greeting_ = context->GetProperties().at("greeting").ToString();
        const bool isActive =
            context->GetBundleContext().GetBundle().GetState() == cppmicroservices::Bundle::STATE_ACTIVE;
        lifecycle::note(isActive ? "activated" : "activated too early");
    }
    void Deactivate(const std::shared_ptr<component::ComponentContext>&)
    {
        lifecycle::note("deactivated");
        throw std::runtime_error("no rest");
    }

    std::string greet() const override { return greeting_; }
    int next() override { return ++count_; }

private:
    std::string greeting_;
    int count_ = 0;
};

class ThrowingGreeter final : public Greeter
{
public:
    ThrowingGreeter() { throw std::domain_error("no greeting today"); }
    std::string greet() const override { return {}; }
};

}  // namespace greetings

using Polite =
    ComponentInstanceImpl<greetings::PoliteGreeter, std::tuple<greetings::Greeter, greetings::Counter>>;
using Throwing = ComponentInstanceImpl<greetings::ThrowingGreeter, std::tuple<greetings::Greeter>>;

extern "C" {

US_ABI_EXPORT ComponentInstance* NewInstance_greetings_Polite()
{
    lifecycle::note("new");
    return new Polite();
}

US_ABI_EXPORT void DeleteInstance_greetings_Polite(ComponentInstance* instance)
{
    lifecycle::note("delete");
    delete instance;
}

US_ABI_EXPORT ComponentInstance* NewInstance_greetings_ThrowingGreeter()
{
    return new Throwing();
}

US_ABI_EXPORT void DeleteInstance_greetings_ThrowingGreeter(ComponentInstance* instance)
{
    delete instance;
}

US_ABI_EXPORT void US_SET_CTX_FUNC(US_BUNDLE_NAME)(cppmicroservices::BundleContextPrivate* context)
{
    lifecycle::note(context ? "context set" : "context cleared");
}
}
