// SPDX-License-Identifier: MIT
#pragma once

#if defined(_WIN32)
#if defined(VFSCENE_BUILD)
#define VFSCENE_EXPORT __declspec(dllexport)
#else
#define VFSCENE_EXPORT __declspec(dllimport)
#endif
#else
#define VFSCENE_EXPORT __attribute__((visibility("default")))
#endif
