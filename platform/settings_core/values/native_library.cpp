#include <settings_core/values/native_library.hpp>

#include <dlfcn.h>
#include <filesystem>
#include <map>
#include <mutex>
#include <stdexcept>

namespace vx::core {

namespace {

/// Returns the folder of native libraries beside this shared library.
std::filesystem::path nativeFolder()
{
    static const int addressInThisLibrary = 0;
    Dl_info info{};
    if (dladdr(&addressInThisLibrary, &info) == 0 || info.dli_fname == nullptr) {
        return std::filesystem::current_path();
    }
    return std::filesystem::absolute(info.dli_fname).parent_path() / "verdix" / "native";
}

std::string loaderError()
{
    const char* text = dlerror();
    return text == nullptr ? "no reason given" : text;
}

void requirePlainName(const std::string& library)
{
    if (library.empty() || library.find('/') != std::string::npos) {
        throw std::runtime_error("\"" + library +
                                 "\" is not the name of a native library: give its file name without "
                                 "folder and without \"" VX_NATIVE_LIBRARY_SUFFIX "\".");
    }
}

void* load(const std::string& library)
{
    requirePlainName(library);
    const std::string file = library + VX_NATIVE_LIBRARY_SUFFIX;
    const std::filesystem::path folder = nativeFolder();
    const std::filesystem::path own = folder / file;
    const bool isOwn = std::filesystem::exists(own);
    if (void* handle = dlopen(isOwn ? own.c_str() : file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
        return handle;
    }
    if (isOwn) {
        throw std::runtime_error(own.string() + ": cannot be loaded: " + loaderError());
    }
    throw std::runtime_error(file + ": not found in " + folder.string() +
                             " nor in the system's search path (" + loaderError() + "): install it there.");
}

/// Returns the handle of a library, loaded once. A library that failed to load is tried again.
void* libraryHandle(const std::string& library)
{
    static std::mutex mutex;
    static std::map<std::string, void*> handles;
    const std::lock_guard lock(mutex);
    const auto found = handles.find(library);
    return found != handles.end() ? found->second : handles.emplace(library, load(library)).first->second;
}

}  // namespace

void* detail::nativeSymbol(const std::string& library, const std::string& function)
{
    void* symbol = dlsym(libraryHandle(library), function.c_str());
    if (symbol == nullptr) {
        throw std::runtime_error(library + ".so has no function " + function +
                                 ": install the version that the settings tree was made for.");
    }
    return symbol;
}

}  // namespace vx::core
