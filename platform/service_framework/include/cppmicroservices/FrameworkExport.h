#pragma once

#include <cppmicroservices/GlobalConfig.h>

// VX_EXPORTS is defined where the framework's own library is built.
#if defined(_WIN32) && !defined(VX_EXPORTS)
#define US_Framework_EXPORT US_ABI_IMPORT
#else
#define US_Framework_EXPORT US_ABI_EXPORT
#endif
