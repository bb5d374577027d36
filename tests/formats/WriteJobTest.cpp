// SPDX-License-Identifier: MIT
// Models that are written: whole or not at all, with the files that belong to them, whatever goes wrong.
#include "support/LargeModels.h"
#include "support/Models.h"
#include "support/Reading.h"
#include "support/ThreadSanitizer.h"

#include <velaforge/formats/FormatLosses.h>
#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/WriteJob.h>
#include <velaforge/formats/internal/ModelMeasure.h>
#include <velaforge/formats/internal/SaveDirectory.h>
#include <velaforge/formats/internal/WriteRequest.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Material>
#include <osg/MatrixTransform>
#include <osg/PositionAttitudeTransform>
#include <osg/ShapeDrawable>
#include <osg/Switch>
#include <osg/TexMat>
#include <osg/Texture2D>

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using vfFormats::measureModel;
using vfFormats::WriteJob;
using vfTest::readFile;

namespace {

class WriteJobs : public vfTest::Reading
{
protected:
    /// @return why it was not saved
    static std::string save(osg::Node& scene, const std::string& path)
    {
        WriteJob job(scene, path, false);
        while (!job.wait(1000)) {
        }
        return job.outcome().reason;
    }

    std::set<std::string> names() const
    {
        std::set<std::string> found;
        for (const auto& entry : fs::directory_iterator(directory.path()))
            found.insert(entry.path().filename().string());
        return found;
    }
};

osg::ref_ptr<osg::Geometry> makeGeometry(GLenum mode, const std::vector<osg::Vec3>& points)
{
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setVertexArray(new osg::Vec3Array(points.begin(), points.end()));
    geometry->addPrimitiveSet(new osg::DrawArrays(mode, 0, static_cast<int>(points.size())));
    return geometry;
}

osg::ref_ptr<osg::Geode> makeGeode(const osg::ref_ptr<osg::Drawable>& drawable, const std::string& name)
{
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(drawable);
    geode->setName(name);
    return geode;
}

const std::vector<osg::Vec3> corners = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};

osg::ref_ptr<osg::Geode> makeColored(const osg::Vec4& color)
{
    osg::ref_ptr<osg::Geode> geode =
        makeGeode(makeGeometry(GL_TRIANGLES, {corners[0], corners[1], corners[2]}), "part");
    const osg::ref_ptr<osg::Material> material = new osg::Material;
    material->setDiffuse(osg::Material::FRONT_AND_BACK, color);
    geode->getOrCreateStateSet()->setAttribute(material);
    return geode;
}

/// A scene of one kind, and its name.
struct Kind
{
    const char* name;
    std::function<osg::ref_ptr<osg::Node>()> make;
};

void PrintTo(const Kind& kind, std::ostream* stream)
{
    *stream << kind.name;
}

std::vector<Kind> kinds()
{
    const auto group = [](const std::vector<osg::ref_ptr<osg::Node>>& nodes) {
        osg::ref_ptr<osg::Group> all = new osg::Group;
        for (const auto& node : nodes)
            all->addChild(node);
        return all;
    };
    const auto below = [](osg::ref_ptr<osg::Group> above, const osg::ref_ptr<osg::Node>& node) {
        above->addChild(node);
        return above;
    };
    const auto square = [] { return makeGeode(makeGeometry(GL_QUADS, corners), "square"); };
    return {
        {"APartThatIsTurned",
         [=] {
             return below(new osg::MatrixTransform(osg::Matrix::rotate(0.7, osg::Vec3d(1, 2, 3)) *
                                                   osg::Matrix::translate(100, 0, 0)),
                          square());
         }},
        {"AMirroredPart",
         [=] { return below(new osg::MatrixTransform(osg::Matrix::scale(-2, 1, 3)), square()); }},
        {"APartFarAway",
         [=] { return below(new osg::MatrixTransform(osg::Matrix::translate(1e6, -1e6, 1e6)), square()); }},
        {"TurnedWithinTurned",
         [=] {
             osg::ref_ptr<osg::PositionAttitudeTransform> inner = new osg::PositionAttitudeTransform;
             inner->setAttitude(osg::Quat(0.5, osg::Vec3d(0, 1, 1)));
             inner->setPosition({1, 2, 3});
             return below(new osg::MatrixTransform(osg::Matrix::rotate(1, osg::Vec3d(0, 0, 1))),
                          below(inner, square()));
         }},
        {"OnePartInManyPlaces",
         [=] {
             const osg::ref_ptr<osg::Node> part = square();
             osg::ref_ptr<osg::Group> all = new osg::Group;
             for (int i = 0; i < 10; ++i)
                 all->addChild(below(new osg::MatrixTransform(osg::Matrix::translate(3 * i, i, 0)), part));
             return all;
         }},
        {"EveryKindOfFace",
         [=] {
             std::vector<osg::ref_ptr<osg::Node>> parts;
             for (const GLenum mode :
                  {GL_TRIANGLES, GL_TRIANGLE_STRIP, GL_TRIANGLE_FAN, GL_QUADS, GL_QUAD_STRIP, GL_POLYGON})
             {
                 std::vector<osg::Vec3> points = corners;
                 if (mode == GL_TRIANGLES)
                     points.pop_back();
                 if (mode == GL_TRIANGLE_STRIP || mode == GL_QUAD_STRIP)
                     std::swap(points[2], points[3]);
                 for (osg::Vec3& point : points)
                     point.z() += 2.0f * static_cast<float>(parts.size());
                 parts.emplace_back(
                     makeGeode(makeGeometry(mode, points), "part" + std::to_string(parts.size())));
             }
             return group(parts);
         }},
        {"LinesAndPointsAndFaces",
         [=] {
             return group({square(),
                           makeGeode(makeGeometry(GL_LINE_LOOP, {{0, 0, 2}, {1, 0, 2}, {1, 1, 2}}), "loop"),
                           makeGeode(makeGeometry(GL_LINES, {{0, 0, 3}, {1, 0, 3}}), "line"),
                           makeGeode(makeGeometry(GL_POINTS, {{0, 0, 4}, {1, 0, 4}}), "points")});
         }},
        {"LinesByTheirNumbers",
         [=] {
             const osg::ref_ptr<osg::Geometry> lines = makeGeometry(GL_POINTS, corners);
             const osg::ref_ptr<osg::DrawElementsUInt> indices = new osg::DrawElementsUInt(GL_LINE_STRIP);
             for (const unsigned int i : {0u, 1u, 2u, 3u, 0u, 2u})
                 indices->push_back(i);
             lines->setPrimitiveSet(0, indices);
             const osg::ref_ptr<osg::DrawElementsUShort> pairs = new osg::DrawElementsUShort(GL_LINES);
             for (const unsigned short i : {1, 3})
                 pairs->push_back(i);
             lines->addPrimitiveSet(pairs);
             return group({square(), makeGeode(lines, "lines")});
         }},
        {"FacesWithoutAnArea",
         [=] {
             return group(
                 {square(), makeGeode(makeGeometry(GL_TRIANGLES, {corners[0], corners[0], corners[0],
                                                                  corners[0], corners[1], corners[0]}),
                                      "flat")});
         }},
        {"WhatIsHiddenOrSwitchedOff",
         [=] {
             const osg::ref_ptr<osg::Node> hidden = square();
             hidden->setNodeMask(0);
             osg::ref_ptr<osg::Switch> off = new osg::Switch;
             off->addChild(below(new osg::MatrixTransform(osg::Matrix::translate(0, 0, 5)), square()), false);
             return group(
                 {square(), below(new osg::MatrixTransform(osg::Matrix::translate(5, 0, 0)), hidden), off});
         }},
        {"AShape",
         [=] {
             return makeGeode(new osg::ShapeDrawable(new osg::Sphere({1, 2, 3}, 4)), "ball");
         }},
        {"NamesThatAreNone",
         [=] {
             osg::ref_ptr<osg::Geode> part = square();
             part->setName("a\nb\tc \"d\" # e\\");
             osg::ref_ptr<osg::Geode> same = makeGeode(
                 makeGeometry(GL_QUADS, {{0, 0, 9}, {1, 0, 9}, {1, 1, 9}, {0, 1, 9}}), "a\nb\tc \"d\" # e\\");
             return group(
                 {part, same,
                  makeGeode(makeGeometry(GL_QUADS, {{0, 0, 7}, {1, 0, 7}, {1, 1, 7}, {0, 1, 7}}), "")});
         }},
        {"VerticesThatNobodyUses",
         [=] {
             const osg::ref_ptr<osg::Geometry> geometry = makeGeometry(GL_QUADS, corners);
             geometry->getVertexArray()->resizeArray(5);
             (*dynamic_cast<osg::Vec3Array*>(geometry->getVertexArray()))[4].set(1000, 1000, 1000);
             return makeGeode(geometry, "used");
         }},
    };
}

class SavedKinds : public WriteJobs, public testing::WithParamInterface<Kind>
{};

/// A program in a process of its own. @return its exit status
int inAnotherProcess(const std::function<bool()>& work)
{
    // A thread that ends while this process forks leaves the memory of the other one locked.
    vfFormats::ReadJob::waitForThreads();
    const pid_t child = fork();
    if (child == 0)
        _exit(work() ? 0 : 1);
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

} // namespace

TEST_P(SavedKinds, AreSavedWholeInEveryFormat)
{
    std::istringstream formats(vfFormats::writableFormats());
    for (std::string format; std::getline(formats, format, ',');) {
        const std::string path = directory.file("model." + format);
        const osg::ref_ptr<osg::Node> scene = GetParam().make();
        EXPECT_EQ("", save(*scene, path)) << format;
        const auto outcome = read(path);
        ASSERT_TRUE(outcome.scene) << format << ": " << outcome.reason;
        const unsigned int lost = vfFormats::featuresLostBy(format);
        const auto before = measureModel(*scene, lost);
        const auto after = measureModel(*outcome.scene, lost);
        EXPECT_TRUE(hasEverything(before, after, false))
            << format << ": " << before.triangles << " and " << after.triangles << " triangles, "
            << before.lines << " and " << after.lines << " lines, " << before.points << " and "
            << after.points << " points";
    }
}

INSTANTIATE_TEST_SUITE_P(All, SavedKinds, testing::ValuesIn(kinds()),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(WriteJobs, AFileWithoutOneTriangleOrOnePointIsNotWhole)
{
    const osg::ref_ptr<osg::Group> model = new osg::Group;
    for (int i = 0; i < 10; ++i)
        model->addChild(makeColored({1, 0, 0, 1})); // all in the same box
    const auto whole = measureModel(*model, 0);
    EXPECT_TRUE(hasEverything(whole, whole, false));
    model->removeChild(3);
    EXPECT_FALSE(hasEverything(whole, measureModel(*model, 0), false));
    model->addChild(makeGeode(makeGeometry(GL_TRIANGLES, {{0, 0, 0}, {2, 0, 0}, {0, 1, 0}}), "other"));
    EXPECT_FALSE(hasEverything(whole, measureModel(*model, 0), false)) << "elsewhere";
}

TEST_F(WriteJobs, UnderALimitOfTheSizeOfFilesTheFileIsTheFormerOneOrWhole)
{
    const std::string model = vfTest::signpost("obj");
    std::istringstream formats(vfFormats::writableFormats());
    for (std::string format; std::getline(formats, format, ',');) {
        const std::string path = directory.file("model." + format);
        const osg::ref_ptr<osg::Node> scene = read(model).scene;
        ASSERT_EQ("", save(*scene, path)) << format;
        const auto whole = measureModel(*read(path).scene, 0);
        const rlim_t size = fs::file_size(path);
        for (rlim_t part = 0; part < 13; part += vfTest::stepOfSearch) {
            vfTest::overwriteFile(path, "before");
            const int status = inAnotherProcess([&] {
                std::signal(SIGXFSZ, SIG_IGN); // as the program does
                const rlimit limit = {size * part / 10 + part, RLIM_INFINITY};
                return setrlimit(RLIMIT_FSIZE, &limit) == 0 && save(*scene, path).empty();
            });
            ASSERT_TRUE(WIFEXITED(status)) << format << " " << part;
            if (WEXITSTATUS(status) != 0) {
                EXPECT_EQ("before", readFile(path)) << format << " " << part;
                continue;
            }
            const auto written = measureModel(*read(path).scene, 0);
            EXPECT_TRUE(hasEverything(whole, written, false)) << format << " " << part;
        }
        fs::remove(path);
    }
    EXPECT_THAT(names(), testing::Each(testing::Not(HasSubstr("save")))) << "a draft is left";
}

TEST_F(WriteJobs, CoordinatesInAnAc3dFileHaveAllTheirDigits)
{
    const osg::ref_ptr<osg::MatrixTransform> far =
        new osg::MatrixTransform(osg::Matrix::translate(1234567.25, 0.123456789, 0));
    far->addChild(makeGeode(makeGeometry(GL_QUADS, corners), "square"));
    const std::string path = directory.file("far.ac");
    ASSERT_EQ("", save(*far, path));
    osg::ComputeBoundsVisitor bounds;
    read(path).scene->accept(bounds);
    EXPECT_EQ(1234567.25f, bounds.getBoundingBox().xMin());
    EXPECT_EQ(1234568.25f, bounds.getBoundingBox().xMax());
    EXPECT_FLOAT_EQ(0.123456789f, bounds.getBoundingBox().yMin());
}

namespace {

/// @return two triangles that meet at an angle, shaded as one surface or with an edge between them
osg::ref_ptr<osg::Geode> makeFold(bool isSmooth)
{
    const std::vector<osg::Vec3> points = {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0, 0, 1}, {1, 0, 0}, {1, 3, 1}};
    const osg::ref_ptr<osg::Geometry> geometry = makeGeometry(GL_TRIANGLES, points);
    const osg::Vec3 one(0, -1, 0);
    osg::Vec3 other = (points[4] - points[3]) ^ (points[5] - points[3]);
    other.normalize();
    osg::Vec3 between = one + other;
    between.normalize();
    const osg::ref_ptr<osg::Vec3Array> normals = new osg::Vec3Array;
    for (const osg::Vec3& normal : {one, isSmooth ? between : one, isSmooth ? between : one,
                                    isSmooth ? between : other, isSmooth ? between : other, other})
        normals->push_back(normal);
    geometry->setNormalArray(normals, osg::Array::BIND_PER_VERTEX);
    return makeGeode(geometry, isSmooth ? "smooth" : "sharp");
}

/// @return the number of different normals in a scene
std::size_t countNormals(osg::Node& scene)
{
    struct Count : osg::NodeVisitor
    {
        using NodeVisitor::apply;
        Count() : NodeVisitor(TRAVERSE_ALL_CHILDREN) {}
        void apply(osg::Geometry& geometry) override
        {
            const auto* array = dynamic_cast<const osg::Vec3Array*>(geometry.getNormalArray());
            ASSERT_NE(nullptr, array);
            for (const osg::Vec3& normal : *array)
                found.insert({std::lround(normal.x() * 100), std::lround(normal.y() * 100),
                              std::lround(normal.z() * 100)});
        }
        std::set<std::array<long, 3>> found;
    } count;
    scene.accept(count);
    return count.found.size();
}

} // namespace

TEST_F(WriteJobs, AnAc3dFileKeepsRoundSurfacesAndSharpEdges)
{
    for (const bool isSmooth : {true, false}) {
        const std::string path = directory.file("fold.ac");
        ASSERT_EQ("", save(*makeFold(isSmooth), path));
        EXPECT_EQ(isSmooth ? 3u : 2u, countNormals(*read(path).scene)) << (isSmooth ? "smooth" : "sharp");
    }
}

TEST_F(WriteJobs, AnAc3dFileHasTheTextureWhereTheModelHasItAndTheTransparency)
{
    const osg::ref_ptr<osg::Image> image = new osg::Image;
    image->allocateImage(2, 2, 1, GL_RGB, GL_UNSIGNED_BYTE);
    std::fill_n(image->data(), image->getTotalSizeInBytes(), static_cast<unsigned char>(99));
    const osg::ref_ptr<osg::Geometry> square = makeGeometry(GL_QUADS, corners);
    const osg::ref_ptr<osg::Vec2Array> places = new osg::Vec2Array;
    for (const osg::Vec3& corner : corners)
        places->push_back({corner.x(), corner.y()});
    square->setTexCoordArray(0, places);
    osg::StateSet* state = square->getOrCreateStateSet();
    state->setTextureAttributeAndModes(0, new osg::Texture2D(image));
    state->setTextureAttribute(0, new osg::TexMat(osg::Matrix::scale(2, 3, 1)));
    const osg::ref_ptr<osg::Material> material = new osg::Material;
    material->setDiffuse(osg::Material::FRONT_AND_BACK, {1, 0.5f, 0, 0.25f});
    state->setAttribute(material);
    const std::string path = directory.file("square.ac");
    ASSERT_EQ("", save(*makeGeode(square, "square"), path));
    const std::string file = readFile(path);
    EXPECT_THAT(file, HasSubstr("rgb 1 0.5 0 "));
    EXPECT_THAT(file, HasSubstr("trans 0.75\n"));
    EXPECT_THAT(file, HasSubstr("texture \"square-image.png\"\n"));
    EXPECT_THAT(file, HasSubstr("refs 4\n0 0 0\n1 2 0\n2 2 3\n3 0 3\n"));
}

TEST_F(WriteJobs, ADxfFileHasTheNearestColoursOfTheFormat)
{
    const std::map<std::string, osg::Vec4> colors = {
        {"10", {1, 0, 0, 1}},  {"92", {0, 0.6f, 0, 1}}, {"171", {0.5f, 0.5f, 1, 1}},
        {"255", {1, 1, 1, 1}}, {"50", {1, 1, 0, 1}},    {"250", {0.2f, 0.2f, 0.2f, 1}}};
    for (const auto& [number, color] : colors) {
        const std::string path = directory.file(number + ".dxf");
        ASSERT_EQ("", save(*makeColored(color), path));
        EXPECT_THAT(readFile(path), HasSubstr("3DFACE\n8\npart\n62\n" + number + "\n10\n"));
    }
}

TEST_F(WriteJobs, OnAFullDiskTheFormerModelStaysWithItsFiles)
{
    const std::string disk = directory.file("disk");
    fs::create_directory(disk);
    if (mount("none", disk.c_str(), "tmpfs", 0, "size=300k") != 0)
        GTEST_SKIP() << "no disk can be made";
    const osg::ref_ptr<osg::Node> scene = makeColored({1, 0, 0, 1});
    EXPECT_EQ("", save(*scene, disk + "/a.obj"));
    const std::string before = readFile(disk + "/a.obj");
    const std::string hills = directory.file("hills.stl");
    vfTest::writeHills(hills, 20000);
    const osg::ref_ptr<osg::Node> large = read(hills).scene;
    for (const char* name : {"a.obj", "b.stl", "b.osgt", "b.osgb", "b.ive", "b.ac", "b.dxf"})
        EXPECT_NE("", save(*large, disk + "/" + name)) << name;
    EXPECT_EQ(before, readFile(disk + "/a.obj"));
    EXPECT_EQ(2, std::distance(fs::directory_iterator(disk), fs::directory_iterator()));
    umount(disk.c_str());
}

TEST_F(WriteJobs, AColourThatReplacesThoseBelowItIsWritten)
{
    const osg::ref_ptr<osg::Group> scene = new osg::Group;
    scene->addChild(makeColored({1, 0, 0, 1}));
    const osg::ref_ptr<osg::Material> green = new osg::Material;
    green->setDiffuse(osg::Material::FRONT_AND_BACK, {0, 1, 0, 1});
    scene->getOrCreateStateSet()->setAttribute(green, osg::StateAttribute::OVERRIDE);
    for (const char* format : {"obj", "3ds", "ac"}) {
        const std::string path = directory.file(std::string("green.") + format);
        EXPECT_EQ("", save(*scene, path)) << format;
        struct Find : osg::NodeVisitor
        {
            Find() : NodeVisitor(TRAVERSE_ALL_CHILDREN) {}
            void apply(osg::Node& node) override
            {
                const osg::StateSet* state = node.getStateSet();
                const auto* material = state ? dynamic_cast<const osg::Material*>(
                                                   state->getAttribute(osg::StateAttribute::MATERIAL))
                                             : nullptr;
                if (material)
                    color = material->getDiffuse(osg::Material::FRONT);
                traverse(node);
            }
            osg::Vec4 color;
        } find;
        const auto outcome = read(path);
        ASSERT_TRUE(outcome.scene) << outcome.reason;
        outcome.scene->accept(find);
        EXPECT_NEAR(0, find.color.r(), 0.01) << format;
        EXPECT_NEAR(1, find.color.g(), 0.01) << format;
    }
}

TEST_F(WriteJobs, MaterialsOfOthersAreNotOverwritten)
{
    directory.write("boat.mtl", "newmtl theirs\n");
    EXPECT_EQ("", save(*makeColored({1, 0, 0, 1}), directory.file("boat.obj")));
    EXPECT_EQ("newmtl theirs\n", readFile(directory.file("boat.mtl")));
    EXPECT_THAT(readFile(directory.file("boat.obj")), HasSubstr("mtllib boat-2.mtl\n"));
    EXPECT_THAT(readFile(directory.file("boat-2.mtl")), HasSubstr("Kd 1 0 0\n"));
}

TEST_F(WriteJobs, AModelThatIsSavedAgainHasOneFileOfMaterials)
{
    for (const float green : {0.0f, 0.5f, 1.0f}) {
        EXPECT_EQ("", save(*makeColored({1, green, 0, 1}), directory.file("boat.obj")));
        EXPECT_EQ(2u, names().size());
        const auto outcome = read(directory.file("boat.obj"));
        ASSERT_TRUE(outcome.scene);
        EXPECT_THAT(outcome.warnings, testing::IsEmpty());
    }
    EXPECT_EQ("", save(*makeGeode(makeGeometry(GL_QUADS, corners), "plain"), directory.file("boat.obj")));
    EXPECT_THAT(names(), ElementsAre("boat.obj"));
}

TEST_F(WriteJobs, UntilTheModelIsInItsPlaceTheFormerOneHasItsMaterials)
{
    const std::string path = directory.file("boat.obj");
    EXPECT_EQ("", save(*makeColored({1, 0, 0, 1}), path));
    const std::string model = readFile(path);
    const std::string materials = readFile(directory.file("boat.mtl"));
    const osg::ref_ptr<osg::Node> other = makeColored({0, 1, 0, 1});
    ASSERT_EQ(0, chmod(path.c_str(), 0400));
    EXPECT_NE("", save(*other, path)) << "a file without write permission";
    EXPECT_EQ(model, readFile(path));
    EXPECT_EQ(materials, readFile(directory.file("boat.mtl")));
    chmod(path.c_str(), 0600);
    EXPECT_EQ("", save(*other, path));
    EXPECT_EQ(2u, names().size());
}

TEST_F(WriteJobs, ImagesComeWithTheModelUnderNamesThatAreFree)
{
    const osg::ref_ptr<osg::Node> boat = read(VELAFORGE_SOURCE_DIR "/models/sailboat.obj").scene;
    ASSERT_TRUE(boat);
    directory.write("sail.png", "of another model");
    for (const char* format : {"obj", "ac", "3ds"}) {
        const std::string path = directory.file(std::string("boat.") + format);
        EXPECT_EQ("", save(*boat, path)) << format;
        const auto outcome = read(path);
        ASSERT_TRUE(outcome.scene) << outcome.reason;
        EXPECT_THAT(outcome.warnings, testing::IsEmpty()) << format;
        EXPECT_TRUE(vfFormats::featuresOf(*outcome.scene) & vfFormats::Textures) << format;
    }
    EXPECT_EQ("of another model", readFile(directory.file("sail.png")));
    EXPECT_EQ(readFile(VELAFORGE_SOURCE_DIR "/models/sail.png"), readFile(directory.file("sail-2.png")));
    EXPECT_THAT(names(),
                ElementsAre("boat.3ds", "boat.ac", "boat.mtl", "boat.obj", "sail-2.png", "sail.png"));
}

TEST_F(WriteJobs, ModeAndLinksOfTheFormerFileStay)
{
    const std::string path = directory.write("real.stl", "before");
    fs::create_symlink("real.stl", directory.file("link.stl"));
    fs::create_hard_link(path, directory.file("other.stl"));
    ASSERT_EQ(0, chmod(path.c_str(), 0664));
    const bool isRoot = geteuid() == 0;
    ASSERT_EQ(0, isRoot ? chown(path.c_str(), 12345, 12346) : 0);
    EXPECT_EQ("", save(*makeColored({1, 0, 0, 1}), directory.file("link.stl")));
    struct stat status;
    ASSERT_EQ(0, stat(path.c_str(), &status));
    EXPECT_EQ(0664u, status.st_mode & 07777u);
    EXPECT_EQ(isRoot ? 12345u : geteuid(), status.st_uid);
    EXPECT_EQ(isRoot ? 12346u : getegid(), status.st_gid);
    EXPECT_TRUE(fs::is_symlink(directory.file("link.stl")));
    EXPECT_THAT(readFile(path), HasSubstr("facet"));
    EXPECT_EQ("before", readFile(directory.file("other.stl"))) << "as replaceFile() has it";
}

TEST_F(WriteJobs, DraftsOfProgramsThatWereKilledVanishAndThoseInUseStay)
{
    const std::string abandoned = directory.file(".velaforge-save-abcdef");
    fs::create_directory(abandoned);
    directory.write(".velaforge-save-abcdef/boat.stl", "half");
    const vfFormats::SaveDirectory used(directory.file("other.stl"));
    EXPECT_FALSE(fs::exists(abandoned));
    fs::create_directory(abandoned);
    EXPECT_EQ("", save(*makeColored({1, 0, 0, 1}), directory.file("boat.stl")));
    EXPECT_FALSE(fs::exists(abandoned));
    EXPECT_TRUE(fs::exists(fs::path(used.draft()).parent_path()));
}

TEST_F(WriteJobs, CancelLeavesTheFileAndNoDraft)
{
    const std::string hills = directory.file("hills.stl");
    vfTest::writeHills(hills, 400000);
    const osg::ref_ptr<osg::Node> large = read(hills).scene;
    ASSERT_TRUE(large);
    const std::string path = directory.write("model.osgt", "before");
    {
        WriteJob job(*large, path, false);
        EXPECT_FALSE(job.isDone());
        while (job.progress() < 0.1 && !job.isDone())
            job.wait(1);
        job.cancel();
        EXPECT_TRUE(job.isDone());
        EXPECT_TRUE(job.isCancelled());
        EXPECT_NE("", job.outcome().reason);
    }
    vfIsolation::Job::waitForThreads();
    EXPECT_EQ("before", readFile(path));
    EXPECT_THAT(names(), ElementsAre("hills.stl", "model.osgt"));
}

TEST_F(WriteJobs, TheSceneMayChangeWhileItIsWrittenAndKeepsItsArrays)
{
    const osg::ref_ptr<osg::Group> scene = new osg::Group;
    scene->addChild(makeColored({1, 0, 0, 1}));
    const std::string path = directory.file("model.osgb");
    WriteJob job(*scene, path, false);
    scene->removeChildren(0, 1);
    while (!job.wait(1000)) {
    }
    EXPECT_EQ("", job.outcome().reason);
    EXPECT_EQ(1u, measureModel(*read(path).scene, 0).triangles);
    const std::string hills = directory.file("hills.stl");
    vfTest::writeHills(hills, 2000);
    const osg::ref_ptr<osg::Node> large = read(hills).scene;
    const auto before = measureModel(*large, 0);
    EXPECT_EQ("", save(*large, path));
    EXPECT_EQ(before.triangles, measureModel(*large, 0).triangles) << "the model that is shown";
}

TEST_F(WriteJobs, WhatTheSceneSharesIsWrittenOnce)
{
    osg::ref_ptr<osg::Node> scene = makeColored({1, 0, 0, 1});
    for (int i = 0; i < 14; ++i) { // 16384 places of one triangle
        const osg::ref_ptr<osg::Group> above = new osg::Group;
        above->addChild(scene);
        above->addChild(scene);
        scene = above;
    }
    const std::string path = directory.file("model.osgb");
    EXPECT_EQ("", save(*scene, path));
    EXPECT_LT(fs::file_size(path), 20000u);
}

TEST_F(WriteJobs, AModelCanBeWrittenToAPipe)
{
    const std::string pipe = directory.file("pipe.stl");
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
    const int reader = open(pipe.c_str(), O_RDWR | O_NONBLOCK);
    EXPECT_EQ("", save(*makeColored({1, 0, 0, 1}), pipe));
    char text[4096];
    EXPECT_GT(::read(reader, text, sizeof(text)), 100);
    close(reader);
    EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(WriteJobs, ADraftThatIsGoneIsAFailureWhereTheTargetIsAPipe)
{
    const std::string pipe = directory.file("pipe.stl");
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
    vfFormats::SaveDirectory drafts(pipe);
    ASSERT_EQ("", drafts.reason());
    EXPECT_THAT(drafts.commit(), HasSubstr("No such file"));
}

TEST_F(WriteJobs, WhereThereIsNoFolderTheReasonIsTold)
{
    EXPECT_THAT(save(*makeColored({1, 0, 0, 1}), directory.file("missing/a.obj")), HasSubstr("No such file"));
}

TEST_F(WriteJobs, WhatAWriterSendsIsFilesWithTheNamesOfImagesOrRefused)
{
    std::vector<vfFormats::SideFile> files;
    const std::string sound = vfFormats::packSideFiles({{"a.png", "picture"}, {"b c.jpg", ""}});
    ASSERT_TRUE(vfFormats::unpackSideFiles(sound, files));
    ASSERT_EQ(2u, files.size());
    EXPECT_EQ("a.png", files[0].name);
    EXPECT_EQ("picture", files[0].contents);
    EXPECT_EQ("b c.jpg", files[1].name);
    EXPECT_TRUE(vfFormats::unpackSideFiles("", files)) << "a model may have none";
    EXPECT_THAT(files, testing::IsEmpty());
    for (const std::string& name : {std::string(), std::string("../a.png"), std::string("/tmp/a.png"),
                                    std::string(".a.png"), std::string("a.obj"), std::string(".bashrc"),
                                    std::string("a\0.png", 6), std::string(300, 'a') + ".png"})
        EXPECT_FALSE(vfFormats::unpackSideFiles(vfFormats::packSideFiles({{name, "x"}}), files)) << name;
    for (std::size_t size = 1; size < sound.size(); ++size) {
        const bool isWhole = size == vfFormats::packSideFiles({{"a.png", "picture"}}).size();
        EXPECT_EQ(isWhole, vfFormats::unpackSideFiles(sound.substr(0, size), files)) << size;
    }
    EXPECT_FALSE(vfFormats::unpackSideFiles(std::string(8, '\xff') + sound, files));
}
