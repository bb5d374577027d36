// SPDX-License-Identifier: MIT
#pragma once

#include "model/ModelView.h"

#include <velaforge/qt/QtView.h>
#include <velaforge/qt/QtViewport.h>
#include <velaforge/scene/ShownScene.h>

#include <QPointer>

#include <memory>
#include <optional>

namespace vfViewer {

class ModelDocument;
class ModelHand;

/// Shows a model in the window. A drag orbits, a click selects a part, a double click fits it into the view.
class QtModelView : public vfApplication::QtView, public ModelView
{
public:
    static const vfBase::ClassInfo s_classInfo;

    QtModelView();
    ~QtModelView() override;

    const vfBase::ClassInfo* getClassInfo() const override;

    /// The first time with a model it looks at it from the standard view that is set; the camera stays afterwards.
    void onUpdate(vfApplication::View* sender) override;
    void lookFrom(vfScene::StandardView view) override;
    void fit(osg::Node* part) override;
    vfScene::LookAt getCamera() const override;
    void setCamera(const vfScene::LookAt& camera) override;
    vfScene::ViewStyle getStyle() const override { return m_style; }
    void setStyle(const vfScene::ViewStyle& style) override;
    void follow() override;
    bool setTool(Tool tool) override;
    Tool getTool() const override;
    osg::ref_ptr<osg::Image> takePicture(const vfApplication::SnapshotFormat& format,
                                         vfBase::VfString& reason) override;

    /// Shows which part is selected, and the background as it is set.
    void redraw() override;

    /// @return null before there is a model
    vfApplication::QtViewport* getViewport() const { return m_viewport; }

protected:
    QWidget* createWidget(QWidget& parent) override;

private:
    ModelDocument& model() const;
    void makeViewport();
    void place();
    void take(const vfScene::CameraPlacement& camera);
    std::optional<vfApplication::QtViewport::Hit> pick(const QPointF& position) const;
    osg::Node* partOf(const vfApplication::QtViewport::Hit& hit) const;
    void approach(const QPointF& position);
    void select(const QPointF& position);

    QPointer<QWidget> m_place; ///< of the viewport
    QPointer<vfApplication::QtViewport> m_viewport;
    std::unique_ptr<vfScene::ShownScene> m_scene;
    std::unique_ptr<ModelHand> m_hand;
    vfScene::ViewStyle m_style;
    vfScene::StandardView m_standardView = vfScene::StandardView::Front;
    bool m_isPlaced = false;   ///< the camera has been placed since there is a model
    bool m_isStandard = false; ///< it stands where the standard view put it
    bool m_isApproached =
        false; ///< a double click has moved the camera, and its second click is still to come
};

} // namespace vfViewer
