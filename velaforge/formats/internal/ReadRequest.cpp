// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/ReadRequest.h>

#include <velaforge/formats/ReadJob.h>
#include <velaforge/formats/internal/InstalledFile.h>

#include <algorithm>

namespace vfFormats {

std::string ReadRequest::argument() const
{
    std::vector<std::string> texts = sideFiles;
    texts.insert(texts.begin(), path);
    return joinTexts(texts);
}

ReadRequest ReadRequest::of(std::string_view argument)
{
    ReadRequest request;
    request.sideFiles = splitTexts(argument);
    if (!request.sideFiles.empty()) {
        request.path = request.sideFiles.front();
        request.sideFiles.erase(request.sideFiles.begin());
    }
    return request;
}

namespace {

bool isRequired = false;

std::string& otherProgram()
{
    static std::string path;
    return path;
}

} // namespace

bool isSandboxRequired()
{
    return isRequired;
}

void requireSandbox()
{
    isRequired = true;
}

std::string readerProgram()
{
    return otherProgram().empty() ? installedFile("velaforge-reader") : otherProgram();
}

void useReaderProgram(const std::string& path)
{
    otherProgram() = path;
}

std::string joinTexts(const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts)
        all.append(text.c_str(), text.size() + 1);
    return all;
}

std::vector<std::string> splitTexts(std::string_view joined)
{
    std::vector<std::string> texts;
    for (std::size_t at = 0; at < joined.size();) {
        const std::size_t end = std::min(joined.find('\0', at), joined.size());
        texts.emplace_back(joined.substr(at, end - at));
        at = end + 1;
    }
    return texts;
}

} // namespace vfFormats
