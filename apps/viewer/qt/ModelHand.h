// SPDX-License-Identifier: MIT
#pragma once

#include "model/ModelView.h"

#include <velaforge/qt/QtViewport.h>
#include <velaforge/scene/SceneCommands.h>

#include <QObject>
#include <QPointF>

#include <functional>
#include <vector>

namespace vfViewer {

class ModelDocument;

/// What the hand on the mouse does to a model beside looking at it: picks points to be measured, and moves, turns and
/// scales the part that is selected. A drag is one step of the history, however long it takes.
class ModelHand : public QObject
{
    Q_OBJECT

public:
    using Hit = vfApplication::QtViewport::Hit;

    /// What lies under a position, with the node of the model that it belongs to.
    using Pick = std::function<std::optional<Hit>(const QPointF& position)>;

    /// @param viewport, document  are to outlive it
    /// @param pick  gives hits on the model, with the nodes of the model in their paths
    ModelHand(vfApplication::QtViewport& viewport, ModelDocument& document, Pick pick);
    ~ModelHand() override;

    Tool getTool() const { return m_tool; }
    void setTool(Tool tool);

    /// @return the points that were picked for the next measurement
    const std::vector<osg::Vec3d>& getPoints() const { return m_points; }

    /// Takes a click, if the tool wants it. @return false when it does not
    bool click(const QPointF& position);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool beginDrag(const QPointF& position);
    void drag(const QPointF& position);
    void endDrag(bool isKept);
    osg::Matrixd change(const QPointF& position) const;
    osg::Vec3d snapped(const Hit& hit) const;

    vfApplication::QtViewport& m_viewport;
    ModelDocument& m_document;
    Pick m_pick;
    Tool m_tool = Tool::Select;
    std::vector<osg::Vec3d> m_points;

    // Of the drag that is going on.
    osg::ref_ptr<osg::Node> m_dragged;
    osg::ref_ptr<vfScene::TransformCommand> m_preview;
    osg::Matrixd m_matrix;
    osg::Vec3d m_grip;   ///< where it was taken hold of
    osg::Vec3d m_middle; ///< of the part, as the grip in the scene
    QPointF m_start;
};

} // namespace vfViewer
