// SPDX-License-Identifier: MIT
#include "formats/Format.h"
#include "model/FormatList.h"
#include "model/FormatLosses.h"
#include "model/ModelWriter.h"
#include "reading/FileGate.h"
#include "reading/ModelReader.h"
#include "writing/CheckedFile.h"
#include "writing/FormatWriter.h"

#include "support/Models.h"
#include "support/TemporaryDirectory.h"

#include <osg/Geometry>

#include <gmock/gmock.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vfTest::readFile;
using vfViewer::Format;
using vfViewer::formatNamed;
using vfViewer::formats;
using vfViewer::ReadBy;
using vfViewer::ReadOutcome;

namespace {

/// @return what stands in the group of a pattern, wherever it matches
std::vector<std::string> allMatches(const std::string& text, const std::string& pattern)
{
    const std::regex expression(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at)
        found.push_back((*at)[1]);
    return found;
}

std::string sourceFile(const std::string& path)
{
    return readFile(std::string(VELAFORGE_SOURCE_DIR "/") + path);
}

/// The cells of a line of a table.
std::vector<std::string> cellsOf(const std::string& line)
{
    std::vector<std::string> cells = allMatches(line, R"(\| ?([^|]*[^| ]) (?=\|))");
    return cells;
}

} // namespace

TEST(Formats, EachRecordIsComplete)
{
    std::set<std::string> seen;
    for (const auto& format : formats()) {
        ASSERT_FALSE(format->extensions.empty());
        for (const std::string& extension : format->extensions) {
            EXPECT_TRUE(std::regex_match(extension, std::regex("[a-z0-9]+"))) << extension;
            EXPECT_TRUE(seen.insert(extension).second) << extension << " is there twice";
            EXPECT_EQ(format.get(), formatNamed(extension));
            EXPECT_EQ(format.get(), vfViewer::formatOf("/a/b.c/Model." + extension));
        }
        EXPECT_NE("", format->name);
        EXPECT_EQ(format->reader == ReadBy::Own, format->read != nullptr) << format->name;
        EXPECT_EQ(format->isImage, format->mimeType.empty()) << format->name;
        EXPECT_TRUE(format->isWritten || format->lost == vfViewer::allFeatures) << format->name;
    }
    EXPECT_EQ(nullptr, formatNamed("xyz"));
    EXPECT_EQ(nullptr, vfViewer::formatOf("obj"));
}

TEST(Formats, FilesBeginWithTheSignaturesOfTheirFormats)
{
    for (const auto& format : formats()) {
        const std::vector<std::string> all = vfTest::signpostFormats();
        const std::string& extension = format->extensions.front();
        if (std::count(all.begin(), all.end(), extension) > 0)
            EXPECT_EQ(extension == "fbx" ? "; FBX" : format->signature, // which is there as text
                      readFile(vfTest::signpost(extension))
                          .substr(0, extension == "fbx" ? 5 : format->signature.size()))
                << extension;
    }
}

TEST(Formats, TheDesktopEntryHasTheTypesOfAllModels)
{
    const std::string entry = sourceFile("apps/viewer/share/vfviewer.desktop");
    const std::string line = allMatches(entry, "\nMimeType=([^\n]*)").at(0);
    std::set<std::string> wanted;
    for (const auto& format : formats()) {
        if (!format->isImage)
            wanted.insert(format->mimeType);
    }
    const std::vector<std::string> listed = allMatches(line, "([^;]+);");
    EXPECT_EQ(wanted, std::set<std::string>(listed.begin(), listed.end()));
    EXPECT_EQ(wanted.size(), listed.size());
}

TEST(Formats, TheTypesThatAreInstalledAreThoseOfTheTable)
{
    const std::string types = sourceFile("apps/viewer/share/vfviewer.xml");
    std::map<std::string, std::set<std::string>> extensions;
    std::map<std::string, std::string> signatures;
    for (const auto& format : formats()) {
        extensions[format->mimeType].insert(format->extensions.begin(), format->extensions.end());
        signatures[format->mimeType] = format->signature;
    }
    const std::regex record("<mime-type type=\"([^\"]+)\">((?:.|\n)*?)</mime-type>");
    std::size_t records = 0;
    for (std::sregex_iterator at(types.begin(), types.end(), record), end; at != end; ++at, ++records) {
        const std::string type = (*at)[1];
        const std::string body = (*at)[2];
        const std::vector<std::string> globs = allMatches(body, "pattern=\"\\*\\.([^\"]+)\"");
        EXPECT_EQ(extensions[type], std::set<std::string>(globs.begin(), globs.end())) << type;
        const std::vector<std::string> magic = allMatches(body, "value=\"([^\"\\\\]+)");
        EXPECT_EQ(magic.empty(), signatures[type].empty()) << type;
        for (const std::string& one : magic)
            EXPECT_EQ(signatures[type], one) << type;
    }
    EXPECT_GT(records, 5u);
}

TEST(Formats, TheGuideTellsWhatEachOfThemLoses)
{
    using namespace vfViewer;
    std::istringstream guide(sourceFile("docs/viewer.md"));
    std::string line;
    while (std::getline(guide, line) && line.find("| | osgb") != 0) {
    }
    const std::vector<std::string> columns = cellsOf(line);
    std::set<std::string> listed;
    for (const std::string& column : columns) {
        std::istringstream names(column);
        for (std::string name; names >> name;)
            listed.insert(name.substr(0, name.find(',')));
    }
    std::istringstream writable(writableFormats());
    std::set<std::string> written;
    for (std::string name; std::getline(writable, name, ',');)
        written.insert(name);
    EXPECT_EQ(written, listed);
    const std::map<std::string, unsigned int> rows = {{"names, parts", PartNames | SeveralParts},
                                                      {"colours of materials, textures", Colors | Textures},
                                                      {"colours of points", VertexColors},
                                                      {"smooth shading", SmoothNormals},
                                                      {"lines", Lines},
                                                      {"points", Points},
                                                      {"hidden parts", HiddenParts},
                                                      {"animations", Animations}};
    std::getline(guide, line);
    std::size_t compared = 0;
    while (std::getline(guide, line) && !line.empty()) {
        const std::vector<std::string> cells = cellsOf(line);
        ASSERT_EQ(columns.size() + 1, cells.size()) << line;
        ASSERT_EQ(1u, rows.count(cells[0])) << line;
        for (std::size_t i = 0; i < columns.size(); ++i, ++compared) {
            const std::string name = columns[i].substr(0, columns[i].find(','));
            const bool isLost = (formatNamed(name)->lost & rows.at(cells[0])) != 0;
            EXPECT_EQ(isLost, cells[i + 1] != "yes") << name << ", " << cells[0];
        }
    }
    EXPECT_EQ(rows.size() * columns.size(), compared);
}

namespace {

/// The corners of a triangle, a line each.
ReadOutcome readTriangle(const std::string& path)
{
    const osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array(osg::Array::BIND_PER_VERTEX);
    std::ifstream file(path);
    for (osg::Vec3 point; file >> point.x() >> point.y() >> point.z();)
        points->push_back(point);
    const osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setVertexArray(points);
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLES, 0, static_cast<int>(points->size())));
    ReadOutcome outcome;
    outcome.scene = geometry;
    return outcome;
}

std::string writeTriangle(osg::Node& scene, const vfViewer::WriteTarget& target)
{
    std::ostringstream file;
    const auto* points = scene.asGeometry()
                             ? dynamic_cast<const osg::Vec3Array*>(scene.asGeometry()->getVertexArray())
                             : nullptr;
    for (std::size_t i = 0; points && i < points->size(); ++i)
        file << (*points)[i].x() << ' ' << (*points)[i].y() << ' ' << (*points)[i].z() << '\n';
    vfViewer::CheckedFile model(target.model);
    model.write(file.str());
    return points ? model.finish() : "it is not a triangle";
}

} // namespace

TEST(Formats, OneRecordAddsAFormatEverywhere)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.write("a.tri", "0 0 0\n1 0 0\n0 1 0\n");
    EXPECT_EQ("not a format that can be read", vfViewer::readModel(path).reason);
    Format format;
    format.extensions = {"tri"};
    format.name = "One triangle";
    format.mimeType = "model/x-tri";
    format.reader = ReadBy::Own;
    format.read = readTriangle;
    format.isCutOff = [](std::string_view file) { return file.back() != '\n'; };
    format.isWritten = true;
    format.write = writeTriangle;
    format.lost = vfViewer::allFeatures & ~vfViewer::PartNames;
    vfViewer::addFormat(format);

    const ReadOutcome outcome = vfViewer::readModel(path);
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_EQ("the file is cut off", vfViewer::readModel(directory.write("cut.tri", "0 0 0")).reason);
    EXPECT_TRUE(vfViewer::FileGate::isModel(path));
    EXPECT_THAT(vfViewer::FileGate::modelFormats(), testing::Contains("tri"));
    EXPECT_THAT(vfViewer::listFormats(), HasSubstr("tri       read, written   One triangle\n"));
    EXPECT_THAT(vfViewer::writableFormats(), testing::EndsWith(",tri"));
    EXPECT_EQ("", vfViewer::writeError("b.tri"));
    const std::string copy = directory.write("b.tri", "");
    const int file = open(copy.c_str(), O_WRONLY | O_CLOEXEC);
    std::vector<vfViewer::SideFile> files;
    EXPECT_EQ("", vfViewer::writeFormat(*readTriangle(path).scene, directory.path(), {file, -1, "", "b.tri"},
                                        files));
    close(file);
    EXPECT_EQ("0 0 0\n1 0 0\n0 1 0\n", readFile(copy));
    outcome.scene->setNodeMask(0);
    EXPECT_THAT(vfViewer::lossesOf(*outcome.scene, "tri"), testing::Contains("what is hidden"));
}
