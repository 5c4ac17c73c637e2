#pragma once

#include "doctor_report.hpp"
#include "host/session.hpp"

namespace vx::tool {

/// Reports the settings files of all layers: where they are, whether they can be read and by whom written,
/// what is wrong in them, and which paths they lock.
void reportFiles(LazySession& lazy, Report& report);

}  // namespace vx::tool
