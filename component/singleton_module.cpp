// Every module that serializes carries the lock functions of Boost's singleton module, and the loader binds
// all of them to one copy. This module serializes nothing, but is among those that the others were linked
// with, so it keeps its copy of the four.

#include <boost/serialization/singleton.hpp>

namespace {

using boost::serialization::singleton_module;

struct LockFunctions
{
    void (singleton_module::*lock)();
    void (singleton_module::*unlock)();
    bool (singleton_module::*isLocked)();
};

// The fourth, get_lock, is private; Boost itself marks it as used.
[[gnu::used]] const LockFunctions lockFunctions = {&singleton_module::lock, &singleton_module::unlock,
                                                   &singleton_module::is_locked};

}  // namespace
