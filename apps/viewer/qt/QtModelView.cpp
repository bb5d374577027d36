// SPDX-License-Identifier: MIT
#include "qt/QtModelView.h"

#include "model/FirstView.h"
#include "model/LitScene.h"
#include "model/ModelDocument.h"
#include "model/ViewerSettings.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtViewport.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Depth>
#include <osg/Geometry>
#include <osg/LineWidth>
#include <osg/MatrixTransform>

#include <QVBoxLayout>

#include <algorithm>

namespace vfViewer {

namespace {

vfBase::VfObject* createView()
{
    return new QtModelView;
}

/// @return the edges of a node's box, wherever it hangs; null for a node without a point
osg::ref_ptr<osg::Node> makeMark(osg::Node& node)
{
    const osg::NodePathList paths = node.getParentalNodePaths();
    osg::ComputeBoundsVisitor visitor;
    node.accept(visitor);
    const osg::BoundingBox box = visitor.getBoundingBox();
    if (!box.valid() || paths.empty())
        return nullptr;
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
    const osg::ref_ptr<osg::Geometry> lines = new osg::Geometry;
    lines->setName("selection");
    lines->setVertexArray(corners);
    const osg::ref_ptr<osg::Vec4Array> color = new osg::Vec4Array(osg::Array::BIND_OVERALL);
    color->push_back({1.0f, 0.55f, 0.0f, 1.0f});
    lines->setColorArray(color);
    lines->addPrimitiveSet(edges);
    osg::StateSet* state = lines->getOrCreateStateSet();
    state->setMode(GL_LIGHTING, osg::StateAttribute::OFF | osg::StateAttribute::PROTECTED);
    state->setAttribute(new osg::LineWidth(2));
    // What lies behind the model is still to be seen, as it is the outline of a whole.
    state->setAttributeAndModes(new osg::Depth(osg::Depth::ALWAYS, 0, 1, false));
    state->setRenderBinDetails(100, "RenderBin");
    const osg::ref_ptr<osg::Group> marks = new osg::Group;
    for (const osg::NodePath& path : paths) {
        // The box is in the coordinates of what the node hangs in.
        const osg::NodePath above(path.begin(), path.end() - 1);
        const osg::ref_ptr<osg::MatrixTransform> place =
            new osg::MatrixTransform(osg::computeLocalToWorld(above));
        place->addChild(lines);
        marks->addChild(place);
    }
    return marks;
}

} // namespace

const vfBase::ClassInfo QtModelView::s_classInfo("vfViewer", "QtModelView", "vfViewer::QtModelView",
                                                 &View::s_classInfo, nullptr, sizeof(QtModelView),
                                                 createView);

const vfBase::ClassInfo* QtModelView::getClassInfo() const
{
    return &s_classInfo;
}

ModelDocument& QtModelView::model() const
{
    return dynamic_cast<ModelDocument&>(*getDocument());
}

QWidget* QtModelView::createWidget(QWidget& parent)
{
    if (!dynamic_cast<ModelDocument*>(getDocument()))
        return nullptr;
    // While the model is read there is nothing to draw, and the window is to have its hands free.
    m_place = new QWidget(&parent);
    auto* layout = new QVBoxLayout(m_place);
    layout->setContentsMargins(0, 0, 0, 0);
    if (model().scene().getNumChildren() > 0)
        makeViewport();
    return m_place;
}

void QtModelView::makeViewport()
{
    m_viewport = new vfApplication::QtViewport(m_place);
    m_viewport->setObjectName(QStringLiteral("model"));
    m_place->layout()->addWidget(m_viewport);
    m_place->setFocusProxy(m_viewport);
    m_scene = makeLitScene(model().scene());
    m_viewport->setScene(m_scene);
    QObject::connect(m_viewport, &vfApplication::QtViewport::cameraMoved, m_viewport,
                     [this] { m_isStandard = false; });
    QObject::connect(m_viewport, &vfApplication::QtViewport::aspectChanged, m_viewport, [this] {
        if (m_isStandard)
            place();
    });
    QObject::connect(m_viewport, &vfApplication::QtViewport::clicked, m_viewport,
                     [this](const QPointF& position, Qt::MouseButton button) {
                         if (button == Qt::LeftButton)
                             select(position);
                     });
    redraw();
}

void QtModelView::onUpdate(View*)
{
    if (!m_viewport && m_place && model().scene().getNumChildren() > 0)
        makeViewport();
    if (!m_isPlaced && m_viewport && model().scene().getNumChildren() > 0)
        lookFrom(firstViewFor(*getDocument()));
    redraw();
}

void QtModelView::redraw()
{
    if (!m_viewport)
        return;
    const ViewerSettings& settings = ViewerSettings::instance();
    m_viewport->setBackground(settings.getBackgroundTop(), settings.getBackgroundBottom());
    showSelection();
    m_viewport->update();
}

void QtModelView::showSelection()
{
    if (m_mark)
        m_scene->removeChild(m_mark);
    osg::Node* selected = model().getSelection();
    m_mark = selected ? makeMark(*selected) : nullptr;
    if (m_mark)
        m_scene->addChild(m_mark);
}

void QtModelView::lookFrom(StandardView view)
{
    if (!m_viewport)
        return;
    m_standardView = view;
    m_isStandard = true;
    m_isPlaced = true;
    place();
}

void QtModelView::place()
{
    const CameraPlacement camera = placeCamera(model().scene(), m_standardView, m_viewport->getAspect());
    osg::Vec3d eye;
    osg::Vec3d ahead;
    osg::Vec3d up;
    camera.view.getLookAt(eye, ahead, up);
    // The user turns about the middle of the model, or of what is seen of it.
    const osg::Vec3d middle = model().scene().getBound().center();
    const double distance = std::max((middle - eye) * (ahead - eye), 1e-6);
    m_viewport->lookAt(eye, eye + (ahead - eye) * distance, up);
}

void QtModelView::fit()
{
    if (!m_viewport)
        return;
    m_isStandard = false;
    m_viewport->fit();
}

void QtModelView::select(const QPointF& position)
{
    const auto hit = m_viewport->pick(position);
    osg::Node* picked = nullptr;
    if (hit) {
        const auto parts = model().getModelScene().parts();
        for (osg::Node* node : hit->path) {
            if (std::find(parts.begin(), parts.end(), node) != parts.end())
                picked = node;
        }
    }
    model().setSelection(picked);
    getDocument()->updateAllViews(nullptr);
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->updateActions();
}

} // namespace vfViewer
