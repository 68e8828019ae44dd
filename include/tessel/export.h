#pragma once

#if __cplusplus < 201703L && (!defined(_MSVC_LANG) || _MSVC_LANG < 201703L)
#error "tessel needs C++17"
#endif

/// @file
/// What the shared library shows.

/// Marks what a host may use of the shared library: everything else is hidden. Each class that crosses the
/// border as an exception or is the target of a runtime cast must carry it.
#if defined(_WIN32)
#if defined(TESSEL_BUILDING)
#define TESSEL_API __declspec(dllexport)
#else
#define TESSEL_API __declspec(dllimport)
#endif
#else
#define TESSEL_API __attribute__((visibility("default")))
#endif
