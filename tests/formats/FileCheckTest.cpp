// SPDX-License-Identifier: MIT
#include "support/Models.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/formats/readers/FileCheck.h>

#include <gtest/gtest.h>

#include <cstdint>

using vfFormats::isCutOff;
using vfTest::readFile;
using vfTest::signpost;
using vfTest::TemporaryDirectory;

namespace {

std::string word(std::uint32_t number)
{
    std::string bytes;
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(number >> (8 * i));
    return bytes;
}

} // namespace

TEST(FileCheck, WholeFilesAreWhole)
{
    for (const std::string& format : vfTest::signpostFormats())
        EXPECT_FALSE(isCutOff(signpost(format))) << format;
    EXPECT_FALSE(isCutOff(VELAFORGE_SOURCE_DIR "/tests/fixtures/formats/signpost-text.stl"));
    for (const char* name : {"sailboat.obj", "lighthouse.ply", "rocket.dae", "king.stl"})
        EXPECT_FALSE(isCutOff(std::string(VELAFORGE_SOURCE_DIR "/models/") + name)) << name;
}

TEST(FileCheck, FilesThatSayHowLongTheyAreAreCutOffAnywhere)
{
    const TemporaryDirectory directory;
    for (const char* format : {"stl", "3ds", "lwo"}) {
        const std::string whole = readFile(signpost(format));
        for (std::size_t length = 100; length < whole.size() - 2; length += 97) {
            const std::string path = directory.write(std::string("cut.") + format, whole.substr(0, length));
            EXPECT_TRUE(isCutOff(path)) << format << " at " << length;
        }
    }
}

TEST(FileCheck, FilesThatCloseWhatTheyOpenAreCutOffAnywhereInside)
{
    const TemporaryDirectory directory;
    for (const char* format : {"osgt", "x", "ac"}) {
        const std::string whole = readFile(signpost(format));
        for (std::size_t length = whole.size() / 10; length < whole.size() * 9 / 10; length += 311) {
            const std::string path = directory.write(std::string("cut.") + format, whole.substr(0, length));
            EXPECT_TRUE(isCutOff(path)) << format << " at " << length;
        }
    }
}

TEST(FileCheck, ATextStlIsShownAsFarAsItGoes)
{
    const TemporaryDirectory directory;
    const std::string whole = readFile(VELAFORGE_SOURCE_DIR "/tests/fixtures/formats/signpost-text.stl");
    EXPECT_FALSE(isCutOff(directory.write("cut.stl", whole.substr(0, whole.size() / 2))));
}

TEST(FileCheck, ABinaryStlMayBeginWithTheWordOfATextOne)
{
    const TemporaryDirectory directory;
    std::string file = "solid but binary";
    file.resize(80, ' ');
    file += word(2) + std::string(100, '\0');
    EXPECT_FALSE(isCutOff(directory.write("a.stl", file)));
    EXPECT_TRUE(isCutOff(directory.write("a.stl", file.substr(0, 150))));
    EXPECT_FALSE(isCutOff(directory.write("a.stl", file + "more")));
}

TEST(FileCheck, AnObjFileIsCutOffWhereItsLastStatementIsNotComplete)
{
    const TemporaryDirectory directory;
    EXPECT_TRUE(isCutOff(directory.write("a.obj", "v 0 0 0\nv 1 0")));
    EXPECT_TRUE(isCutOff(directory.write("a.obj", "v 0 0 0\nf 1 2")));
    EXPECT_TRUE(isCutOff(directory.write("a.obj", "f 1/1 2/2 3/")));
    EXPECT_FALSE(isCutOff(directory.write("a.obj", "v 0 0 0\nf 1 2 3")));
    EXPECT_FALSE(isCutOff(directory.write("a.obj", "v 0 0 0\n# done")));
}

TEST(FileCheck, WhatItDoesNotKnowOrCannotReadIsNotCutOff)
{
    const TemporaryDirectory directory;
    EXPECT_FALSE(isCutOff(directory.write("a.xyz", "{")));
    EXPECT_FALSE(isCutOff(directory.file("missing.stl")));
    EXPECT_FALSE(isCutOff(directory.path()));
    EXPECT_FALSE(isCutOff(directory.write("empty.stl", "")));
    EXPECT_FALSE(isCutOff(directory.write("a.osgt", "text \"a brace { in quotes\"")));
}
