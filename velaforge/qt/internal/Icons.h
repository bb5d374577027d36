// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QIcon>
#include <QString>

namespace vfApplication {

/// Returns the icon of a command or a page by its name: the program's own, in colours that suit the palette; else one that is
/// named by its path; else the desktop's. Null if there is none.
VFAPPLICATIONQT_EXPORT QIcon findIcon(const QString& name);

/// Does the same in the colours of the file: for logos.
VFAPPLICATIONQT_EXPORT QIcon findPicture(const QString& name);

} // namespace vfApplication
