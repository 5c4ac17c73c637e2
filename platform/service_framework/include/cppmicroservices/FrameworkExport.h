#pragma once

#include <cppmicroservices/GlobalConfig.h>

#define US_Framework_EXPORT US_ABI_EXPORT
