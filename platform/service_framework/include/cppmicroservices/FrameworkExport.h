#pragma once

#include <cppmicroservices/GlobalConfig.h>

// VX_EXPORTS is defined while the framework library itself is built.
#if defined(_WIN32) && !defined(VX_EXPORTS)
#define US_Framework_EXPORT US_ABI_IMPORT
#else
#define US_Framework_EXPORT US_ABI_EXPORT
#endif
