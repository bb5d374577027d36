// SPDX-License-Identifier: MIT
#include <velaforge/scene/Overlays.h>

#include <osg/BlendFunc>
#include <osg/Camera>
#include <osg/ComputeBoundsVisitor>
#include <osg/Depth>
#include <osg/Geometry>
#include <osg/LineWidth>
#include <osg/MatrixTransform>
#include <osg/NodeCallback>
#include <osg/Point>
#include <osg/Viewport>
#include <osgUtil/CullVisitor>

#include <algorithm>
#include <cmath>

namespace vfScene {

namespace {

/// Points with their colours, joined two by two.
osg::ref_ptr<osg::Geometry> makeGeometry(osg::Vec3Array* points, osg::Vec4Array* colors,
                                         osg::PrimitiveSet* primitives)
{
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setUseDisplayList(false);
    geometry->setVertexArray(points);
    geometry->setColorArray(colors);
    geometry->addPrimitiveSet(primitives);
    osg::StateSet* state = geometry->getOrCreateStateSet();
    state->setMode(GL_LIGHTING, osg::StateAttribute::OFF | osg::StateAttribute::PROTECTED);
    return geometry;
}

osg::ref_ptr<osg::Vec4Array> oneColor(const osg::Vec4& color)
{
    osg::ref_ptr<osg::Vec4Array> colors = new osg::Vec4Array(osg::Array::BIND_OVERALL);
    colors->push_back(color);
    return colors;
}

/// What lies behind the model is still to be seen.
void showThroughEverything(osg::StateSet& state)
{
    state.setAttributeAndModes(new osg::Depth(osg::Depth::ALWAYS, 0, 1, false));
    state.setRenderBinDetails(100, "RenderBin");
}

/// @return the lines of a box, each drawn once
osg::ref_ptr<osg::Geometry> boxLines(const osg::BoundingBox& box, const osg::Vec4& color)
{
    const osg::ref_ptr<osg::Vec3Array> corners = new osg::Vec3Array;
    const osg::ref_ptr<osg::DrawElementsUByte> edges = new osg::DrawElementsUByte(GL_LINES);
    for (unsigned int i = 0; i < 8; ++i) {
        corners->push_back(box.corner(i));
        for (const unsigned int bit : {1u, 2u, 4u}) {
            if (i & bit)
                continue;
            edges->push_back(static_cast<unsigned char>(i));
            edges->push_back(static_cast<unsigned char>(i | bit));
        }
    }
    return makeGeometry(corners, oneColor(color), edges);
}

/// Turns what hangs below as the camera is turned, and keeps it in the corner of the picture.
class CornerCallback : public osg::NodeCallback
{
public:
    CornerCallback(osg::Camera& corner, osg::MatrixTransform& turned) : m_corner(&corner), m_turned(&turned)
    {}

    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override
    {
        if (osgUtil::CullVisitor* cull = visitor->asCullVisitor()) {
            const osg::Viewport* picture = cull->getViewport();
            const double width = picture ? picture->width() : 1;
            const double height = picture ? picture->height() : 1;
            const double size = 0.06 * std::min(width, height);
            osg::Matrixd turn = *cull->getModelViewMatrix();
            turn.setTrans(0, 0, 0);
            turn.postMultScale(osg::Vec3d(size, size, size));
            turn.postMultTranslate(osg::Vec3d(1.6 * size, 1.6 * size, 0));
            m_turned->setMatrix(turn);
            m_corner->setProjectionMatrixAsOrtho(0, width, 0, height, -2 * size, 2 * size);
        }
        traverse(node, visitor);
    }

private:
    osg::ref_ptr<osg::Camera> m_corner;
    osg::ref_ptr<osg::MatrixTransform> m_turned;
};

/// The strokes of X, Y and Z in a square around the origin, as pairs of points.
std::vector<osg::Vec2> strokesOf(int axis)
{
    switch (axis) {
    case 0:
        return {{-1, -1}, {1, 1}, {-1, 1}, {1, -1}};
    case 1:
        return {{-1, 1}, {0, 0}, {1, 1}, {0, 0}, {0, 0}, {0, -1}};
    default:
        return {{-1, 1}, {1, 1}, {1, 1}, {-1, -1}, {-1, -1}, {1, -1}};
    }
}

/// Has a letter face the eye, whichever way what it hangs in is turned. For the group above the letter: what stands above
/// that is known when it is asked.
class Upright : public osg::NodeCallback
{
public:
    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override
    {
        if (osgUtil::CullVisitor* cull = visitor->asCullVisitor()) {
            auto* letter = static_cast<osg::MatrixTransform*>(node->asGroup()->getChild(0));
            osg::Matrixd back = osg::Matrixd::inverse(*cull->getModelViewMatrix());
            const double scale = 1 / osg::Vec3d(back(0, 0), back(0, 1), back(0, 2)).length();
            back.preMultScale(osg::Vec3d(scale, scale, scale));
            back.setTrans(letter->getMatrix().getTrans());
            letter->setMatrix(back);
        }
        traverse(node, visitor);
    }
};

} // namespace

osg::ref_ptr<osg::Node> makeBox(osg::Node& node, const osg::Node& top, const osg::Vec4& color, float width)
{
    const osg::NodePathList paths = node.getParentalNodePaths(const_cast<osg::Node*>(&top));
    osg::ComputeBoundsVisitor visitor;
    node.accept(visitor);
    const osg::BoundingBox box = visitor.getBoundingBox();
    if (!box.valid() || paths.empty())
        return nullptr;
    const osg::ref_ptr<osg::Geometry> lines = boxLines(box, color);
    lines->getOrCreateStateSet()->setAttribute(new osg::LineWidth(width));
    showThroughEverything(*lines->getOrCreateStateSet());
    osg::ref_ptr<osg::Group> boxes = new osg::Group;
    for (const osg::NodePath& path : paths) {
        // The box is in the coordinates of what the node hangs in.
        const osg::NodePath above(path.begin(), path.end() - 1);
        const osg::ref_ptr<osg::MatrixTransform> place =
            new osg::MatrixTransform(osg::computeLocalToWorld(above));
        place->addChild(lines);
        boxes->addChild(place);
    }
    return boxes;
}

double gridSpacing(const osg::BoundingBox& box)
{
    if (!box.valid())
        return 0;
    const double extent =
        std::max(static_cast<double>(box.xMax() - box.xMin()), static_cast<double>(box.yMax() - box.yMin()));
    if (!(extent > 0) || !std::isfinite(extent))
        return 0;
    const double decade = std::pow(10.0, std::floor(std::log10(extent / 10)));
    for (const double step : {1.0, 2.0, 5.0}) {
        if (extent / (step * decade) <= 20)
            return step * decade;
    }
    return 10 * decade;
}

osg::ref_ptr<osg::Node> makeGrid(const osg::BoundingBox& box)
{
    const double spacing = gridSpacing(box);
    if (spacing <= 0)
        return nullptr;
    // A quarter more than the model on each side, in whole steps.
    const double border = 0.25 * std::max(box.xMax() - box.xMin(), box.yMax() - box.yMin());
    const auto below = [spacing](double value) { return std::floor(value / spacing); };
    const auto above = [spacing](double value) { return std::ceil(value / spacing); };
    const double left = below(box.xMin() - border);
    const double right = above(box.xMax() + border);
    const double front = below(box.yMin() - border);
    const double back = above(box.yMax() + border);
    const osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array;
    const osg::ref_ptr<osg::Vec4Array> colors = new osg::Vec4Array(osg::Array::BIND_PER_VERTEX);
    const float floor = box.zMin();
    const auto addLine = [&](double number, double x1, double y1, double x2, double y2) {
        const bool isStrong = std::fmod(std::fabs(number), 5.0) == 0;
        points->push_back(osg::Vec3(osg::Vec3d(x1 * spacing, y1 * spacing, floor)));
        points->push_back(osg::Vec3(osg::Vec3d(x2 * spacing, y2 * spacing, floor)));
        colors->insert(colors->end(), 2, osg::Vec4(0.25f, 0.27f, 0.30f, isStrong ? 0.7f : 0.3f));
    };
    const int columns = static_cast<int>(right - left);
    const int rows = static_cast<int>(back - front);
    for (int i = 0; i <= columns; ++i)
        addLine(left + i, left + i, front, left + i, back);
    for (int i = 0; i <= rows; ++i)
        addLine(front + i, left, front + i, right, front + i);
    osg::ref_ptr<osg::Geometry> grid =
        makeGeometry(points, colors, new osg::DrawArrays(GL_LINES, 0, static_cast<int>(points->size())));
    grid->setName("grid");
    osg::StateSet* state = grid->getOrCreateStateSet();
    state->setAttributeAndModes(new osg::BlendFunc);
    state->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    // A model stands on it: what lies in the plane itself is to win.
    state->setAttributeAndModes(new osg::Depth(osg::Depth::LESS, 0.0, 1.0, false));
    return grid;
}

osg::ref_ptr<osg::Node> makeAxes()
{
    const osg::ref_ptr<osg::MatrixTransform> turned = new osg::MatrixTransform;
    const osg::Vec3d directions[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    const osg::Vec4 colors[] = {{0.80f, 0.13f, 0.13f, 1}, {0.10f, 0.55f, 0.15f, 1}, {0.15f, 0.30f, 0.85f, 1}};
    for (int axis = 0; axis < 3; ++axis) {
        const osg::ref_ptr<osg::Vec3Array> line = new osg::Vec3Array;
        line->push_back({});
        line->push_back(osg::Vec3(directions[axis]));
        turned->addChild(makeGeometry(line, oneColor(colors[axis]), new osg::DrawArrays(GL_LINES, 0, 2)));
        const osg::ref_ptr<osg::Vec3Array> strokes = new osg::Vec3Array;
        for (const osg::Vec2& point : strokesOf(axis))
            strokes->push_back({0.11f * point.x(), 0.15f * point.y(), 0});
        const osg::ref_ptr<osg::MatrixTransform> letter =
            new osg::MatrixTransform(osg::Matrixd::translate(directions[axis] * 1.3));
        letter->addChild(makeGeometry(strokes, oneColor(colors[axis]),
                                      new osg::DrawArrays(GL_LINES, 0, static_cast<int>(strokes->size()))));
        const osg::ref_ptr<osg::Group> holder = new osg::Group;
        holder->addChild(letter);
        holder->addCullCallback(new Upright);
        turned->addChild(holder);
    }
    turned->setCullingActive(false);

    const osg::ref_ptr<osg::Camera> corner = new osg::Camera;
    corner->setReferenceFrame(osg::Transform::ABSOLUTE_RF);
    corner->setViewMatrix(osg::Matrixd());
    corner->setClearMask(0);
    corner->setRenderOrder(osg::Camera::NESTED_RENDER);
    corner->setComputeNearFarMode(osg::CullSettings::DO_NOT_COMPUTE_NEAR_FAR);
    corner->setAllowEventFocus(false);
    corner->setCullingActive(false);
    corner->addChild(turned);
    osg::StateSet* state = corner->getOrCreateStateSet();
    state->setAttribute(new osg::LineWidth(2));
    // In front of everything, and still in the right order among themselves.
    state->setAttributeAndModes(new osg::Depth(osg::Depth::LESS, 0, 0.001));
    state->setRenderBinDetails(110, "RenderBin");

    osg::ref_ptr<osg::Group> axes = new osg::Group;
    axes->setName("axes");
    axes->addChild(corner);
    axes->setCullingActive(false);
    axes->addCullCallback(new CornerCallback(*corner, *turned));
    return axes;
}

osg::ref_ptr<osg::Node> makeMarks(const std::vector<osg::Vec3d>& points, const std::vector<osg::Vec3d>& line,
                                  const osg::Vec4& color)
{
    // Large coordinates keep their precision in the matrix.
    const osg::Vec3d origin = points.empty() ? osg::Vec3d() : points.front();
    const osg::ref_ptr<osg::Vec3Array> places = new osg::Vec3Array;
    for (const std::vector<osg::Vec3d>* part : {&points, &line}) {
        for (const osg::Vec3d& point : *part)
            places->push_back(osg::Vec3(point - origin));
    }
    const int count = static_cast<int>(points.size());
    const osg::ref_ptr<osg::Geometry> marks =
        makeGeometry(places, oneColor(color), new osg::DrawArrays(GL_POINTS, 0, count));
    marks->addPrimitiveSet(new osg::DrawArrays(GL_LINE_STRIP, count, static_cast<int>(line.size())));
    osg::StateSet* state = marks->getOrCreateStateSet();
    state->setAttribute(new osg::LineWidth(2));
    state->setAttribute(new osg::Point(8));
    showThroughEverything(*state);
    osg::ref_ptr<osg::MatrixTransform> place = new osg::MatrixTransform(osg::Matrixd::translate(origin));
    place->addChild(marks);
    return place;
}

} // namespace vfScene
