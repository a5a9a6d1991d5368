#pragma once

/// Marks the public symbols of velum_foundation. Everything else stays hidden in the library.
#if defined(_WIN32)
#if defined(VELUM_FOUNDATION_BUILDING)
#define VELUM_FOUNDATION_EXPORT __declspec(dllexport)
#else
#define VELUM_FOUNDATION_EXPORT __declspec(dllimport)
#endif
#else
#define VELUM_FOUNDATION_EXPORT __attribute__((visibility("default")))
#endif
