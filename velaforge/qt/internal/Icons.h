// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>

namespace vfApplication {

/// @param name  of an icon of this library or of the program ("<name>.svg" or "<name>.png" among its resources below
///              "/icons"), or of the desktop's theme, or the path of a file
/// @return an empty icon for an empty or unknown name
QIcon findIcon(const QString& name);

} // namespace vfApplication
