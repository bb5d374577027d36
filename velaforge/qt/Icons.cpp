// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/Icons.h>

#include <velaforge/qt/internal/ThemedIcon.h>

#include <QFile>

namespace vfApplication {

namespace {

/// Returns the file of an icon among the program's own, which fit one another, whatever the desktop has; empty for none.
QString ownFile(const QString& name)
{
    for (const char* pattern : {":/icons/%1.svg", ":/icons/%1.png"}) {
        const QString path = QString::fromLatin1(pattern).arg(name);
        if (!name.isEmpty() && QFile::exists(path))
            return path;
    }
    return QString();
}

} // namespace

QIcon findIcon(const QString& name)
{
    const QString own = ownFile(name);
    return own.endsWith(QLatin1String(".svg")) ? themedIcon(own) : findPicture(name);
}

QIcon findPicture(const QString& name)
{
    if (name.isEmpty())
        return {};
    const QString own = ownFile(name);
    if (!own.isEmpty())
        return QIcon(own);
    if (name.contains(QLatin1Char('/')))
        return QFile::exists(name) ? QIcon(name) : QIcon();
    return QIcon::fromTheme(name);
}

} // namespace vfApplication
