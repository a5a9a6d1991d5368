#pragma once

/// Marks what the library of stores offers to others.
#if defined(_WIN32)
#if defined(QOB_STORE_BUILDING)
#define QOB_STORE_EXPORT __declspec(dllexport)
#else
#define QOB_STORE_EXPORT __declspec(dllimport)
#endif
#else
#define QOB_STORE_EXPORT __attribute__((visibility("default")))
#endif
