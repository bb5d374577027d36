// SPDX-License-Identifier: MIT
#pragma once

#if defined(_WIN32)
#if defined(VFISOLATION_BUILD)
#define VFISOLATION_EXPORT __declspec(dllexport)
#else
#define VFISOLATION_EXPORT __declspec(dllimport)
#endif
#else
#define VFISOLATION_EXPORT __attribute__((visibility("default")))
#endif
