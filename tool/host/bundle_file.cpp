#include "host/bundle_file.hpp"

#include <settings_core/files/input_file.hpp>

#include <boost/algorithm/string/replace.hpp>

#include <array>
#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <fstream>
#include <memory>

#include "cli/command_error.hpp"

namespace vx::tool {

namespace {

struct CloseLibrary
{
    void operator()(void* library) const noexcept { ::dlclose(library); }
};

}  // namespace

void requireLibrary(const std::filesystem::path& file)
{
    const auto reject = [&file](const std::string& reason) {
        throw CommandError(ExitCode::notStarted, "bundle " + file.string() + ": " + reason +
                                                     "; choose another bundle with --bundle FILE");
    };
    const std::string kind(core::fileKind(file));
    if (!kind.empty() && kind != "regular file") {
        reject("is a " + kind + ", not a library");
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

std::string findMissingExport(const cppmicroservices::Bundle& bundle, const std::string& component)
{
    // Installed frameworks report a missing export only to a log service, not to framework listeners.
    const std::unique_ptr<void, CloseLibrary> library(
        ::dlopen(bundle.GetLocation().c_str(), RTLD_LAZY | RTLD_NOLOAD));
    for (const char* prefix : {"NewInstance_", "DeleteInstance_"}) {
        std::string symbol = prefix + boost::algorithm::replace_all_copy(component, "::", "_");
        if (library && ::dlsym(library.get(), symbol.c_str()) == nullptr) {
            return symbol;
        }
    }
    return {};
}

std::string firstLine(std::string_view string)
{
    return std::string(string.substr(0, string.find_first_of("\r\n")));
}

}  // namespace vx::tool
