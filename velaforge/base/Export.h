// SPDX-License-Identifier: MIT
#pragma once

/// Marks what libvfBase exports; everything else in it is hidden.
#if defined(_WIN32)
#if defined(VFBASE_BUILD)
#define VFBASE_EXPORT __declspec(dllexport)
#else
#define VFBASE_EXPORT __declspec(dllimport)
#endif
#define VFBASE_TEMPLATE_EXPORT
#else
#define VFBASE_EXPORT __attribute__((visibility("default")))
/// For class templates: each library holds its own instantiation, and run-time type tests agree across them.
#define VFBASE_TEMPLATE_EXPORT __attribute__((visibility("default")))
#endif
