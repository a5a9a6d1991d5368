#pragma once

/// Marks the public symbols of velum_types. Everything else stays hidden in the library.
#if defined(_WIN32)
#if defined(VELUM_TYPES_BUILDING)
#define VELUM_TYPES_EXPORT __declspec(dllexport)
#else
#define VELUM_TYPES_EXPORT __declspec(dllimport)
#endif
#else
#define VELUM_TYPES_EXPORT __attribute__((visibility("default")))
#endif
