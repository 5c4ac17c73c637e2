#pragma once

#include <string>

namespace cppmicroservices {

/// A bundle's library. It stays loaded until the process exits: others may hold objects that use its code,
/// and its static variables keep their values when the bundle is started again.
class SharedLibrary
{
public:
    /// Default flags for dlopen: lazy binding, symbols not visible to other libraries.
    static const int defaultLoadOptions;

    /// Loads a library. options are flags for dlopen. Later calls with the same file name return the same
    /// library, even if the file has changed. Throws std::runtime_error with the message of dlerror.
    static const SharedLibrary& Load(const std::string& file, int options);

    /// Returns an exported function of the library; null when there is none with that name.
    template <class Function>
    Function* Find(const std::string& name) const
    {
        return reinterpret_cast<Function*>(Symbol(name));
    }

    /// As above, but throws std::runtime_error naming file and function when there is none.
    template <class Function>
    Function* Get(const std::string& name) const
    {
        return reinterpret_cast<Function*>(RequiredSymbol(name));
    }

private:
    SharedLibrary(std::string file, void* handle);

    void* Symbol(const std::string& name) const;
    void* RequiredSymbol(const std::string& name) const;

    const std::string file_;
    void* const handle_;
};

}  // namespace cppmicroservices
