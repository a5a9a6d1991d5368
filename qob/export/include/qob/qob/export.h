#pragma once

/// Marks the public symbols of the kernel. Everything else stays hidden in the library.
#if defined(_WIN32)
#if defined(QOB_BUILDING)
#define QOB_EXPORT __declspec(dllexport)
#else
#define QOB_EXPORT __declspec(dllimport)
#endif
#else
#define QOB_EXPORT __attribute__((visibility("default")))
#endif

/// Hides a part of a class that is marked so.
#if defined(_WIN32)
#define QOB_HIDDEN
#else
#define QOB_HIDDEN __attribute__((visibility("hidden")))
#endif

/// Keeps a slow path out of the function that calls it.
#if defined(_MSC_VER)
#define QOB_NOINLINE __declspec(noinline)
#define QOB_ALWAYS_INLINE __forceinline
#else
#define QOB_NOINLINE __attribute__((noinline))
#define QOB_ALWAYS_INLINE __attribute__((always_inline)) inline
#endif
