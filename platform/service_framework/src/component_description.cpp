#include <boost/algorithm/string/replace.hpp>

#include <array>
#include <component_description.hpp>
#include <service_names.hpp>
#include <stdexcept>

namespace cppmicroservices {

namespace {

/// Members that ask for what this framework does not do. Unknown ones ask for nothing.
constexpr std::array<const char*, 3> unsupportedMembers = {"references", "factory", "factory-properties"};

/// A member of a JSON object; the fallback when it is missing. Throws when it is of another type than T.
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

/// A member that must be there. Throws when it is missing or of another type than T.
template <class T>
T required(const AnyMap& object, const std::string& key)
{
    if (object.count(key) == 0) {
        throw std::runtime_error("\"" + key + "\" is missing");
    }
    return member(object, key, T());
}

std::vector<std::string> describeInterfaces(const AnyMap& service)
{
    if (member(service, "scope", std::string("singleton")) != "singleton") {
        throw std::runtime_error("\"scope\" is not singleton, the only one that this framework does");
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

ComponentDescription describeComponent(const Any& element)
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
        component.interfaces = describeInterfaces(required<AnyMap>(object, "service"));
    }
    component.enabled = member(object, "enabled", true);
    component.immediate = member(object, "immediate", !offersService);
    if (!offersService && !component.immediate) {
        throw std::runtime_error("\"immediate\" is false, but without a \"service\" nothing else makes it");
    }
    for (const auto& [key, value] : member(object, "properties", AnyMap())) {
        component.properties.emplace(key, value);
    }
    for (const char* unsupported : unsupportedMembers) {
        if (object.count(unsupported) != 0) {
            throw std::runtime_error('"' + std::string(unsupported) +
                                     "\" asks for what this framework does not do");
        }
    }
    // A policy without a list of configurations counts for nothing.
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

std::vector<ComponentDescription> describeComponents(const BundleManifest& manifest)
{
    std::vector<ComponentDescription> components;
    if (manifest.headers.count("scr") == 0) {
        return components;
    }
    std::string place = "The bundle " + manifest.symbolicName + ", manifest section scr";
    try {
        const auto section = required<AnyMap>(manifest.headers, "scr");
        if (required<int>(section, "version") != 1) {
            throw std::runtime_error("\"version\" is not 1, the only one that this framework reads");
        }
        const auto list = required<std::vector<Any>>(section, "components");
        const std::string sectionPlace = place;
        for (const Any& element : list) {
            place = sectionPlace + ", component " + std::to_string(components.size() + 1);
            components.push_back(describeComponent(element));
        }
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(place + ": " + error.what());
    }
    return components;
}

}  // namespace cppmicroservices
