// SPDX-License-Identifier: MIT
#pragma once

#if defined(_WIN32)
#if defined(VFAPPLICATIONQT_BUILD)
#define VFAPPLICATIONQT_EXPORT __declspec(dllexport)
#else
#define VFAPPLICATIONQT_EXPORT __declspec(dllimport)
#endif
#else
#define VFAPPLICATIONQT_EXPORT __attribute__((visibility("default")))
#endif
