#pragma once

/// Marks what the library velum_types offers to others. Everything else stays hidden in it.
#if defined(_WIN32)
#if defined(VELUM_TYPES_BUILDING)
#define VELUM_TYPES_EXPORT __declspec(dllexport)
#else
#define VELUM_TYPES_EXPORT __declspec(dllimport)
#endif
#else
#define VELUM_TYPES_EXPORT __attribute__((visibility("default")))
#endif
