#pragma once

namespace cppmicroservices {
class BundleContextPrivate;
}

namespace settings::verdix {

/// Returns the context that the framework set for this bundle; null while the bundle is not started.
[[nodiscard]] cppmicroservices::BundleContextPrivate* getBundleContext();

}  // namespace settings::verdix
