#pragma once

#ifndef US_BUNDLE_NAME
#error "Define US_BUNDLE_NAME as the bundle's symbolic name"
#endif

#include <cppmicroservices/GlobalConfig.h>

#include <atomic>

namespace cppmicroservices {
class BundleContextPrivate;
}

/// Defines the functions that store and return the bundle's context. Use it once per bundle, at global scope.
#define CPPMICROSERVICES_INITIALIZE_BUNDLE                                                                   \
    static std::atomic<cppmicroservices::BundleContextPrivate*> US_CTX_INS(US_BUNDLE_NAME){};                \
    extern "C" cppmicroservices::BundleContextPrivate* US_GET_CTX_FUNC(US_BUNDLE_NAME)();                    \
    extern "C" cppmicroservices::BundleContextPrivate* US_GET_CTX_FUNC(US_BUNDLE_NAME)()                     \
    {                                                                                                        \
        return US_CTX_INS(US_BUNDLE_NAME).load();                                                            \
    }                                                                                                        \
    extern "C" US_ABI_EXPORT void US_SET_CTX_FUNC(US_BUNDLE_NAME)(cppmicroservices::BundleContextPrivate*);  \
    extern "C" US_ABI_EXPORT void US_SET_CTX_FUNC(US_BUNDLE_NAME)(cppmicroservices::BundleContextPrivate *   \
                                                                  ctx)                                       \
    {                                                                                                        \
        US_CTX_INS(US_BUNDLE_NAME).store(ctx);                                                               \
    }
