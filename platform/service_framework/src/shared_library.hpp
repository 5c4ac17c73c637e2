#pragma once

#include <string>

namespace cppmicroservices {

/// A bundle's library. Once loaded it stays until the process ends: what came from its code may be kept
/// anywhere, and what it keeps itself is still there when its bundle starts again.
class SharedLibrary
{
public:
    /// What dlopen is told unless the framework's configuration says otherwise: to keep the library's symbols
    /// to itself.
    static const int defaultLoadOptions;

    /// The library of a file, loaded at the first call with these options of dlopen; the same one ever after,
    /// whatever becomes of the file. Throws std::system_error with the loader's words.
    static const SharedLibrary& Load(const std::string& file, int options);

    /// A function of the library; null when it has none of that name.
    template <class Function>
    Function* Find(const std::string& name) const
    {
        return reinterpret_cast<Function*>(Symbol(name));
    }

    /// As above. Throws std::runtime_error naming file and function when it has none.
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
