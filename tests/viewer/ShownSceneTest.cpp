// SPDX-License-Identifier: MIT
// What each way of looking at a model changes in the picture, and that it changes nothing of the model.
#include "model/ModelDocument.h"
#include "support/ModelDigest.h"
#include <velaforge/headless/ScenePicture.h>
#include <velaforge/scene/Overlays.h>
#include <velaforge/scene/ShownScene.h>

#include <osg/CullFace>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Material>
#include <osg/MatrixTransform>
#include <osg/Texture2D>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <set>

using vfScene::CameraPlacement;
using vfScene::Projection;
using vfScene::ShownScene;
using vfScene::StandardView;
using vfScene::ViewStyle;

namespace {

using Color = std::array<int, 4>;

/// A picture that can be asked what is in it.
struct Picture
{
    osg::ref_ptr<osg::Image> image;

    Color at(int x, int y) const
    {
        const unsigned char* pixel = image->data(static_cast<unsigned int>(x), static_cast<unsigned int>(y));
        return {pixel[0], pixel[1], pixel[2], pixel[3]};
    }

    /// @return the number of pixels that hold something
    template <class Wanted>
    int count(Wanted wanted) const
    {
        int found = 0;
        for (int y = 0; y < image->t(); ++y) {
            for (int x = 0; x < image->s(); ++x)
                found += wanted(at(x, y)) ? 1 : 0;
        }
        return found;
    }
    int covered() const
    {
        return count([](const Color& color) { return color[0] + color[1] + color[2] > 0; });
    }
    std::size_t colors() const
    {
        std::set<Color> seen;
        count([&seen](const Color& color) { return seen.insert(color).second; });
        return seen.size();
    }
};

osg::ref_ptr<osg::Geometry> quad(const osg::Vec3& corner, const osg::Vec3& width, const osg::Vec3& height)
{
    osg::ref_ptr<osg::Geometry> made = osg::createTexturedQuadGeometry(corner, width, height);
    made->setColorArray(nullptr);
    return made;
}

/// A ball whose normals are smooth.
osg::ref_ptr<osg::Geometry> ball(const osg::Vec3& middle, float radius)
{
    const osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array;
    const osg::ref_ptr<osg::Vec3Array> normals = new osg::Vec3Array;
    const osg::ref_ptr<osg::DrawElementsUInt> triangles = new osg::DrawElementsUInt(GL_TRIANGLES);
    constexpr unsigned int rings = 6;
    constexpr unsigned int sectors = 10;
    for (unsigned int ring = 0; ring <= rings; ++ring) {
        for (unsigned int sector = 0; sector <= sectors; ++sector) {
            const float up = osg::PIf * static_cast<float>(ring) / rings;
            const float around = 2 * osg::PIf * static_cast<float>(sector) / sectors;
            const osg::Vec3 normal(std::sin(up) * std::cos(around), std::sin(up) * std::sin(around),
                                   std::cos(up));
            normals->push_back(normal);
            points->push_back(middle + normal * radius);
            if (ring == rings || sector == sectors)
                continue;
            const unsigned int first = ring * (sectors + 1) + sector;
            for (const unsigned int index :
                 {first, first + sectors + 1, first + 1, first + 1, first + sectors + 1, first + sectors + 2})
                triangles->push_back(index);
        }
    }
    osg::ref_ptr<osg::Geometry> made = new osg::Geometry;
    made->setVertexArray(points);
    made->setNormalArray(normals, osg::Array::BIND_PER_VERTEX);
    made->addPrimitiveSet(triangles);
    return made;
}

class ShownScenes : public testing::Test
{
protected:
    ShownScenes() { style.background = vfScene::Background{{0, 0, 0}, {0, 0, 0}}; }

    void add(osg::Node* node)
    {
        if (document.scene().getNumChildren() == 0)
            document.getModelScene().setModel(new osg::Group);
        document.scene().getChild(0)->asGroup()->addChild(node);
    }

    Picture draw(StandardView view = StandardView::Front, bool isTransparent = false)
    {
        ShownScene scene(document.getModelScene());
        scene.setStyle(style);
        if (selected)
            scene.setSelection(selected);
        const CameraPlacement camera = vfScene::placeCamera(document.scene(), view, 1, style.projection);
        return draw(scene, camera, isTransparent);
    }

    static Picture draw(const ShownScene& scene, const CameraPlacement& camera, bool isTransparent = false)
    {
        vfBase::VfString reason;
        vfApplication::SnapshotFormat format;
        format.width = format.height = 100;
        format.isTransparent = isTransparent;
        Picture picture{vfApplication::renderPicture(scene, camera, format, reason)};
        EXPECT_TRUE(picture.image) << reason;
        return picture;
    }

    vfViewer::ModelDocument document;
    ViewStyle style;
    osg::Node* selected = nullptr;
};

} // namespace

TEST_F(ShownScenes, WireframeAndPointsShowLessOfTheModel)
{
    add(ball({}, 1));
    const int surfaces = draw().covered();
    style.drawMode = vfScene::DrawMode::Wireframe;
    const int wireframe = draw().covered();
    style.drawMode = vfScene::DrawMode::Points;
    const int points = draw().covered();
    EXPECT_LT(5000, surfaces);
    EXPECT_LT(points * 2, wireframe);
    EXPECT_LT(wireframe, surfaces * 3 / 4);
    EXPECT_LT(50, points);
}

TEST_F(ShownScenes, FlatShadingGivesEachTriangleOneShade)
{
    add(ball({}, 1));
    style.isAntialiased = false;
    const std::size_t smooth = draw().colors();
    style.isFlat = true;
    const std::size_t flat = draw().colors();
    EXPECT_LT(flat, 70u);
    EXPECT_LT(flat * 2, smooth);
}

TEST_F(ShownScenes, BackFacesAreLeftOutWhenTheyAreCulled)
{
    add(quad({-1, 0, -1}, {2, 0, 0}, {0, 0, 2})); // which faces the front
    EXPECT_LT(5000, draw(StandardView::Front).covered());
    EXPECT_LT(5000, draw(StandardView::Back).covered());
    // Whatever the file says: what it takes for the front may be the back.
    document.scene().getOrCreateStateSet()->setAttributeAndModes(new osg::CullFace(osg::CullFace::BACK));
    EXPECT_LT(5000, draw(StandardView::Back).covered());
    style.cullsBackFaces = true;
    EXPECT_LT(5000, draw(StandardView::Front).covered());
    EXPECT_EQ(0, draw(StandardView::Back).covered());
}

TEST_F(ShownScenes, TexturesCanBeSwitchedOff)
{
    const osg::ref_ptr<osg::Geometry> poster = quad({-1, 0, -1}, {2, 0, 0}, {0, 0, 2});
    const osg::ref_ptr<osg::Image> red = new osg::Image;
    red->allocateImage(1, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, 1);
    red->data()[0] = 255;
    red->data()[1] = red->data()[2] = 0;
    const osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(red);
    texture->setWrap(osg::Texture::WRAP_S, osg::Texture::REPEAT);
    texture->setWrap(osg::Texture::WRAP_T, osg::Texture::REPEAT);
    poster->getOrCreateStateSet()->setTextureAttributeAndModes(0, texture);
    add(poster);
    const auto isRed = [](const Color& color) { return color[0] > 100 && color[1] * 2 < color[0]; };
    EXPECT_LT(5000, draw().count(isRed));
    style.showsTextures = false;
    EXPECT_EQ(0, draw().count(isRed));
    EXPECT_LT(5000, draw().covered());
}

TEST_F(ShownScenes, ColoursOfPointsCanBeSwitchedOffAndTheMaterialShowsThen)
{
    const osg::ref_ptr<osg::Geometry> poster = quad({-1, 0, -1}, {2, 0, 0}, {0, 0, 2});
    const osg::ref_ptr<osg::Vec4Array> colors = new osg::Vec4Array(osg::Array::BIND_OVERALL);
    colors->push_back({1, 0, 0, 1});
    poster->setColorArray(colors);
    const osg::ref_ptr<osg::Material> material = new osg::Material;
    material->setColorMode(osg::Material::AMBIENT_AND_DIFFUSE);
    material->setDiffuse(osg::Material::FRONT_AND_BACK, {0, 1, 0, 1});
    material->setAmbient(osg::Material::FRONT_AND_BACK, {0, 1, 0, 1});
    poster->getOrCreateStateSet()->setAttribute(material);
    add(poster);
    const osg::ref_ptr<osg::MatrixTransform> twice =
        new osg::MatrixTransform(osg::Matrix::translate(0, 0, 3));
    twice->addChild(poster);
    add(twice);
    const auto isRed = [](const Color& color) { return color[0] > 100 && color[1] < 10; };
    const auto isGreen = [](const Color& color) { return color[1] > 100 && color[0] < 10; };
    const int before = draw().count(isRed);
    EXPECT_LT(2000, before);
    style.showsVertexColors = false;
    const Picture without = draw();
    EXPECT_EQ(before, without.count(isGreen));
    EXPECT_EQ(0, without.count(isRed));
    // The document has kept what it had.
    EXPECT_EQ(colors, poster->getColorArray());
    EXPECT_EQ(osg::Material::AMBIENT_AND_DIFFUSE, material->getColorMode());
}

TEST_F(ShownScenes, APartIsFoundInWhatIsDrawnOfIt)
{
    const osg::ref_ptr<osg::Geometry> part = ball({}, 1);
    add(part);
    ShownScene scene(document.getModelScene());
    const auto drawn = [&scene]() -> osg::Node* {
        osg::Node* node = scene.root().getChild(1);
        while (node->asGroup())
            node = node->asGroup()->getChild(0);
        return node;
    };
    EXPECT_EQ(part, drawn());
    EXPECT_EQ(part, scene.modelNode(*drawn()));
    style.showsVertexColors = false;
    scene.setStyle(style);
    EXPECT_NE(part, drawn());
    EXPECT_EQ(part, scene.modelNode(*drawn()));
    EXPECT_EQ(nullptr, scene.modelNode(*scene.root().getChild(0)));
}

TEST_F(ShownScenes, TheGridLiesUnderTheModelAndIsDrawnAsEver)
{
    add(ball({0, 0, 5}, 1));
    const int before = draw(StandardView::FrontRight).covered();
    style.showsGrid = true;
    const int with = draw(StandardView::FrontRight).covered();
    EXPECT_LT(before + 200, with);
    style.drawMode = vfScene::DrawMode::Points;
    EXPECT_LT(with - before, draw(StandardView::FrontRight).covered() * 2);
    // From below it is seen through its gaps, from the side it is a line at the lowest point.
    const osg::ref_ptr<osg::Node> grid = vfScene::makeGrid(osg::BoundingBox(-1, -1, 4, 1, 1, 6));
    EXPECT_FLOAT_EQ(4, grid->asGeometry()->getBoundingBox().zMax());
    EXPECT_FLOAT_EQ(4, grid->asGeometry()->getBoundingBox().zMin());
    EXPECT_GT(-1, grid->asGeometry()->getBoundingBox().xMin());
}

TEST(Grid, ItsLinesAreARoundNumberOfUnitsApart)
{
    const auto spacing = [](float size) {
        return vfScene::gridSpacing(osg::BoundingBox(0, 0, 0, size, size / 2, 1));
    };
    EXPECT_DOUBLE_EQ(0.1, spacing(1));
    EXPECT_DOUBLE_EQ(1, spacing(10));
    EXPECT_DOUBLE_EQ(1, spacing(19));
    EXPECT_DOUBLE_EQ(2, spacing(25));
    EXPECT_DOUBLE_EQ(5, spacing(70));
    EXPECT_NEAR(1e6, spacing(1.5e7f), 1);
    EXPECT_DOUBLE_EQ(0, spacing(0));
    EXPECT_DOUBLE_EQ(0, vfScene::gridSpacing(osg::BoundingBox()));
    EXPECT_FALSE(vfScene::makeGrid(osg::BoundingBox()));
}

TEST_F(ShownScenes, TheAxesAreSeenInTheLowerLeftCornerAndTurnWithTheCamera)
{
    add(ball({}, 1));
    style.showsAxes = true;
    style.isAntialiased = false;
    const auto cornerOf = [this](StandardView view) {
        const Picture picture = draw(view);
        std::array<int, 3> found = {};
        for (int y = 0; y < 25; ++y) {
            for (int x = 0; x < 25; ++x) {
                const Color color = picture.at(x, y);
                for (std::size_t i = 0; i < 3; ++i) {
                    const bool isPure = color[i] > 100 && color[(i + 1) % 3] < color[i] / 2 &&
                                        color[(i + 2) % 3] < color[i] / 2;
                    found[i] += isPure ? 1 : 0;
                }
            }
        }
        return found;
    };
    const auto [x1, y1, z1] = cornerOf(StandardView::Front);
    EXPECT_LT(5, x1);
    EXPECT_LT(5, z1);
    EXPECT_GT(x1, y1 / 2); // of which only the letter is seen from there
    const auto [x2, y2, z2] = cornerOf(StandardView::Right);
    EXPECT_LT(x2, x1);
    EXPECT_GT(y2, y1);
    EXPECT_LT(5, z2);
}

TEST_F(ShownScenes, BoxesStandAroundEachPartAndTheSelectionAroundItsOwn)
{
    add(ball({-3, 0, 0}, 1));
    add(ball({3, 0, 0}, 1));
    const int before = draw().covered();
    const auto isBlue = [](const Color& color) { return color[2] > 2 * color[0] && color[2] > 60; };
    const auto isOrange = [](const Color& color) { return color[0] > 150 && color[2] < 60; };
    style.showsBoxes = true;
    const Picture boxes = draw();
    EXPECT_LT(before, boxes.covered());
    EXPECT_LT(100, boxes.count(isBlue));
    style.showsBoxes = false;
    selected = document.getModelScene().parts()[1];
    const Picture marked = draw();
    EXPECT_LT(60, marked.count(isOrange));
    // It stands on the right.
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 50; ++x)
            EXPECT_FALSE(isOrange(marked.at(x, y)));
    }
}

TEST_F(ShownScenes, SmoothEdgesCanBeSwitchedOff)
{
    const osg::ref_ptr<osg::Geometry> part = quad({-1, 0, -1}, {2, 0, 0.3f}, {0, 0, 2});
    part->getOrCreateStateSet()->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    add(part);
    EXPECT_LT(3u, draw().colors());
    style.isAntialiased = false;
    EXPECT_EQ(2u, draw().colors());
}

TEST_F(ShownScenes, TheLightFollowsTheCameraOrStaysWhereItIs)
{
    add(ball({}, 1));
    const auto brightness = [this](StandardView view) {
        const Color middle = draw(view).at(50, 50);
        return middle[0];
    };
    EXPECT_NEAR(brightness(StandardView::Front), brightness(StandardView::Back), 4);
    style.lightFollowsCamera = false;
    EXPECT_LT(brightness(StandardView::Back) + 40, brightness(StandardView::Front));
}

TEST_F(ShownScenes, ASectionTakesOneSideAwayAndAFlippedOneTheOther)
{
    add(quad({-1, 0, -1}, {2, 0, 0}, {0, 0, 2}));
    const double whole = draw().covered();
    style.sections[0].isOn = true;
    style.sections[0].position = 0.25;
    ShownScene scene(document.getModelScene());
    scene.setStyle(style);
    EXPECT_FALSE(scene.isCutAway({-0.6, 0, 0}));
    EXPECT_TRUE(scene.isCutAway({-0.4, 0, 0}));
    Picture cut = draw();
    EXPECT_NEAR(whole / 4, cut.covered(), whole / 20);
    EXPECT_NE(0, cut.at(15, 50)[0]);
    EXPECT_EQ(0, cut.at(60, 50)[0]);
    style.sections[0].isFlipped = true;
    cut = draw();
    EXPECT_NEAR(whole * 3 / 4, cut.covered(), whole / 20);
    EXPECT_EQ(0, cut.at(15, 50)[0]);
    style.sections[2].isOn = true;
    EXPECT_NEAR(whole * 3 / 8, draw().covered(), whole / 20);
    style.sections = {};
    scene.setStyle(style);
    EXPECT_FALSE(scene.isCutAway({0.9, 0, 0.9}));
    EXPECT_EQ(whole, draw().covered());
}

TEST_F(ShownScenes, WithoutPerspectiveWhatIsFarIsAsLargeAsWhatIsNear)
{
    add(quad({-1, 0, -1}, {1, 0, 0}, {0, 0, 1}));
    add(quad({0, 8, 0}, {1, 0, 0}, {0, 0, 1}));
    const auto sizes = [this] {
        ShownScene scene(document.getModelScene());
        scene.setStyle(style);
        const Picture picture =
            draw(scene, vfScene::placementOf({{0, -6, 0}, {0, 0, 0}, {0, 0, 1}}, 1, style.projection));
        std::pair<int, int> found;
        for (int y = 0; y < 100; ++y) {
            for (int x = 0; x < 100; ++x)
                (y < 50 ? found.first : found.second) += picture.at(x, y)[0] > 0 ? 1 : 0;
        }
        return found;
    };
    const auto [near, far] = sizes();
    EXPECT_LT(far * 2, near);
    style.projection = Projection::Orthographic;
    const auto [one, other] = sizes();
    EXPECT_NEAR(one, other, 20);
    EXPECT_LT(900, one);
}

TEST_F(ShownScenes, ATransparentPictureHoldsNothingButTheModelInItsOwnColours)
{
    const osg::ref_ptr<osg::Geometry> part = quad({-1, 0, -1}, {2, 0, 0.3f}, {0, 0, 2});
    const osg::ref_ptr<osg::Vec4Array> colors = new osg::Vec4Array(osg::Array::BIND_OVERALL);
    colors->push_back({1, 0.5f, 0, 1});
    part->setColorArray(colors);
    part->getOrCreateStateSet()->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    add(part);
    const Picture picture = draw(StandardView::Front, true);
    EXPECT_EQ((Color{0, 0, 0, 0}), picture.at(1, 1));
    EXPECT_EQ((Color{255, 128, 0, 255}), picture.at(50, 50));
    // Its edges are thinner, not darker.
    const int edge = picture.count([](const Color& color) { return color[3] > 0 && color[3] < 255; });
    EXPECT_LT(50, edge);
    EXPECT_EQ(edge, picture.count([](const Color& color) {
        return color[3] > 0 && color[3] < 255 && color[0] > 250 && std::abs(color[1] - 128) < 5;
    }));
    // What can be seen through is half there, once.
    (*colors)[0].a() = 0.5f;
    part->getOrCreateStateSet()->setMode(GL_BLEND, osg::StateAttribute::ON);
    const Color half = draw(StandardView::Front, true).at(50, 50);
    EXPECT_NEAR(128, half[3], 2);
    EXPECT_NEAR(255, half[0], 3);
    // Otherwise a picture is never seen through.
    EXPECT_EQ(255, draw().at(50, 50)[3]);
    document.scene().getChild(0)->setNodeMask(0);
    const Picture empty = draw(StandardView::Front, true);
    EXPECT_EQ(1u, empty.colors());
}

TEST_F(ShownScenes, NothingOfItChangesTheModel)
{
    add(ball({-3, 0, 0}, 1));
    add(ball({3, 0, 0}, 1));
    const std::string before = vfTest::digestOf(document.getModelScene());
    const unsigned int parents = document.scene().getNumParents();
    style.drawMode = vfScene::DrawMode::Wireframe;
    style.isFlat = style.cullsBackFaces = style.showsGrid = style.showsAxes = style.showsBoxes = true;
    style.showsTextures = style.showsVertexColors = style.isAntialiased = style.lightFollowsCamera = false;
    style.sections[1].isOn = true;
    draw();
    EXPECT_EQ(before, vfTest::digestOf(document.getModelScene()));
    EXPECT_EQ(parents, document.scene().getNumParents());
    EXPECT_FALSE(document.isModified());
}

TEST_F(ShownScenes, OnTheTurntableAllOfTheModelStaysInThePicture)
{
    add(quad({-6, 0.5f, -1}, {12, 0, 0}, {0, 0, 2})); // far longer than it is high
    ShownScene scene(document.getModelScene());
    scene.setStyle(style);
    const vfScene::LookAt direction =
        vfScene::placeCamera(document.scene(), StandardView::FrontRight, 1).lookAt;
    std::set<osg::Vec3d> places;
    for (const Projection projection : {Projection::Perspective, Projection::Orthographic}) {
        for (int i = 0; i < 8; ++i) {
            const CameraPlacement camera =
                vfScene::placeOnTurntable(document.scene(), direction, i / 8.0, 1, projection);
            for (const double x : {-6.0, 6.0}) {
                for (const double z : {-1.0, 1.0}) {
                    const osg::Vec3d seen = osg::Vec3d(x, 0.5, z) * camera.view * camera.projection;
                    EXPECT_GE(1, std::fabs(seen.x())) << i;
                    EXPECT_GE(1, std::fabs(seen.y())) << i;
                }
            }
            places.insert(camera.lookAt.eye);
            EXPECT_NEAR(direction.up.z() > 0 ? 1 : -1, camera.lookAt.up.z() > 0 ? 1 : -1, 1e-9);
        }
    }
    EXPECT_EQ(16u, places.size());
    // It turns against the clock, seen from above.
    const CameraPlacement start =
        vfScene::placeOnTurntable(document.scene(), direction, 0, 1, Projection::Perspective);
    const CameraPlacement next =
        vfScene::placeOnTurntable(document.scene(), direction, 0.1, 1, Projection::Perspective);
    EXPECT_LT(0, (start.lookAt.eye ^ next.lookAt.eye).z());
}
