// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/Icons.h>

#include <QFile>

namespace vfApplication {

QIcon findIcon(const QString& name)
{
    if (name.isEmpty())
        return {};
    // A program's own icons first: they fit one another, whatever the desktop has.
    for (const char* pattern : {":/icons/%1.svg", ":/icons/%1.png"}) {
        const QString path = QString::fromLatin1(pattern).arg(name);
        if (QFile::exists(path))
            return QIcon(path);
    }
    if (name.contains(QLatin1Char('/')))
        return QFile::exists(name) ? QIcon(name) : QIcon();
    return QIcon::fromTheme(name);
}

} // namespace vfApplication
