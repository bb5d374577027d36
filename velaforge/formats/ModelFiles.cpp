// SPDX-License-Identifier: MIT
#include <velaforge/formats/ModelFiles.h>

#include <velaforge/formats/Format.h>

#include <osgDB/FileNameUtils>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vfFormats {

namespace {

std::string filter(bool areImages)
{
    std::string all;
    for (const auto& format : formats()) {
        for (const std::string& extension : format->extensions) {
            if (format->isImage == areImages)
                all += (all.empty() ? "" : ",") + extension;
        }
    }
    return all;
}

} // namespace

bool isModelFile(const std::string& path)
{
    const Format* format = formatOf(path);
    return format && !format->isImage;
}

bool isImageFile(const std::string& path)
{
    const Format* format = formatOf(path);
    return format && format->isImage;
}

std::string modelFilter()
{
    return filter(false);
}

std::string imageFilter()
{
    return filter(true);
}

std::string writableFormats()
{
    std::string all;
    for (const bool isWhole : {true, false}) {
        for (const auto& format : formats()) {
            if (format->isWritten && format->keepsScenes == isWhole)
                all += (all.empty() ? "" : ",") + format->extensions.front();
        }
    }
    return all;
}

std::string writeError(const std::string& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    const Format* format = formatNamed(extension);
    return format && format->isWritten ? std::string() : "models are not written as ." + extension;
}

std::string readError(const std::string& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return std::strerror(errno);
    if (S_ISDIR(status.st_mode))
        return "it is a directory";
    if (!S_ISREG(status.st_mode))
        return "it is not a regular file";
    // Without O_NONBLOCK a FIFO that has taken its place would block the process for ever.
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0)
        return std::strerror(errno);
    close(file);
    return status.st_size == 0 ? "the file is empty" : "";
}

} // namespace vfFormats
