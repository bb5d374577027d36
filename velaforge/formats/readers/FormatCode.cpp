// SPDX-License-Identifier: MIT
#include <velaforge/formats/FormatCode.h>

#include <velaforge/formats/Format.h>
#include <velaforge/formats/readers/ObjReader.h>
#include <velaforge/formats/readers/PlyReader.h>
#include <velaforge/formats/readers/StlReader.h>
#include <velaforge/formats/writers/AcWriter.h>
#include <velaforge/formats/writers/DxfWriter.h>
#include <velaforge/formats/writers/ObjWriter.h>
#include <velaforge/formats/writers/StlWriter.h>

#include <map>

namespace vfFormats {

namespace {

std::map<std::string, FormatCode>& table()
{
    static std::map<std::string, FormatCode> codes = {
        {"obj", {readObj, writeObj}}, {"stl", {readStl, writeStl}}, {"ply", {readPly, nullptr}},
        {"ac", {nullptr, writeAc}},   {"dxf", {nullptr, writeDxf}},
    };
    return codes;
}

} // namespace

FormatCode codeOf(const Format& format)
{
    const auto found = table().find(format.extensions.front());
    return found == table().end() ? FormatCode() : found->second;
}

void addFormatCode(const std::string& extension, const FormatCode& code)
{
    table()[extension] = code;
}

} // namespace vfFormats
