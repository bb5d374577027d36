// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfApplication {
class Module;
}

namespace vfViewer {

/// What a library with a module of the viewer exports under the name "vfViewerCreateModule".
/// @return a new module, the caller's
using CreateModule = vfApplication::Module*();

/// Opens the module library of that name, from the viewer's own directory and nowhere else, and gives its module to the
/// registry. The library stays open until the process ends.
/// @param reason  why that could not be done
bool addModuleFromLibrary(const std::string& name, std::string& reason);

} // namespace vfViewer
