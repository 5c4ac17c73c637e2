#pragma once

#include <cppmicroservices/BundleContext.h>

#include <atomic>
#include <memory>

namespace cppmicroservices {

class BundlePrivate;

/// The context of one run of a bundle, from its start to its stop.
class BundleContextPrivate : public std::enable_shared_from_this<BundleContextPrivate>
{
public:
    explicit BundleContextPrivate(std::weak_ptr<BundlePrivate> owner);

    bool IsValid() const noexcept { return valid_; }
    void Invalidate() noexcept { valid_ = false; }

    /// Returns the bundle. Throws IllegalStateException when the run has ended.
    std::shared_ptr<BundlePrivate> Owner() const;

private:
    const std::weak_ptr<BundlePrivate> owner_;
    std::atomic<bool> valid_ = true;
};

BundleContext MakeBundleContext(const std::shared_ptr<BundleContextPrivate>& context);

}  // namespace cppmicroservices
