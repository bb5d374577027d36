// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfViewer {

/// @return the formats of models and images, a line each: its extension, whether it is read and written, its name
std::string listFormats();

} // namespace vfViewer
