#pragma once

#ifndef US_BUNDLE_NAME
#error "Define US_BUNDLE_NAME as the bundle's symbolic name"
#endif

#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/BundleInitialization.h>

extern "C" cppmicroservices::BundleContextPrivate* US_GET_CTX_FUNC(US_BUNDLE_NAME)();

namespace cppmicroservices {

/// Returns the context of the calling bundle; empty until the framework has loaded its library.
static inline BundleContext GetBundleContext()
{
    BundleContextPrivate* context = US_GET_CTX_FUNC(US_BUNDLE_NAME)();
    return context ? detail::MakeBundleContext(context) : BundleContext();
}

}  // namespace cppmicroservices
