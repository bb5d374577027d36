// SPDX-License-Identifier: MIT
// What the table says that formats lose is what is lost when a model is written and read again.
#include "support/Reading.h"

#include <velaforge/formats/FormatLosses.h>
#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/WriteJob.h>

#include <osg/AnimationPath>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Material>
#include <osg/MatrixTransform>
#include <osg/Texture2D>
#include <osgDB/WriteFile>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

enum class Part
{
    Plain,
    Textured,
    Coloured,
    Smooth,
    Line,
    Dots
};

osg::ref_ptr<osg::Geode> makePart(Part kind, const osg::Vec3& place, osg::Image* image)
{
    const osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    const osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array;
    for (const osg::Vec3& corner : {osg::Vec3(0, 0, 0), osg::Vec3(1, 0, 0), osg::Vec3(0, 0, 1)})
        points->push_back(corner + place);
    geometry->setVertexArray(points);
    const osg::ref_ptr<osg::Vec3Array> normals = new osg::Vec3Array(3);
    std::fill(normals->begin(), normals->end(), osg::Vec3(0, -1, 0));
    geometry->setNormalArray(normals, osg::Array::BIND_PER_VERTEX);
    if (kind == Part::Smooth) { // two triangles that meet at an angle
        points->push_back(osg::Vec3(1, 0.5f, 1) + place);
        normals->push_back({0.408f, -0.816f, 0.408f});
        (*normals)[1] = (*normals)[2] = {0.214f, -0.953f, 0.214f};
        const osg::ref_ptr<osg::DrawElementsUShort> triangles = new osg::DrawElementsUShort(GL_TRIANGLES);
        for (const unsigned short i : {0, 1, 2, 2, 1, 3})
            triangles->push_back(i);
        geometry->addPrimitiveSet(triangles);
    } else {
        const GLenum mode = kind == Part::Line ? GL_LINES : kind == Part::Dots ? GL_POINTS : GL_TRIANGLES;
        geometry->addPrimitiveSet(new osg::DrawArrays(mode, 0, kind == Part::Line ? 2 : 3));
    }
    if (kind == Part::Coloured) {
        const osg::ref_ptr<osg::Vec4Array> colors = new osg::Vec4Array(3);
        (*colors)[0] = {1, 0, 0, 1};
        (*colors)[1] = {0, 1, 0, 1};
        (*colors)[2] = {0, 0, 1, 1};
        geometry->setColorArray(colors, osg::Array::BIND_PER_VERTEX);
    }
    const osg::ref_ptr<osg::Material> material = new osg::Material;
    material->setDiffuse(osg::Material::FRONT_AND_BACK, {0.8f, 0.2f, 0.1f, 1});
    geometry->getOrCreateStateSet()->setAttribute(material);
    if (kind == Part::Textured) {
        const osg::ref_ptr<osg::Vec2Array> places = new osg::Vec2Array;
        for (const osg::Vec2& corner : {osg::Vec2(0, 0), osg::Vec2(1, 0), osg::Vec2(0, 1)})
            places->push_back(corner);
        geometry->setTexCoordArray(0, places);
        geometry->getOrCreateStateSet()->setTextureAttributeAndModes(0, new osg::Texture2D(image));
    }
    osg::ref_ptr<osg::Geode> part = new osg::Geode;
    part->addDrawable(geometry);
    return part;
}

class FormatLosses : public vfTest::Reading
{};

} // namespace

TEST_F(FormatLosses, AreThoseThatTheWritersMake)
{
    const osg::ref_ptr<osg::Image> image = new osg::Image;
    image->allocateImage(2, 2, 1, GL_RGB, GL_UNSIGNED_BYTE);
    std::fill_n(image->data(), image->getTotalSizeInBytes(), static_cast<unsigned char>(99));
    ASSERT_TRUE(osgDB::writeImageFile(*image, directory.file("cloth.png")));
    image->setFileName(directory.file("cloth.png"));
    const osg::ref_ptr<osg::Group> model = new osg::Group;
    int number = 0;
    for (const Part kind :
         {Part::Plain, Part::Textured, Part::Coloured, Part::Smooth, Part::Line, Part::Dots}) {
        const osg::ref_ptr<osg::Geode> part =
            makePart(kind, osg::Vec3(2.0f * static_cast<float>(number), 0, 0), image);
        part->setName("part" + std::to_string(number++));
        model->addChild(part);
    }
    const osg::ref_ptr<osg::Geode> hidden = makePart(Part::Plain, {1, 0, 0.5f}, image);
    hidden->setName("hidden");
    hidden->setNodeMask(0);
    model->addChild(hidden);
    const osg::ref_ptr<osg::MatrixTransform> moving = new osg::MatrixTransform;
    moving->setName("moving");
    const osg::ref_ptr<osg::AnimationPath> path = new osg::AnimationPath;
    path->insert(0, osg::AnimationPath::ControlPoint({0, 0, 0}));
    path->insert(1, osg::AnimationPath::ControlPoint({1, 0, 0}));
    moving->setUpdateCallback(new osg::AnimationPathCallback(path));
    moving->setDataVariance(osg::Object::DYNAMIC);
    moving->addChild(makePart(Part::Plain, {0, 0, 2}, image));
    model->addChild(moving);
    const unsigned int before = vfFormats::featuresOf(*model);
    EXPECT_EQ(1023u, before);
    std::istringstream formats(vfFormats::writableFormats());
    for (std::string format; std::getline(formats, format, ',');) {
        const std::string file = directory.file("model." + format);
        ASSERT_EQ("", vfFormats::writeModel(*model, file).reason) << format;
        const auto outcome = read(file);
        ASSERT_TRUE(outcome.scene) << format << ": " << outcome.reason;
        const unsigned int after = vfFormats::featuresOf(*outcome.scene);
        // Where normals are lost, new ones are worked out, which may be smooth or not.
        const unsigned int lost = vfFormats::featuresLostBy(format);
        const unsigned int certain = lost & vfFormats::SmoothNormals ? ~vfFormats::SmoothNormals : ~0u;
        EXPECT_EQ(before & ~lost & certain, after & before & certain) << format;
    }
}

TEST_F(FormatLosses, AreToldOfWhatTheModelHas)
{
    const osg::ref_ptr<osg::Group> model = new osg::Group;
    model->addChild(makePart(Part::Plain, {}, nullptr));
    EXPECT_THAT(vfFormats::lossesOf(*model, "osgb"), IsEmpty());
    EXPECT_THAT(vfFormats::lossesOf(*model, "obj"), IsEmpty());
    EXPECT_THAT(vfFormats::lossesOf(*model, "stl"), ElementsAre("colours of materials"));
    model->addChild(makePart(Part::Coloured, {1, 0, 0}, nullptr));
    EXPECT_THAT(vfFormats::lossesOf(*model, "obj"), ElementsAre("colours of points"));
    EXPECT_THAT(vfFormats::lossesOf(*model, "stl"), ElementsAre("colours of materials", "colours of points"));
    EXPECT_EQ(~0u, vfFormats::featuresLostBy("xyz"));
}
