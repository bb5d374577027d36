// SPDX-License-Identifier: MIT
// Malicious files: whatever they name, none of their code is run, no connection is opened, and the program lives.
#include "support/Reading.h"

#include "support/Models.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>

#include <dlfcn.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using vfTest::TemporaryDirectory;

namespace {

struct Hostile
{
    const char* name;
    const char* file; ///< that is opened
    std::function<void(const TemporaryDirectory& directory, const std::string& address)> write;
};

void PrintTo(const Hostile& hostile, std::ostream* stream)
{
    *stream << hostile.name;
}

std::string sceneText(const std::string& body)
{
    return "#Ascii Scene\n#Version 161\n#Generator OpenSceneGraph 3.6.5\n\n" + body + "\n";
}

std::string proxy(const std::string& named)
{
    return sceneText("osg::Group {\n  UniqueID 1\n  Children 1 {\n    osg::ProxyNode {\n      UniqueID 2\n"
                     "      FileNames 1 {\n        \"" +
                     named + "\"\n      }\n    }\n  }\n}");
}

std::string pagedLod(const std::string& named)
{
    return sceneText(
        "osg::PagedLOD {\n  UniqueID 1\n  RangeList 1 {\n    0 1e+10\n  }\n  RangeDataList 1 {\n    \"" +
        named + "\"\n  }\n  NumChildrenThatCannotBeExpired 0\n}");
}

std::string textured(const std::string& image)
{
    return sceneText("osg::Geode {\n  UniqueID 1\n  StateSet TRUE {\n    osg::StateSet {\n      UniqueID 2\n"
                     "      TextureAttributeList 1 {\n        Data 1 {\n          osg::Texture2D {\n         "
                     "   UniqueID 3\n"
                     "            Image TRUE {\n              UniqueID 4\n              FileName \"" +
                     image +
                     "\"\n              WriteHint 0 2\n            }\n          }\n          Value OFF\n     "
                     "   }\n      }\n"
                     "    }\n  }\n}");
}

std::string triangle(const std::string& before)
{
    return before + "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
}

std::string gltf(const std::string& uri, const std::string& length)
{
    return R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"mesh":0}],)"
           R"("meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],)"
           R"("accessors":[{"bufferView":0,"componentType":5126,"count":)" +
           length + R"(,"type":"VEC3","min":[0,0,0],"max":[1,1,1]}],)" +
           R"("bufferViews":[{"buffer":0,"byteOffset":0,"byteLength":)" + length +
           R"(}],"buffers":[{"uri":")" + uri + R"(","byteLength":)" + length + "}]}";
}

template <class Number>
void append(std::string& bytes, Number number)
{
    char raw[sizeof(number)];
    std::memcpy(raw, &number, sizeof(number));
    bytes.append(raw, sizeof(raw));
}

std::string bigEndian(std::uint32_t number)
{
    std::string bytes;
    for (const int shift : {24, 16, 8, 0})
        bytes += static_cast<char>(number >> shift & 0xff);
    return bytes;
}

/// @return a name with as many letters as a reader might have room for, and far more
std::string longName()
{
    return std::string(100000, 'a');
}

std::vector<Hostile> hostileFiles()
{
    using D = const TemporaryDirectory&;
    using S = const std::string&;
    const auto text = [](const char* file, std::string contents) {
        return [file, contents = std::move(contents)](D directory, S) { directory.write(file, contents); };
    };
    const auto withAddress = [](const char* file, std::function<std::string(S)> contents) {
        return [file, contents = std::move(contents)](D directory, S address) {
            directory.write(file, contents(address));
        };
    };
    return {
        {"AScript", "a.lua", text("a.lua", "os.execute('touch mark')\n")},
        {"ASceneThatNamesAScript", "a.osgt",
         [](D directory, S) {
             directory.write("b.lua", "os.execute('touch mark')\n");
             directory.write("a.osgt", proxy("b.lua"));
         }},
        {"ASceneThatNamesAnAddress", "a.osgt",
         withAddress("a.osgt", [](S address) { return proxy(address + "b.osgt"); })},
        {"ASceneThatNamesAnAddressForAnotherReader", "a.osgt",
         withAddress("a.osgt", [](S address) { return proxy(address + "b.osgt.curl"); })},
        {"ASceneThatLoadsFromAnAddressOnTheWay", "a.osgt",
         withAddress("a.osgt", [](S address) { return pagedLod(address + "b.osgt"); })},
        {"ASceneWithAnImageFromAnAddress", "a.osgt",
         withAddress("a.osgt", [](S address) { return textured(address + "b.png"); })},
        {"ASceneThatNamesItself", "a.osgt", text("a.osgt", proxy("a.osgt"))},
        {"TwoScenesThatNameEachOther", "a.osgt",
         [](D directory, S) {
             directory.write("a.osgt", proxy("b.osgt"));
             directory.write("b.osgt", proxy("a.osgt"));
         }},
        {"ASceneThatNamesAFileElsewhere", "a.osgt", text("a.osgt", proxy("/etc/passwd"))},
        {"ASceneThatNamesADevice", "a.osgt",
         [](D directory, S) {
             fs::create_symlink("/dev/zero", directory.file("b.osgt"));
             directory.write("a.osgt", proxy("b.osgt"));
         }},
        {"ASceneThatNamesAPipe", "a.osgt",
         [](D directory, S) {
             mkfifo(directory.file("b.osgt").c_str(), 0600);
             directory.write("a.osgt", proxy("b.osgt"));
         }},
        {"ASceneThatNamesALibraryOfItsOwn", "a.osgt",
         text("a.osgt", sceneText("evil::Node {\n  UniqueID 1\n}"))},
        {"ASceneThatAsksForAPlugIn", "a.osgt", text("a.osgt", proxy("osgdb_evil.so"))},
        {"ASceneWithinAnArchive", "a.osgt", text("a.osgt", proxy("b.zip/c.osgt"))},
        {"ASceneOfManyLevels", "a.osgt",
         [](D directory, S) {
             std::string body;
             for (int i = 0; i < 20000; ++i)
                 body += "osg::Group {\nUniqueID " + std::to_string(i + 1) + "\nChildren 1 {\n";
             directory.write("a.osgt", sceneText(body));
         }},
        {"MaterialsFromAnAddress", "a.obj",
         withAddress("a.obj", [](S address) { return triangle("mtllib " + address + "a.mtl\n"); })},
        {"MaterialsFromElsewhere", "a.obj", text("a.obj", triangle("mtllib /etc/passwd\nusemtl root\n"))},
        {"MaterialsThatAreTheModelItself", "a.obj", text("a.obj", triangle("mtllib a.obj\nusemtl a\n"))},
        {"MaterialsThatAreAPipe", "a.obj",
         [](D directory, S) {
             mkfifo(directory.file("a.mtl").c_str(), 0600);
             directory.write("a.obj", triangle("mtllib a.mtl\nusemtl a\n"));
         }},
        {"ATextureFromAnAddress", "a.obj",
         [](D directory, S address) {
             directory.write("a.mtl", "newmtl a\nmap_Kd " + address + "a.png\n");
             directory.write("a.obj", triangle("mtllib a.mtl\nusemtl a\n"));
         }},
        {"ATextureThatIsADevice", "a.obj",
         [](D directory, S) {
             fs::create_symlink("/dev/zero", directory.file("a.png"));
             directory.write("a.mtl", "newmtl a\nmap_Kd a.png\n");
             directory.write("a.obj", triangle("mtllib a.mtl\nusemtl a\n"));
         }},
        {"AnImageThatPromisesThirtyGigabytes", "a.png",
         [](D directory, S) {
             directory.write("a.png", std::string("\x89PNG\r\n\x1a\n", 8) + bigEndian(13) + "IHDR" +
                                          bigEndian(100000) + bigEndian(100000) +
                                          std::string("\x08\x02\0\0\0", 5) + bigEndian(0) + bigEndian(10) +
                                          "IDAT" + std::string(10, '\0') + bigEndian(0));
         }},
        {"FacesOfPointsThatAreNotThere", "a.obj",
         text("a.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 999999999999999 1 2\nf -9 -8 -7\nf 1 2 3\nf 0 0 0\nf "
                       "4294967297 2 3\n")},
        {"NamesWithoutAnEnd", "a.obj",
         text("a.obj", triangle("mtllib " + longName() + "\no " + longName() + "\n"))},
        {"AFaceWithoutAnEnd", "a.obj",
         [](D directory, S) {
             std::string face = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf";
             for (int i = 0; i < 300000; ++i)
                 face += " 1";
             directory.write("a.obj", face);
         }},
        {"AGigabyteOfPromisedPoints", "a.ply",
         text("a.ply", "ply\nformat binary_little_endian 1.0\nelement vertex 2000000000\nproperty float x\n"
                       "property float y\nproperty float z\nend_header\n" +
                           std::string(100, '\0'))},
        {"FourThousandMillionTriangles", "a.stl",
         [](D directory, S) {
             std::string bytes(80, 'x');
             append(bytes, std::uint32_t(0xffffffff));
             directory.write("a.stl", bytes + std::string(200, '\0'));
         }},
        {"AMegabyteOfZeros", "a.stl", text("a.stl", std::string(1000000, '\0'))},
        {"CoordinatesThatAreNoNumbers", "a.stl",
         [](D directory, S) {
             std::string bytes(80, 'x');
             append(bytes, std::uint32_t(2));
             for (int i = 0; i < 24; ++i) {
                 append(bytes, i % 2 ? std::numeric_limits<float>::quiet_NaN()
                                     : std::numeric_limits<float>::infinity());
                 if (i % 12 == 11)
                     append(bytes, std::uint16_t(0));
             }
             directory.write("a.stl", bytes);
         }},
        {"PromisesInText", "a.off", text("a.off", "OFF\n4000000000 4000000000 0\n0 0 0\n")},
        {"ABufferFromAnAddress", "a.gltf",
         withAddress("a.gltf", [](S address) { return gltf(address + "a.bin", "36"); })},
        {"ABufferFromElsewhere", "a.gltf", text("a.gltf", gltf("../../../../../../etc/passwd", "36"))},
        {"ABufferOfPromises", "a.gltf",
         [](D directory, S) {
             directory.write("a.bin", std::string(36, '\0'));
             directory.write("a.gltf", gltf("a.bin", "4000000000"));
         }},
        {"ABufferWithinTheFileThatIsNone", "a.gltf",
         text("a.gltf", gltf("data:application/octet-stream;base64,!!!!", "36"))},
        {"EntitiesThatGrowWithoutEnd", "a.x3d",
         [](D directory, S) {
             std::string bomb =
                 "<?xml version=\"1.0\"?>\n<!DOCTYPE X3D [\n<!ENTITY e0 \"aaaaaaaaaaaaaaaaaaaa\">\n";
             for (int i = 1; i < 12; ++i) {
                 bomb += "<!ENTITY e" + std::to_string(i) + " \"";
                 for (int k = 0; k < 20; ++k)
                     bomb += "&e" + std::to_string(i - 1) + ";";
                 bomb += "\">\n";
             }
             directory.write("a.x3d", bomb + "]>\n<X3D><Scene DEF=\"&e11;\"/></X3D>\n");
         }},
        {"ASceneInlinedFromAnAddress", "a.x3d",
         withAddress("a.x3d",
                     [](S address) {
                         return "<?xml version=\"1.0\"?>\n<X3D version=\"3.0\"><Scene><Inline url='\"" +
                                address + "b.x3d\"'/></Scene></X3D>\n";
                     })},
        {"AnEntityFromElsewhere", "a.dae",
         withAddress(
             "a.dae",
             [](S address) {
                 return "<?xml version=\"1.0\"?>\n<!DOCTYPE COLLADA SYSTEM \"" + address +
                        "a.dtd\" [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>\n"
                        "<COLLADA xmlns=\"http://www.collada.org/2005/11/COLLADASchema\" version=\"1.4.1\">"
                        "<asset><title>&e;</title></asset></COLLADA>\n";
             })},
        {"ALoopOfLinks", "a.obj",
         [](D directory, S) { fs::create_symlink(directory.file("a.obj"), directory.file("a.obj")); }},
        {"ADeviceUnderTheNameOfAModel", "a.stl",
         [](D directory, S) { fs::create_symlink("/dev/zero", directory.file("a.stl")); }},
        {"AHealthyModelBesideForeignLibraries", "a.obj", text("a.obj", triangle(""))},
    };
}

class HostileFiles : public vfTest::Reading, public testing::WithParamInterface<Hostile>
{
protected:
    HostileFiles()
    {
        m_socket = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address);
        EXPECT_EQ(0, bind(m_socket, reinterpret_cast<sockaddr*>(&address), size));
        EXPECT_EQ(0, listen(m_socket, 10));
        EXPECT_EQ(0, getsockname(m_socket, reinterpret_cast<sockaddr*>(&address), &size));
        m_address = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/";
        setenv("VELAFORGE_TEST_MARK", directory.file("mark").c_str(), 1);
        // Where a reader that looks around would find them.
        for (const char* name :
             {"osgdb_evil.so", "osgdb_serializers_evil.so", "osgdb_deprecated_evil.so", "osgdb_obj.so",
              "osgdb_osg.so", "osgdb_osg2.so", "osgdb_lua.so", "osgdb_curl.so", "osgdb_png.so",
              "velaforge_assimp.so", "libassimp.so.5", "libevil.so", "evil.so"})
            fs::copy_file(VELAFORGE_HOSTILE_PLUGIN, directory.file(name));
        fs::create_directory(directory.file("osgPlugins-3.6.5"));
        fs::copy_file(VELAFORGE_HOSTILE_PLUGIN, directory.file("osgPlugins-3.6.5/osgdb_obj.so"));
        fs::current_path(directory.path());
    }
    ~HostileFiles() override
    {
        fs::current_path("/");
        close(m_socket);
    }

    bool wasCalled() const
    {
        const int connection = accept(m_socket, nullptr, nullptr);
        if (connection >= 0)
            close(connection);
        return connection >= 0;
    }

    std::string m_address;

private:
    int m_socket = -1;
};

} // namespace

TEST_P(HostileFiles, RunNothingCallNobodyAndHarmNobody)
{
    GetParam().write(directory, m_address);
    vfFormats::ReadLimits limits;
    limits.seconds = 10;
    const std::string file = GetParam().file;
    for (const std::string& path : {directory.file(file), file}) {
        const auto kind =
            fs::path(file).extension() == ".png" ? vfFormats::ReadKind::Image : vfFormats::ReadKind::Model;
        const auto outcome = read(path, limits, kind);
        EXPECT_NE(outcome.scene.valid(), !outcome.reason.empty()) << outcome.reason;
        EXPECT_EQ(std::string::npos, outcome.reason.find('\n')) << outcome.reason;
    }
    EXPECT_FALSE(fs::exists(directory.file("mark")));
    EXPECT_FALSE(wasCalled());
    // The next one is read as ever.
    EXPECT_TRUE(read(vfTest::signpost("obj")).scene);
}

INSTANTIATE_TEST_SUITE_P(All, HostileFiles, testing::ValuesIn(hostileFiles()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(HostilePlugin, LeavesItsMarkWhenItIsLoaded)
{
    // Or else the tests above would prove nothing.
    const TemporaryDirectory directory;
    setenv("VELAFORGE_TEST_MARK", directory.file("mark").c_str(), 1);
    EXPECT_NE(nullptr, dlopen(VELAFORGE_HOSTILE_PLUGIN, RTLD_NOW));
    EXPECT_TRUE(fs::exists(directory.file("mark")));
}
