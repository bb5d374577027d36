// SPDX-License-Identifier: MIT
#pragma once

/// Marks what libvfApplication exports; everything else in it is hidden.
#if defined(_WIN32)
#if defined(VFAPPLICATION_BUILD)
#define VFAPPLICATION_EXPORT __declspec(dllexport)
#else
#define VFAPPLICATION_EXPORT __declspec(dllimport)
#endif
#else
#define VFAPPLICATION_EXPORT __attribute__((visibility("default")))
#endif
