#pragma once

namespace cppmicroservices {
class BundleContextPrivate;
}

namespace settings::verdix {

/// The context that the framework gave this bundle, or null while the bundle is not started.
[[nodiscard]] cppmicroservices::BundleContextPrivate* getBundleContext();

}  // namespace settings::verdix
