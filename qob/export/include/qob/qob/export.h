#pragma once

/// Marks what the kernel library offers to others. Everything else stays hidden in it.
#if defined(_WIN32)
#if defined(QOB_BUILDING)
#define QOB_EXPORT __declspec(dllexport)
#else
#define QOB_EXPORT __declspec(dllimport)
#endif
#else
#define QOB_EXPORT __attribute__((visibility("default")))
#endif

/// Keeps a slow path out of the functions that are read on every call.
#if defined(_MSC_VER)
#define QOB_NOINLINE __declspec(noinline)
#define QOB_ALWAYS_INLINE __forceinline
#else
#define QOB_NOINLINE __attribute__((noinline))
#define QOB_ALWAYS_INLINE __attribute__((always_inline)) inline
#endif
