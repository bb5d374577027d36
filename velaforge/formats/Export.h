// SPDX-License-Identifier: MIT
#pragma once

#if defined(_WIN32)
#if defined(VFFORMATS_BUILD)
#define VFFORMATS_EXPORT __declspec(dllexport)
#else
#define VFFORMATS_EXPORT __declspec(dllimport)
#endif
#else
#define VFFORMATS_EXPORT __attribute__((visibility("default")))
#endif
