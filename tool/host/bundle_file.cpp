#include "host/bundle_file.hpp"

#include <cppmicroservices/Any.h>
#include <cppmicroservices/AnyMap.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <fstream>
#include <new>
#include <vector>

#include "cli/command_error.hpp"

namespace vx::tool {

namespace {

using cppmicroservices::Any;
using cppmicroservices::any_cast;
using cppmicroservices::AnyMap;

struct CloseLibrary
{
    void operator()(void* library) const noexcept { ::dlclose(library); }
};

/// Returns the names of the components in the manifest, by default their class names; none if the manifest is
/// malformed.
std::vector<std::string> componentNames(const AnyMap& manifest)
{
    std::vector<std::string> names;
    try {
        const auto runtime = any_cast<AnyMap>(manifest.at("scr"));
        for (const Any& element : any_cast<std::vector<Any>>(runtime.at("components"))) {
            const auto component = any_cast<AnyMap>(element);
            const char* const key = component.count("name") != 0 ? "name" : "implementation-class";
            names.push_back(any_cast<std::string>(component.at(key)));
        }
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        names.clear();
    }
    return names;
}

/// Returns a class name a::b::C in the form that names of exports contain: a_b_C.
std::string exportSuffix(std::string name)
{
    for (auto at = name.find("::"); at != std::string::npos; at = name.find("::", at)) {
        name.replace(at, 2, "_");
    }
    return name;
}

}  // namespace

void requireLibrary(const std::filesystem::path& file)
{
    const auto reject = [&file](const std::string& reason) {
        throw CommandError(ExitCode::notStarted, "bundle " + file.string() + ": " + reason +
                                                     "; choose another bundle with --bundle FILE");
    };
    if (std::filesystem::is_directory(file)) {
        reject("is a folder, not a library");
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        reject(std::strerror(errno));
    }
    std::array<char, 4> start{};
    stream.read(start.data(), start.size());
    if (std::string_view(start.data(), start.size()) != "\x7f"
                                                        "ELF")
    {
        reject("is not a library");
    }
}

namespace {

std::string missingExport(const std::string& component, const std::string& symbol)
{
    return "its manifest names the component " + component + ", but the library does not export " + symbol;
}

}  // namespace

std::string findComponentError(const cppmicroservices::Bundle& bundle)
{
    const std::unique_ptr<void, CloseLibrary> library(
        ::dlopen(bundle.GetLocation().c_str(), RTLD_LAZY | RTLD_LOCAL));
    if (!library) {
        return "its library does not load: " + firstLine(::dlerror());
    }
    for (const std::string& name : componentNames(bundle.GetHeaders())) {
        for (const char* prefix : {"NewInstance_", "DeleteInstance_"}) {
            const std::string symbol = prefix + exportSuffix(name);
            if (::dlsym(library.get(), symbol.c_str()) == nullptr) {
                return missingExport(name, symbol);
            }
        }
    }
    return {};
}

std::string firstLine(std::string_view string)
{
    return std::string(string.substr(0, string.find_first_of("\r\n")));
}

}  // namespace vx::tool
