#pragma once

#ifdef _WIN32
#define US_ABI_EXPORT __declspec(dllexport)
#define US_ABI_IMPORT __declspec(dllimport)
#define US_ABI_LOCAL
#else
#define US_ABI_EXPORT __attribute__((visibility("default")))
#define US_ABI_IMPORT __attribute__((visibility("default")))
#define US_ABI_LOCAL __attribute__((visibility("hidden")))
#endif

#define US_STR_(x) #x
#define US_STR(x) US_STR_(x)
#define US_CONCAT_(x, y) x##y
#define US_CONCAT(x, y) US_CONCAT_(x, y)

// Names of the variable that stores a bundle's context and of its accessors; bsn is the bundle's symbolic
// name.
#define US_GET_CTX_PREFIX _us_get_bundle_context_instance_
#define US_SET_CTX_PREFIX _us_set_bundle_context_instance_
#define US_CTX_INS_PREFIX _us_bundle_context_instance_
#define US_GET_CTX_FUNC(bsn) US_CONCAT(US_GET_CTX_PREFIX, bsn)
#define US_SET_CTX_FUNC(bsn) US_CONCAT(US_SET_CTX_PREFIX, bsn)
#define US_CTX_INS(bsn) US_CONCAT(US_CTX_INS_PREFIX, bsn)
