// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QByteArray>
#include <QColor>
#include <QIcon>

namespace vfApplication {

/// Returns the icon of the SVG file @p path in colours that can be told from the background of the application's palette,
/// whatever it is when the icon is drawn. Null if the file cannot be read.
VFAPPLICATIONQT_EXPORT QIcon themedIcon(const QString& path);

/// Returns @p color, made lighter or darker until its contrast with @p background is at least 3:1.
VFAPPLICATIONQT_EXPORT QColor readableOn(const QColor& background, const QColor& color);

/// Returns the SVG @p picture with each color written as #rrggbb made readable on @p background.
VFAPPLICATIONQT_EXPORT QByteArray recolored(const QByteArray& picture, const QColor& background);

} // namespace vfApplication
