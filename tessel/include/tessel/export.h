#pragma once

/// Marks the public symbols: exported while TESSEL_BUILDING is defined, imported otherwise.
#if defined(_WIN32)
#if defined(TESSEL_BUILDING)
#define TESSEL_EXPORT __declspec(dllexport)
#else
#define TESSEL_EXPORT __declspec(dllimport)
#endif
#else
#define TESSEL_EXPORT __attribute__((visibility("default")))
#endif
