// Modules that use Boost.Serialization export the lock functions of its singleton_module as weak symbols,
// which the dynamic linker binds to one definition in the process. This module serializes nothing, but other
// modules were linked with it, so it keeps exporting these four functions.

#include <boost/serialization/singleton.hpp>

namespace {

using boost::serialization::singleton_module;

struct LockFunctions
{
    void (singleton_module::*lock)();
    void (singleton_module::*unlock)();
    bool (singleton_module::*isLocked)();
};

// The fourth one, get_lock, is private; Boost itself makes sure that it is emitted.
[[gnu::used]] const LockFunctions lockFunctions = {&singleton_module::lock, &singleton_module::unlock,
                                                   &singleton_module::is_locked};

}  // namespace
