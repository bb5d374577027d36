// SPDX-License-Identifier: MIT
#pragma once

#if defined(_WIN32)
#if defined(VFAPPLICATIONHEADLESS_BUILD)
#define VFAPPLICATIONHEADLESS_EXPORT __declspec(dllexport)
#else
#define VFAPPLICATIONHEADLESS_EXPORT __declspec(dllimport)
#endif
#else
#define VFAPPLICATIONHEADLESS_EXPORT __attribute__((visibility("default")))
#endif
