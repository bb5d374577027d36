// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/WriteRequest.h>

#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/internal/ReadRequest.h>

#include <charconv>
#include <cstring>
#include <utility>

namespace vfFormats {

namespace {

constexpr std::size_t longestName = 255;

void putSize(std::string& bytes, std::uint64_t size)
{
    bytes.append(reinterpret_cast<const char*>(&size), sizeof(size));
}

bool take(std::string_view& bytes, std::string& text)
{
    std::uint64_t size = 0;
    if (bytes.size() < sizeof(size))
        return false;
    std::memcpy(&size, bytes.data(), sizeof(size));
    bytes.remove_prefix(sizeof(size));
    if (size > bytes.size())
        return false;
    text = bytes.substr(0, size);
    bytes.remove_prefix(size);
    return true;
}

bool isNameOfImage(const std::string& name)
{
    return name.size() <= longestName && name.find('/') == std::string::npos &&
           name.find('\0') == std::string::npos && name.front() != '.' && isImageFile(name);
}

} // namespace

std::string WriteRequest::argument() const
{
    return joinTexts({directory, model, materials, std::to_string(sceneSize)});
}

WriteRequest WriteRequest::of(std::string_view argument)
{
    const std::vector<std::string> texts = splitTexts(argument);
    WriteRequest request;
    if (texts.size() != 4)
        return request;
    request.directory = texts[0];
    request.model = texts[1];
    request.materials = texts[2];
    std::from_chars(texts[3].data(), texts[3].data() + texts[3].size(), request.sceneSize);
    return request;
}

std::string packSideFiles(const std::vector<SideFile>& files)
{
    std::string bytes;
    for (const SideFile& file : files) {
        putSize(bytes, file.name.size());
        bytes += file.name;
        putSize(bytes, file.contents.size());
        bytes += file.contents;
    }
    return bytes;
}

bool unpackSideFiles(std::string_view bytes, std::vector<SideFile>& files)
{
    files.clear();
    while (!bytes.empty()) {
        SideFile file;
        if (!take(bytes, file.name) || file.name.empty() || !isNameOfImage(file.name) ||
            !take(bytes, file.contents))
            return false;
        files.push_back(std::move(file));
    }
    return true;
}

} // namespace vfFormats
