#pragma once

/// Marks what the library velum_foundation offers to others. Everything else stays hidden in it.
#if defined(_WIN32)
#if defined(VELUM_FOUNDATION_BUILDING)
#define VELUM_FOUNDATION_EXPORT __declspec(dllexport)
#else
#define VELUM_FOUNDATION_EXPORT __declspec(dllimport)
#endif
#else
#define VELUM_FOUNDATION_EXPORT __attribute__((visibility("default")))
#endif
