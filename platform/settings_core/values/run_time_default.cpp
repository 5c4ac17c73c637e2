#include <settings_core/values/native_library.hpp>
#include <settings_core/values/run_time_default.hpp>

#include <exception>
#include <stdexcept>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;

DefaultValue compute(const ::settings::core::CRunTimeDefault& native)
{
    std::string computedBy = native.function() + " of " + native.scope();
    auto* function =
        nativeFunction<::settings::core::NativeRunTimeDefault>(native.scope(), native.function());
    Array value;
    try {
        function(value);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        throw std::runtime_error(computedBy + " failed: " + error.what());
    }
    if (!value.isAssigned()) {
        throw std::runtime_error(computedBy +
                                 " computed no value: install the version of the library that the settings "
                                 "tree was made for.");
    }
    return {std::move(value), std::move(computedBy)};
}

[[noreturn]] void throwUnavailable(const ::settings::core::detail::FunctionName& function,
                                   const char* runtime)
{
    throw std::runtime_error(function.scope() + "." + function.function() + " computes the value in the " +
                             runtime + ", which is unavailable in this process: set the value yourself.");
}

struct Compute
{
    DefaultValue operator()(std::monostate) const { return {}; }
    DefaultValue operator()(const ::settings::core::CRunTimeDefault& native) const { return compute(native); }
    DefaultValue operator()(const ::settings::core::MRunTimeDefault& script) const
    {
        throwUnavailable(script, "scripting language");
    }
    DefaultValue operator()(const ::settings::core::JRunTimeDefault& managed) const
    {
        throwUnavailable(managed, "managed runtime");
    }
};

}  // namespace

DefaultValue defaultValue(const Node& setting)
{
    const Node::Properties& properties = setting.properties();
    if (properties.factoryValue.isAssigned()) {
        return {properties.factoryValue, {}};
    }
    return std::visit(Compute{}, properties.runTimeDefault);
}

}  // namespace vx::core
