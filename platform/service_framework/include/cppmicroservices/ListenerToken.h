#pragma once

#include <cppmicroservices/FrameworkExport.h>

#include <cstdint>
#include <utility>

namespace cppmicroservices {

using ListenerTokenId = std::uint64_t;

/// Identifies an added listener for BundleContext::RemoveListener.
class US_Framework_EXPORT ListenerToken
{
public:
    ListenerToken() = default;
    ListenerToken(const ListenerToken&) = delete;
    ListenerToken& operator=(const ListenerToken&) = delete;
    ListenerToken(ListenerToken&& other) noexcept : id_(std::exchange(other.id_, 0)) {}
    ListenerToken& operator=(ListenerToken&& other) noexcept
    {
        id_ = std::exchange(other.id_, 0);
        return *this;
    }
    ~ListenerToken() = default;

    explicit operator bool() const noexcept { return id_ != 0; }

private:
    friend class CoreBundleContext;
    explicit ListenerToken(ListenerTokenId id) : id_(id) {}

    ListenerTokenId id_ = 0;
};

}  // namespace cppmicroservices
