#pragma once

/// Marks the exported symbols of a platform library; all others are hidden. VX_EXPORTS is defined while such
/// a library is built, because Windows distinguishes exporting from importing.
#if !defined(_WIN32)
#define VX_API __attribute__((visibility("default")))
#elif defined(VX_EXPORTS)
#define VX_API __declspec(dllexport)
#else
#define VX_API __declspec(dllimport)
#endif
