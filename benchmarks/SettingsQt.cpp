// SPDX-License-Identifier: MIT
// settings_qt save|load <file>: the records through QSettings as an INI file, which is flushed to the disk as this
// project's store does it. Status 0 when all of them are right.
#include "SettingsRecords.h"

#include <QSettings>
#include <QString>

#include <fcntl.h>
#include <unistd.h>

namespace {

bool flush(const std::string& path, int flags)
{
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | flags);
    const bool isFlushed = descriptor >= 0 && fsync(descriptor) == 0;
    if (descriptor >= 0)
        close(descriptor);
    return isFlushed;
}

QString key(int index)
{
    return QString::fromStdString(records::valueName(index));
}

void write(QSettings& settings, const records::Group& group)
{
    settings.beginGroup(QString::fromStdString(group.name));
    for (int i = 0; i < records::valueCount; ++i) {
        const std::size_t place = records::placeOf(i);
        switch (records::kindOf(i)) {
        case 0:
            settings.setValue(key(i), QString::fromStdString(group.texts[place]));
            break;
        case 1:
            settings.setValue(key(i), group.numbers[place]);
            break;
        case 2:
            settings.setValue(key(i), group.sizes[place]);
            break;
        default:
            settings.setValue(key(i), static_cast<bool>(group.flags[place]));
        }
    }
    settings.endGroup();
}

void read(QSettings& settings, records::Group& group)
{
    settings.beginGroup(QString::fromStdString(group.name));
    for (int i = 0; i < records::valueCount; ++i) {
        const std::size_t place = records::placeOf(i);
        const QVariant value = settings.value(key(i));
        switch (records::kindOf(i)) {
        case 0:
            group.texts[place] = value.toString().toStdString();
            break;
        case 1:
            group.numbers[place] = value.toInt();
            break;
        case 2:
            group.sizes[place] = value.toDouble();
            break;
        default:
            group.flags[place] = value.toBool();
        }
    }
    settings.endGroup();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const std::string path = argv[2];
    QSettings settings(QString::fromStdString(path), QSettings::IniFormat);
    const bool isSaving = std::string(argv[1]) == "save";
    for (int i = 0; i < records::groupCount; ++i) {
        records::Group group = records::makeGroup(i, isSaving);
        if (isSaving) {
            write(settings, group);
        } else {
            read(settings, group);
            if (!records::isWhole(i, group))
                return 1;
        }
    }
    if (!isSaving)
        return 0;
    settings.sync();
    const std::size_t slash = path.rfind('/');
    return settings.status() == QSettings::NoError && flush(path, 0) &&
                   flush(path.substr(0, slash), O_DIRECTORY)
               ? 0
               : 1;
}
