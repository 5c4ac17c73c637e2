#pragma once

/// Marks what a platform library offers to others; everything else is hidden. VX_EXPORTS is defined where
/// such a library is built; only Windows has to know who offers and who takes.
#if !defined(_WIN32)
#define VX_API __attribute__((visibility("default")))
#elif defined(VX_EXPORTS)
#define VX_API __declspec(dllexport)
#else
#define VX_API __declspec(dllimport)
#endif
