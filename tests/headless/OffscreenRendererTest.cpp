// SPDX-License-Identifier: MIT
#include <velaforge/headless/OffscreenRenderer.h>

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Group>
#include <osg/PagedLOD>
#include <osgDB/DatabasePager>

#include <gmock/gmock.h>

using testing::HasSubstr;
using vfApplication::OffscreenRenderer;
using vfBase::VfString;

namespace {

/// A green unlit square from (0, 0) to (0.5, 1) in the plane z = 0.
osg::ref_ptr<osg::Geode> makeSquare()
{
    osg::ref_ptr<osg::Geometry> square = osg::createTexturedQuadGeometry({0, 0, 0}, {0.5f, 0, 0}, {0, 1, 0});
    const osg::ref_ptr<osg::Vec4Array> color = new osg::Vec4Array(osg::Array::BIND_OVERALL);
    color->push_back({0, 1, 0, 1});
    square->setColorArray(color);
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(square);
    geode->getOrCreateStateSet()->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    return geode;
}

osg::ref_ptr<osg::Image> render(OffscreenRenderer& renderer, osg::Node& scene, int width, int height,
                                VfString& reason)
{
    return renderer.render(
        scene, osg::Matrixd::lookAt(osg::Vec3d(0, 0, 5), osg::Vec3d(0, 0, 0), osg::Vec3d(0, 1, 0)),
        osg::Matrixd::ortho(-1, 1, -1, 1, 1, 10), width, height, reason);
}

} // namespace

TEST(OffscreenRenderer, DrawsEachPixelWhereItBelongsAlsoForOddSizes)
{
    OffscreenRenderer renderer;
    renderer.setBackground({1, 0, 0}, {0, 0, 1});
    const osg::ref_ptr<osg::Geode> square = makeSquare();
    for (const auto& [width, height] : {std::pair<int, int>(64, 64), {33, 77}, {1, 1}, {641, 3}}) {
        VfString reason;
        const osg::ref_ptr<osg::Image> image = render(renderer, *square, width, height, reason);
        ASSERT_TRUE(image) << reason.str();
        ASSERT_EQ(width, image->s());
        ASSERT_EQ(height, image->t());
        if (width < 30 || height < 30)
            continue;
        const auto at = [&image](double x, double y) {
            return image->getColor(static_cast<unsigned>((x + 1) / 2 * image->s()),
                                   static_cast<unsigned>((y + 1) / 2 * image->t()));
        };
        EXPECT_GT(at(0.25, 0.5).g(), 0.9);
        EXPECT_LT(at(0.75, 0.5).g(), 0.1);
        EXPECT_LT(at(0.25, -0.5).g(), 0.1);
        EXPECT_GT(at(-0.9, 0.95).r(), 0.9); // the background: red at the top
        EXPECT_GT(at(-0.9, -0.95).b(), 0.9);
        EXPECT_EQ(1, at(0, 0).a());
    }
    EXPECT_NE("", renderer.getRendererName());
}

TEST(OffscreenRenderer, SmoothsEdges)
{
    OffscreenRenderer renderer;
    renderer.setBackground({0, 0, 0}, {0, 0, 0});
    const osg::ref_ptr<osg::Geode> square = makeSquare();
    VfString reason;
    // The right edge of the square runs through the middle of pixels.
    const osg::ref_ptr<osg::Image> image = render(renderer, *square, 30, 30, reason);
    ASSERT_TRUE(image) << reason.str();
    bool isBetween = false;
    for (unsigned int x = 0; x < 30; ++x) {
        const float green = image->getColor(x, 25).g();
        isBetween = isBetween || (green > 0.2f && green < 0.8f);
    }
    EXPECT_TRUE(isBetween);
}

TEST(OffscreenRenderer, AnImpossibleSizeIsRefusedWithAReason)
{
    OffscreenRenderer renderer;
    const osg::ref_ptr<osg::Group> scene = new osg::Group;
    for (const auto& [width, height] : {std::pair<int, int>(0, 10), {10, -1}, {1000000, 10}}) {
        VfString reason;
        EXPECT_FALSE(render(renderer, *scene, width, height, reason));
        EXPECT_THAT(reason.str(), HasSubstr("pixels"));
    }
}

TEST(OffscreenRenderer, DrawsAgainAndAgainAndBesideAnother)
{
    const osg::ref_ptr<osg::Geode> square = makeSquare();
    OffscreenRenderer first;
    for (int i = 0; i < 20; ++i) {
        OffscreenRenderer second;
        VfString reason;
        ASSERT_TRUE(render(first, *square, 50, 40, reason)) << reason.str();
        ASSERT_TRUE(render(second, *square, 40 + i, 50, reason)) << reason.str();
    }
    EXPECT_EQ(1, square->referenceCount());
}

TEST(OffscreenRenderer, GivesNoReasonWhenNothingFailed)
{
    OffscreenRenderer renderer;
    const osg::ref_ptr<osg::Geode> square = makeSquare();
    VfString reason;
    EXPECT_TRUE(render(renderer, *square, 8, 8, reason));
    EXPECT_EQ("", reason);
}

TEST(OffscreenRenderer, FilesThatASceneNamesForLaterAreNotRead)
{
    /// Looks, after the scene has been culled, whether the pager was asked for something.
    struct Look : osg::NodeCallback
    {
        void operator()(osg::Node* node, osg::NodeVisitor* visitor) override
        {
            traverse(node, visitor);
            const auto* pager = dynamic_cast<osgDB::DatabasePager*>(visitor->getDatabaseRequestHandler());
            isAsked = isAsked || (pager && (pager->isRunning() || pager->getFileRequestListSize() > 0));
            ++calls;
        }
        bool isAsked = false;
        int calls = 0;
    };
    const osg::ref_ptr<osg::PagedLOD> paged = new osg::PagedLOD;
    paged->setFileName(0, "missing.osgt");
    paged->setRange(0, 0, 1e10f);
    paged->setCenter({0, 0, 0});
    paged->setRadius(1);
    const osg::ref_ptr<osg::Group> scene = new osg::Group;
    scene->addChild(makeSquare());
    scene->addChild(paged);
    const osg::ref_ptr<Look> look = new Look;
    scene->setCullCallback(look);
    OffscreenRenderer renderer;
    VfString reason;
    ASSERT_TRUE(render(renderer, *scene, 64, 64, reason)) << reason.str();
    EXPECT_GT(look->calls, 0);
    EXPECT_FALSE(look->isAsked);
}
