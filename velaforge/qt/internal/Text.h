// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>

#include <QString>

namespace vfApplication {

/// Texts of the framework are UTF-8, and so are file names here; what is no UTF-8 shows as replacement characters.
inline QString toQt(const vfBase::VfString& text)
{
    return QString::fromUtf8(text.c_str(), static_cast<qsizetype>(text.str().size()));
}

inline vfBase::VfString fromQt(const QString& text)
{
    return text.toStdString();
}

} // namespace vfApplication
