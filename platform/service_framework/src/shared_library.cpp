#include <dlfcn.h>
#include <map>
#include <mutex>
#include <shared_library.hpp>
#include <stdexcept>
#include <utility>

namespace cppmicroservices {

namespace {

void* load(const std::string& file, int options)
{
    if (void* handle = dlopen(file.c_str(), options)) {
        return handle;
    }
    const std::string reason = dlerror();
    throw std::runtime_error("Cannot load " + (reason.starts_with(file) ? reason : file + ": " + reason));
}

/// The libraries loaded by the process. Never destroyed, because components may be deactivated during process
/// exit.
struct LoadedLibraries
{
    std::mutex mutex;
    std::map<std::string, SharedLibrary> byFile;
};

LoadedLibraries& loadedLibraries()
{
    static auto& libraries = *new LoadedLibraries();
    return libraries;
}

}  // namespace

const int SharedLibrary::defaultLoadOptions = RTLD_LAZY | RTLD_LOCAL;

SharedLibrary::SharedLibrary(std::string file, void* handle) : file_(std::move(file)), handle_(handle) {}

const SharedLibrary& SharedLibrary::Load(const std::string& file, int options)
{
    LoadedLibraries& libraries = loadedLibraries();
    {
        const std::lock_guard lock(libraries.mutex);
        const auto found = libraries.byFile.find(file);
        if (found != libraries.byFile.end()) {
            return found->second;
        }
    }
    // Not under the lock, because it runs initialisers of the library. dlopen returns the same handle to
    // threads that load the same file concurrently.
    SharedLibrary loaded(file, load(file, options));
    const std::lock_guard lock(libraries.mutex);
    return libraries.byFile.emplace(file, std::move(loaded)).first->second;
}

void* SharedLibrary::Symbol(const std::string& name) const
{
    return dlsym(handle_, name.c_str());
}

void* SharedLibrary::RequiredSymbol(const std::string& name) const
{
    void* symbol = Symbol(name);
    if (!symbol) {
        throw std::runtime_error("The library " + file_ + " exports no function " + name);
    }
    return symbol;
}

}  // namespace cppmicroservices
