#include <boost/algorithm/string/replace.hpp>

#include <array>
#include <component_description.hpp>
#include <service_names.hpp>
#include <stdexcept>

namespace cppmicroservices {

namespace {

/// Members that need a feature that this framework lacks. Unknown members are ignored.
constexpr std::array<const char*, 3> unsupportedMembers = {"references", "factory", "factory-properties"};

/// Returns a member of a JSON object, or fallback when it is missing. Throws std::runtime_error when its type
/// is not T.
template <class T>
T member(const AnyMap& object, const std::string& key, T fallback)
{
    const auto found = object.find(key);
    if (found == object.end()) {
        return fallback;
    }
    const T* value = any_cast<T>(&found->second);
    if (!value) {
        throw std::runtime_error("\"" + key + "\" is of the wrong JSON type");
    }
    return *value;
}

/// Returns a required member of a JSON object. Throws std::runtime_error when it is missing or its type is
/// not T.
template <class T>
T required(const AnyMap& object, const std::string& key)
{
    if (object.count(key) == 0) {
        throw std::runtime_error("\"" + key + "\" is missing");
    }
    return member(object, key, T());
}

std::vector<std::string> readInterfaces(const AnyMap& service)
{
    if (member(service, "scope", std::string("singleton")) != "singleton") {
        throw std::runtime_error("\"scope\" is not singleton, the only scope that this framework supports");
    }
    std::vector<std::string> interfaces;
    for (const Any& interface : required<std::vector<Any>>(service, "interfaces")) {
        const auto* name = any_cast<std::string>(&interface);
        if (!name || name->empty()) {
            throw std::runtime_error("\"interfaces\" is not a list of interface names");
        }
        interfaces.emplace_back(withoutLeadingColons(*name));
    }
    if (interfaces.empty()) {
        throw std::runtime_error("\"interfaces\" is empty");
    }
    return interfaces;
}

ComponentDescription readComponent(const Any& element)
{
    const auto* members = any_cast<AnyMap>(&element);
    if (!members) {
        throw std::runtime_error("not an object");
    }
    const AnyMap& object = *members;
    ComponentDescription component;
    component.name = member(object, "name", required<std::string>(object, "implementation-class"));
    if (component.name.empty()) {
        throw std::runtime_error("its name is empty");
    }
    const bool offersService = object.count("service") != 0;
    if (offersService) {
        component.interfaces = readInterfaces(required<AnyMap>(object, "service"));
    }
    component.enabled = member(object, "enabled", true);
    component.immediate = member(object, "immediate", !offersService);
    if (!offersService && !component.immediate) {
        throw std::runtime_error(
            "\"immediate\" is false, but a component without \"service\" is never activated otherwise");
    }
    for (const auto& [key, value] : member(object, "properties", AnyMap())) {
        component.properties.emplace(key, value);
    }
    for (const char* unsupported : unsupportedMembers) {
        if (object.count(unsupported) != 0) {
            throw std::runtime_error('"' + std::string(unsupported) +
                                     "\" is not supported by this framework");
        }
    }
    // A policy without configurations has no effect.
    if (object.count("configuration-pid") != 0 &&
        member(object, "configuration-policy", std::string()) == "require")
    {
        throw std::runtime_error(
            "\"configuration-policy\" requires a configuration, but this framework has none");
    }
    return component;
}

}  // namespace

std::string ComponentDescription::FunctionName(const std::string& prefix) const
{
    return prefix + boost::algorithm::replace_all_copy(name, "::", "_");
}

std::vector<ComponentDescription> readComponents(const BundleManifest& manifest)
{
    std::vector<ComponentDescription> components;
    if (manifest.headers.count("scr") == 0) {
        return components;
    }
    std::string location = "The bundle " + manifest.symbolicName + ", manifest section scr";
    try {
        const auto section = required<AnyMap>(manifest.headers, "scr");
        if (required<int>(section, "version") != 1) {
            throw std::runtime_error("\"version\" is not 1, the only version that this framework supports");
        }
        const auto list = required<std::vector<Any>>(section, "components");
        const std::string sectionLocation = location;
        for (const Any& element : list) {
            location = sectionLocation + ", component " + std::to_string(components.size() + 1);
            components.push_back(readComponent(element));
        }
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(location + ": " + error.what());
    }
    return components;
}

}  // namespace cppmicroservices
