// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>

#include <QString>
#include <QTextDocument>

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

/// Returns @p text for a tool tip, which Qt would take for rich text where it looks like it: a file may have any name.
inline QString plainToolTip(const QString& text)
{
    return Qt::mightBeRichText(text)
               ? QLatin1String("<span>") + text.toHtmlEscaped() + QLatin1String("</span>")
               : text;
}

} // namespace vfApplication
