// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QString>

class QLabel;
class QMessageBox;

namespace vfApplication {

/// @name Texts of files as they stand
///
/// Qt takes a text that looks like HTML for rich text. Names of files, and what stands in files, may look like anything:
/// these have them shown letter by letter.
///
///     label->setText(name);
///     vfApplication::usePlainText(*label);
/// @{

/// Returns @p text for a tool tip, where no format can be set.
VFAPPLICATIONQT_EXPORT QString plainToolTip(const QString& text);

/// Has a label show its text, and those set later, as plain text.
VFAPPLICATIONQT_EXPORT void usePlainText(QLabel& label);

/// Has a message box show its texts as plain text. Call it when they are set: a box without an informative text has no label
/// for one.
VFAPPLICATIONQT_EXPORT void usePlainText(QMessageBox& box);

/// @}

} // namespace vfApplication
