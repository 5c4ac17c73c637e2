#pragma once

#include <cppmicroservices/FrameworkExport.h>
