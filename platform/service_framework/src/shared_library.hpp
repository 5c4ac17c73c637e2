#pragma once

#include <memory>
#include <string>

namespace cppmicroservices {

class BundleContextPrivate;

/// A bundle's loaded library; unloaded at its end.
class SharedLibrary
{
public:
    /// Loads the file with its symbols kept to itself. setterName is the function through which the library
    /// takes its bundle context; it need not have one. Throws std::system_error with the loader's words.
    SharedLibrary(const std::string& file, const std::string& setterName);
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;
    ~SharedLibrary();

    /// Hands the library a context, or null, and keeps it alive for as long as the library has it.
    void SetContext(std::shared_ptr<BundleContextPrivate> context);

    /// A function of the library. Throws std::runtime_error naming file and function when it has none.
    template <class Function>
    Function* Get(const std::string& name) const
    {
        return reinterpret_cast<Function*>(Symbol(name));
    }

private:
    void* Symbol(const std::string& name) const;

    const std::string file_;
    void* const handle_;
    void (*const setContext_)(BundleContextPrivate*);
    std::shared_ptr<BundleContextPrivate> context_;
};

}  // namespace cppmicroservices
