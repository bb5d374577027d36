// SPDX-License-Identifier: MIT
#pragma once

#include "model/ModelView.h"

#include <velaforge/documents/View.h>
#include <velaforge/headless/SnapshotSource.h>
#include <velaforge/scene/ShownScene.h>

#include <memory>
#include <optional>

namespace vfViewer {

class ModelDocument;

/// A view without a window that renders pictures of a model.
class HeadlessModelView : public vfApplication::View, public ModelView, public vfApplication::SnapshotSource
{
public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override;
    bool onCreate(vfApplication::Document* document, const vfBase::Options& options) override;
    osg::ref_ptr<osg::Image> takeSnapshot(const vfApplication::SnapshotFormat& format,
                                          vfBase::VfString& reason) override;

    void lookFrom(vfScene::StandardView view) override;
    void fit(osg::Node* part) override;

    /// @return where it looks from in a picture of the usual size
    vfScene::LookAt getCamera() const override;
    void setCamera(const vfScene::LookAt& camera) override;
    vfScene::ViewStyle getStyle() const override { return m_style; }
    void setStyle(const vfScene::ViewStyle& style) override { m_style = style; }
    void follow() override {}
    bool setTool(Tool) override { return false; }
    Tool getTool() const override { return Tool::Select; }
    osg::ref_ptr<osg::Image> takePicture(const vfApplication::SnapshotFormat& format,
                                         vfBase::VfString& reason) override;

private:
    ModelDocument& model() const;
    vfScene::CameraPlacement placement(double aspect) const;

    vfScene::StandardView m_view = vfScene::StandardView::Front;
    std::optional<vfScene::LookAt> m_camera; ///< in place of the standard view
    std::optional<vfScene::LookAt> m_fitted; ///< the direction in which a part is looked at
    osg::ref_ptr<osg::Node> m_part;          ///< that part, null for the whole model
    vfScene::ViewStyle m_style;
};

} // namespace vfViewer
