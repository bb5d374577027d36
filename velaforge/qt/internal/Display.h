// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace vfApplication {

/// Tells whether the display answers that Qt would open windows on.
/// @param platform  set to the name of Qt's platform that is to be used where Qt by itself would take another; else empty
/// @return why there is none; empty when it answers
QString displayError(int argc, char** argv, QByteArray& platform);

/// Ends the connection by which displayError has found out, once there is another.
void letGoOfDisplay();

} // namespace vfApplication
