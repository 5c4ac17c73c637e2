// A bundle with one component, which provides the service consumer::Notation.

#include <cppmicroservices/BundleInitialization.h>
#include <cppmicroservices/servicecomponent/detail/ComponentInstanceImpl.hpp>

#include <notation.hpp>
#include <tuple>

namespace detail = cppmicroservices::service::component::detail;

namespace consumer {

class PlainNotation final : public Notation
{
public:
    std::string assignment(std::string_view path, std::string_view value) const override
    {
        return std::string(path) + " = " + std::string(value);
    }
};

}  // namespace consumer

CPPMICROSERVICES_INITIALIZE_BUNDLE

extern "C" US_ABI_EXPORT detail::ComponentInstance* NewInstance_consumer_PlainNotation()
{
    return new detail::ComponentInstanceImpl<consumer::PlainNotation, std::tuple<consumer::Notation>>();
}

extern "C" US_ABI_EXPORT void DeleteInstance_consumer_PlainNotation(detail::ComponentInstance* instance)
{
    delete instance;
}
