// SPDX-License-Identifier: MIT
#include "TriangleFormat.h"
#include "support/Models.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/formats/Format.h>
#include <velaforge/formats/FormatCode.h>
#include <velaforge/formats/FormatList.h>
#include <velaforge/formats/FormatLosses.h>
#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/ReadJob.h>
#include <velaforge/formats/WriteJob.h>
#include <velaforge/formats/internal/SceneImages.h>

#include <osg/Geometry>

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vfFormats::Format;
using vfFormats::formatNamed;
using vfFormats::formats;
using vfFormats::ReadBy;
using vfFormats::ReadOutcome;
using vfTest::readFile;

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
            EXPECT_EQ(format.get(), vfFormats::formatNamed(extension));
            EXPECT_EQ(format.get(), vfFormats::formatOf("/a/b.c/Model." + extension));
        }
        EXPECT_NE("", format->name);
        EXPECT_EQ(format->reader == vfFormats::ReadBy::Own, vfFormats::codeOf(*format).read != nullptr)
            << format->name;
        EXPECT_EQ(format->isImage, format->mimeType.empty()) << format->name;
        EXPECT_TRUE(format->isWritten || format->lost == vfFormats::allFeatures) << format->name;
    }
    EXPECT_EQ(nullptr, vfFormats::formatNamed("xyz"));
    EXPECT_EQ(nullptr, vfFormats::formatOf("obj"));
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
    std::istringstream writable(vfFormats::writableFormats());
    std::set<std::string> written;
    for (std::string name; std::getline(writable, name, ',');)
        written.insert(name);
    EXPECT_EQ(written, listed);
    const std::map<std::string, unsigned int> rows = {
        {"names, parts", vfFormats::PartNames | vfFormats::SeveralParts},
        {"colours of materials, textures", vfFormats::Colors | vfFormats::Textures},
        {"colours of points", vfFormats::VertexColors},
        {"smooth shading", vfFormats::SmoothNormals},
        {"lines", vfFormats::Lines},
        {"points", vfFormats::Points},
        {"hidden parts", vfFormats::HiddenParts},
        {"animations", vfFormats::Animations}};
    std::getline(guide, line);
    std::size_t compared = 0;
    while (std::getline(guide, line) && !line.empty()) {
        const std::vector<std::string> cells = cellsOf(line);
        ASSERT_EQ(columns.size() + 1, cells.size()) << line;
        ASSERT_EQ(1u, rows.count(cells[0])) << line;
        for (std::size_t i = 0; i < columns.size(); ++i, ++compared) {
            const std::string name = columns[i].substr(0, columns[i].find(','));
            const bool isLost = (vfFormats::formatNamed(name)->lost & rows.at(cells[0])) != 0;
            EXPECT_EQ(isLost, cells[i + 1] != "yes") << name << ", " << cells[0];
        }
    }
    EXPECT_EQ(rows.size() * columns.size(), compared);
}

TEST(Formats, OneRecordAddsAFormatEverywhere)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.write("a.tri", "0 0 0\n1 0 0\n0 1 0\n");
    EXPECT_EQ("not a format that can be read", vfFormats::readModel(path).reason);
    vfFormats::addFormat(vfTest::triangleFormat());
    vfFormats::useReaderProgram(VELAFORGE_TRIANGLE_READER);

    const vfFormats::ReadOutcome outcome = vfFormats::readModel(path);
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_EQ("the file is cut off", vfFormats::readModel(directory.write("cut.tri", "0 0 0")).reason);
    EXPECT_TRUE(vfFormats::isModelFile(path));
    EXPECT_THAT(vfFormats::modelFilter(), testing::EndsWith(",tri"));
    EXPECT_THAT(vfFormats::listFormats(), HasSubstr("tri       read, written   One triangle\n"));
    EXPECT_THAT(vfFormats::writableFormats(), testing::EndsWith(",tri"));
    EXPECT_EQ("", vfFormats::writeError("b.tri"));
    EXPECT_EQ("", vfFormats::writeModel(*outcome.scene, directory.file("b.tri")).reason);
    EXPECT_EQ("0 0 0\n1 0 0\n0 1 0\n", readFile(directory.file("b.tri")));
    EXPECT_TRUE(vfFormats::readModel(vfTest::signpost("obj")).scene) << "the others are still read";
    outcome.scene->setNodeMask(0);
    EXPECT_THAT(vfFormats::lossesOf(*outcome.scene, "tri"), testing::Contains("what is hidden"));
}

TEST(Formats, NamesOfFilesThatAReaderMayNotHaveReadAreRemoved)
{
    vfFormats::addFormat(vfTest::triangleFormat());
    vfFormats::useReaderProgram(VELAFORGE_TRIANGLE_READER);
    const vfTest::TemporaryDirectory elsewhere;
    const vfTest::TemporaryDirectory directory;
    const std::string secret = elsewhere.write("secret.png", "private");
    const std::string own = directory.write("own.png", "public");
    const std::string path = directory.write(
        "a.tri", "0 0 0\n1 0 0\n0 1 0\n" + secret + "\n" + own + "\n../../etc/passwd\n" +
                     directory.file("../" + fs::path(elsewhere.path()).filename().string() + "/secret.png") +
                     "\ninside.png\n");
    const vfFormats::ReadOutcome outcome = vfFormats::readModel(path);
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(outcome.files, ElementsAre(own));
    vfFormats::FindImages find;
    outcome.scene->accept(find);
    std::vector<std::string> names;
    for (const auto& image : find.images)
        names.push_back(image->getFileName());
    EXPECT_THAT(names,
                testing::UnorderedElementsAre("secret.png", own, "passwd", "secret.png", "inside.png"));
    // Nothing of it comes beside a model that is saved.
    EXPECT_EQ("", vfFormats::writeModel(*outcome.scene, directory.file("saved.obj")).reason);
    for (const auto& entry : fs::directory_iterator(directory.path()))
        EXPECT_THAT(readFile(entry.path()), testing::Not(HasSubstr("private"))) << entry.path();
}
