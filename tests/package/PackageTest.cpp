// SPDX-License-Identifier: MIT
// What is installed, and what can be done with it: from another place than it was installed to, without the source tree.
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;
using vfTest::Outcome;
using vfTest::readFile;

namespace {

/// The project installed in one place, and moved to another.
class Installed
{
public:
    Installed()
    {
        const std::string first = m_directory.file("first");
        const Outcome outcome =
            vfTest::runProgram({"cmake", "--install", VELAFORGE_BINARY_DIR, "--prefix", first});
        EXPECT_EQ(0, outcome.status) << outcome.err;
        fs::rename(first, prefix());
    }

    std::string prefix() const { return m_directory.file("second"); }
    std::string file(const std::string& name) const { return prefix() + "/" + name; }
    const vfTest::TemporaryDirectory& directory() const { return m_directory; }

private:
    vfTest::TemporaryDirectory m_directory;
};

void expectDone(const std::vector<std::string>& command)
{
    const Outcome outcome = vfTest::runProgram(command);
    EXPECT_EQ(0, outcome.status) << outcome.out << outcome.err;
}

/// Writes to the note, takes the first line back, and saves.
void expectWorkingNotebook(const std::string& program)
{
    const vfTest::TemporaryDirectory directory;
    const std::string note = directory.write("shopping.note", "milk\n");
    Outcome outcome = vfTest::runProgram({program, note, "--invoke", "notebook::AddLine=butter", "--invoke",
                                          "notebook::Undo", "--invoke", "notebook::AddLine=eggs", "--invoke",
                                          "notebook::Save"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("milk\nbutter\n--\nmilk\n--\nmilk\neggs\n--\n"));
    EXPECT_EQ("milk\neggs\n", readFile(note));
    outcome = vfTest::runProgram({program, "--list-ui"});
    EXPECT_THAT(outcome.out, HasSubstr("  Edit\n    notebook::AddLine\n    notebook::Undo\n"));
    EXPECT_THAT(outcome.out, HasSubstr("notebook::OutlineWindow \"Outline\", left\n"));
    EXPECT_THAT(outcome.out, HasSubstr("  Notes\n    notebook::NotebookPage\n"));
}

std::vector<std::string> installedHeaders(const std::string& prefix)
{
    std::vector<std::string> headers;
    for (const auto& entry : fs::recursive_directory_iterator(prefix + "/include")) {
        if (entry.path().extension() == ".h")
            headers.push_back(fs::relative(entry.path(), prefix + "/include").string());
    }
    return headers;
}

#ifdef VELAFORGE_WITH_QT
const char* const packageNames[] = {"libvelaforge0", "libvelaforge-qt0", "libvelaforge-dev", "vfviewer"};
#else
const char* const packageNames[] = {"libvelaforge0", "libvelaforge-dev", "vfviewer"};
#endif

const char* const example = VELAFORGE_SOURCE_DIR "/examples/02_notebook";

} // namespace

TEST(Package, AProgramIsBuiltWithItsCMakePackageAndRuns)
{
    const Installed installed;
    const std::string build = installed.directory().file("build");
    expectDone({"cmake", "-S", example, "-B", build, "-G", "Ninja",
                "-DCMAKE_PREFIX_PATH=" + installed.prefix(),
                "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Wshadow -Werror"});
    expectDone({"cmake", "--build", build});
    expectWorkingNotebook(build + "/notebook");
    // It was built with what is installed and nothing else.
    EXPECT_THAT(vfTest::runProgram({"ldd", build + "/notebook"}).out,
                HasSubstr(installed.file("lib/libvfApplicationHeadless.so.0")));
}

TEST(Package, AProgramThatReadsAndWritesModelsIsBuiltAndRuns)
{
    const Installed installed;
    const std::string source = VELAFORGE_SOURCE_DIR "/examples/05_converter";
    const std::string build = installed.directory().file("build");
    expectDone({"cmake", "-S", source, "-B", build, "-G", "Ninja",
                "-DCMAKE_PREFIX_PATH=" + installed.prefix(),
                "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Wshadow -Werror"});
    expectDone({"cmake", "--build", build});
    // With pkg-config it is the same.
    setenv("PKG_CONFIG_PATH", installed.file("lib/pkgconfig").c_str(), 1);
    const std::string program = installed.directory().file("other");
    expectDone({"sh", "-c",
                "c++ -std=c++17 -o " + program + " " + source +
                    "/main.cpp $(pkg-config --cflags --libs vfFormats) -Wl,-rpath," + installed.file("lib")});
    for (const std::string& converter : {build + "/converter", program}) {
        const std::string model = installed.directory().file("a.obj");
        std::ofstream(model) << "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
        EXPECT_EQ(installed.directory().file("a.stl") + "\n",
                  vfTest::runProgram({converter, "stl", model}).out);
        EXPECT_THAT(readFile(installed.directory().file("a.stl")), HasSubstr("vertex 1 0 0"));
        fs::remove(installed.directory().file("a.stl"));
        EXPECT_THAT(vfTest::runProgram({"ldd", converter}).out, Not(HasSubstr("vfFormatReaders")))
            << "it parses nothing";
    }
}

TEST(Package, AProgramIsBuiltWithPkgConfigAndRuns)
{
    const Installed installed;
    const std::string program = installed.directory().file("notebook");
    setenv("PKG_CONFIG_PATH", installed.file("lib/pkgconfig").c_str(), 1);
    expectDone({"sh", "-c",
                "c++ -std=c++17 -Wall -Wextra -Werror -o " + program + " " + example +
                    "/*.cpp $(pkg-config --cflags --libs vfApplicationHeadless) -Wl,-rpath," +
                    installed.file("lib")});
    expectWorkingNotebook(program);
    EXPECT_EQ("0.1.0\n", vfTest::runProgram({"pkg-config", "--modversion", "vfBase"}).out);
}

#ifdef VELAFORGE_WITH_QT
TEST(Package, AProgramWithAWindowIsBuiltAndRuns)
{
    const Installed installed;
    const std::string source = VELAFORGE_SOURCE_DIR "/examples/03_window";
    const std::string build = installed.directory().file("build");
    expectDone({"cmake", "-S", source, "-B", build, "-G", "Ninja",
                "-DCMAKE_PREFIX_PATH=" + installed.prefix(),
                "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Wshadow -Werror"});
    expectDone({"cmake", "--build", build});
    EXPECT_THAT(vfTest::runProgram({"ldd", build + "/window"}).out,
                HasSubstr(installed.file("lib/libvfApplicationQt.so.0")));
    // With pkg-config it is the same.
    setenv("PKG_CONFIG_PATH", installed.file("lib/pkgconfig").c_str(), 1);
    const std::string program = installed.directory().file("window");
    expectDone({"sh", "-c",
                "c++ -std=c++17 -fPIC -Wall -Wextra -Werror -o " + program + " " + source +
                    "/main.cpp $(pkg-config --cflags --libs vfApplicationQt) -Wl,-rpath," +
                    installed.file("lib")});
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const std::string note = installed.directory().write("a.txt", "good morning\n");
    for (const std::string& built : {build + "/window", program}) {
        const Outcome outcome = vfTest::runProgram({"timeout", "2", built, note});
        EXPECT_EQ(124, outcome.status) << outcome.err; // it stays until it is ended
        EXPECT_THAT(outcome.out, HasSubstr(note));
    }
}
#endif

TEST(Package, AMissingComponentIsSaidToBeMissing)
{
    const Installed installed;
    const vfTest::TemporaryDirectory project;
    project.write("CMakeLists.txt", "cmake_minimum_required(VERSION 3.25)\nproject(p LANGUAGES CXX)\n"
                                    "find_package(velaforge REQUIRED COMPONENTS vfBase vfNothing)\n");
    const Outcome outcome = vfTest::runProgram({"cmake", "-S", project.path(), "-B", project.file("build"),
                                                "-DCMAKE_PREFIX_PATH=" + installed.prefix()});
    EXPECT_NE(0, outcome.status);
    EXPECT_THAT(outcome.err, HasSubstr("velaforge has no component vfNothing"));
}

TEST(Package, EveryInstalledHeaderNeedsInstalledHeadersOnly)
{
    const Installed installed;
    const std::vector<std::string> headers = installedHeaders(installed.prefix());
    EXPECT_LT(80u, headers.size());
    std::string source;
    for (const std::string& header : headers)
        source += "#include <" + header + ">\n";
    const std::string file = installed.directory().write("all.cpp", source + "int main() {}\n");
    expectDone({"sh", "-c",
                "c++ -std=c++17 -fPIC -fsyntax-only -Wall -Wextra -Werror -I" + installed.file("include") +
                    " $(pkg-config --cflags Qt6Widgets Qt6OpenGLWidgets | sed 's/-I/-isystem /g') " + file});
    EXPECT_FALSE(fs::exists(installed.file("include/velaforge/base/SettingsDocument.h")));
    EXPECT_FALSE(fs::exists(installed.file("include/velaforge/qt/internal")));
    EXPECT_FALSE(fs::exists(installed.file("include/velaforge/toolkit")));
}

TEST(Package, TheViewerRunsFromAnyPlaceWithItsModule)
{
    const Installed installed;
    const Outcome outcome = vfTest::runProgram(
        {installed.file("bin/vfviewer"), "--invoke", "vfViewer::PrintStatistics", "--snapshot",
         installed.directory().file("picture.png"), VELAFORGE_SOURCE_DIR "/models/sailboat.obj"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("triangles"));
    EXPECT_LT(10000u, readFile(installed.directory().file("picture.png")).size());
}

TEST(Package, NothingInstalledNamesThePlaceWhereItWasBuilt)
{
    const Installed installed;
    for (const auto& entry : fs::recursive_directory_iterator(installed.prefix())) {
        if (!entry.is_regular_file())
            continue;
#if !defined(NDEBUG) || defined(VELAFORGE_COVERAGE)
        // Assertions, what debuggers read and what counts tell where a source lay.
        if (entry.path().string().find(".so") != std::string::npos || entry.path().filename() == "vfviewer")
            continue;
#endif
        const std::string contents = readFile(entry.path().string());
        // Not the matcher of texts, which would print a whole library.
        EXPECT_EQ(std::string::npos, contents.find(VELAFORGE_BINARY_DIR)) << entry.path();
        EXPECT_EQ(std::string::npos, contents.find(VELAFORGE_SOURCE_DIR "/")) << entry.path();
    }
}

TEST(Package, DesktopsAndManualsFindTheViewer)
{
    const Installed installed;
    const std::string entry = readFile(installed.file("share/applications/vfviewer.desktop"));
    EXPECT_THAT(entry, testing::StartsWith("[Desktop Entry]\n"));
    EXPECT_THAT(entry, HasSubstr("\nExec=vfviewer %F\n"));
    EXPECT_THAT(entry, HasSubstr("\nIcon=vfviewer\n"));
    EXPECT_THAT(readFile(installed.file("share/icons/hicolor/scalable/apps/vfviewer.svg")),
                HasSubstr("<svg"));

    // Whatever the viewer reads, a desktop knows that it does: by the types here or by those of the shared database.
    const std::string types = readFile(installed.file("share/mime/packages/vfviewer.xml"));
    std::istringstream formats(vfTest::runProgram({installed.file("bin/vfviewer"), "--list-formats"}).out);
    int count = 0;
    for (std::string line; std::getline(formats, line);) {
        const std::string format = line.substr(0, line.find(' '));
        if (line.find(" image") != std::string::npos)
            continue;
        ++count;
        const bool isShared =
            std::set<std::string>{"obj", "stl", "gltf", "glb", "3mf", "3ds", "lwo", "dxf"}.count(format) > 0;
        EXPECT_NE(isShared, types.find("*." + format + "\"") != std::string::npos) << format;
    }
    EXPECT_GT(count, 10);
    std::size_t at = 0;
    while ((at = types.find("type=\"model/", at)) != std::string::npos) {
        at += 6;
        EXPECT_THAT(entry, HasSubstr(types.substr(at, types.find('"', at) - at) + ";"));
    }

    // Each option stands in the manual.
    const std::string manual = readFile(installed.file("share/man/man1/vfviewer.1"));
    std::istringstream usage(vfTest::runProgram({installed.file("bin/vfviewer"), "--help"}).out);
    for (std::string word; usage >> word;) {
        if (word.compare(0, 2, "--") != 0)
            continue;
        for (std::size_t i = 0; (i = word.find('-', i)) != std::string::npos; i += 2)
            word.replace(i, 1, "\\-");
        EXPECT_THAT(manual, HasSubstr(word));
    }
}

TEST(Package, DebianPackagesAreUnpackedAndRun)
{
    const vfTest::TemporaryDirectory directory;
    expectDone({"cpack", "-G", "DEB", "--config", VELAFORGE_BINARY_DIR "/CPackConfig.cmake", "-B",
                directory.path()});
    std::vector<std::string> packages;
    for (const auto& entry : fs::directory_iterator(directory.path())) {
        if (entry.path().extension() == ".deb")
            packages.push_back(entry.path().string());
    }
    ASSERT_EQ(std::size(packageNames), packages.size());

    // A Debian of its own, with nothing in it but these.
    const std::string root = directory.file("root");
    fs::create_directories(root + "/var/lib/dpkg/updates");
    fs::create_directories(root + "/var/lib/dpkg/info");
    for (const char* name : {"/var/lib/dpkg/status", "/var/lib/dpkg/available"})
        fclose(fopen((root + name).c_str(), "w"));
    // Unpacked only: what a package does to the machine when it is configured, a test must not do.
    std::vector<std::string> command = {
        "dpkg", "--root=" + root, "--force-depends", "--force-not-root", "--force-bad-path", "--unpack"};
    command.insert(command.end(), packages.begin(), packages.end());
    expectDone(command);
    for (const char* name : packageNames) {
        const std::string said = vfTest::runProgram({"dpkg", "--root=" + root, "--status", name}).out;
        EXPECT_THAT(said, HasSubstr("Status: install ok unpacked")) << name;
        if (name != std::string("libvelaforge-dev")) {
            EXPECT_THAT(said, testing::ContainsRegex("Depends:.*libopenscenegraph[0-9]+")) << name;
        }
        if (name != std::string("libvelaforge0")) {
            EXPECT_THAT(said, testing::ContainsRegex("Depends:.*libvelaforge0 \\(= 0.1.0\\)")) << name;
        }
    }
    EXPECT_TRUE(fs::exists(root + "/usr/include/velaforge/application/Application.h"));
    EXPECT_TRUE(fs::exists(root + "/usr/share/applications/vfviewer.desktop"));
    const Outcome outcome =
        vfTest::runProgram({root + "/usr/bin/vfviewer", "--invoke", "vfViewer::PrintStatistics",
                            VELAFORGE_SOURCE_DIR "/models/sailboat.obj"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("triangles"));
}
