#pragma once

#include "host/session.hpp"
#include "render/output.hpp"

namespace vx::tool {

/// Writes a settings file with all effective values that are not the factory's, without secrets. Gives a hint
/// at the secrets that it leaves out.
void exportModified(const Session& session, core::Layers& layers, Output& out);

/// As exportModified, with secrets.
void exportModifiedWithSecrets(const Session& session, core::Layers& layers, Output& out);

}  // namespace vx::tool
