#include <dlfcn.h>
#include <filesystem>
#include <shared_library.hpp>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace cppmicroservices {

namespace {

void* load(const std::string& file)
{
    if (void* handle = dlopen(file.c_str(), RTLD_LAZY | RTLD_LOCAL)) {
        return handle;
    }
    const std::string reason = dlerror();
    std::error_code ignored;
    const auto code = std::filesystem::exists(file, ignored) ? std::errc::executable_format_error
                                                             : std::errc::no_such_file_or_directory;
    throw std::system_error(std::make_error_code(code), "Cannot load the library " + file + ": " + reason);
}

}  // namespace

SharedLibrary::SharedLibrary(const std::string& file, const std::string& setterName)
    : file_(file),
      handle_(load(file)),
      setContext_(reinterpret_cast<void (*)(BundleContextPrivate*)>(dlsym(handle_, setterName.c_str())))
{}

SharedLibrary::~SharedLibrary()
{
    dlclose(handle_);
}

void SharedLibrary::SetContext(std::shared_ptr<BundleContextPrivate> context)
{
    if (context == context_) {
        return;
    }
    if (setContext_) {
        setContext_(context.get());
    }
    context_ = std::move(context);
}

void* SharedLibrary::Symbol(const std::string& name) const
{
    void* symbol = dlsym(handle_, name.c_str());
    if (!symbol) {
        throw std::runtime_error("The library " + file_ + " exports no function " + name);
    }
    return symbol;
}

}  // namespace cppmicroservices
