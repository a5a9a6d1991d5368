#pragma once

/// Marks what the library velum_arxml offers to others. Everything else stays hidden in it.
#if defined(_WIN32)
#if defined(VELUM_ARXML_BUILDING)
#define VELUM_ARXML_EXPORT __declspec(dllexport)
#else
#define VELUM_ARXML_EXPORT __declspec(dllimport)
#endif
#else
#define VELUM_ARXML_EXPORT __attribute__((visibility("default")))
#endif
