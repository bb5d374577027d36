// SPDX-License-Identifier: MIT
#pragma once

#include "model/ModelView.h"
#include "model/ShownScene.h"

#include <velaforge/documents/View.h>
#include <velaforge/headless/SnapshotSource.h>

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

    void lookFrom(StandardView view) override;
    void fit(osg::Node* part) override;

    /// @return where it looks from in a picture of the usual size
    LookAt getCamera() const override;
    void setCamera(const LookAt& camera) override;
    ViewStyle getStyle() const override { return m_style; }
    void setStyle(const ViewStyle& style) override { m_style = style; }
    void follow() override {}
    bool setTool(Tool) override { return false; }
    Tool getTool() const override { return Tool::Select; }
    osg::ref_ptr<osg::Image> takePicture(const vfApplication::SnapshotFormat& format,
                                         vfBase::VfString& reason) override;

private:
    ModelDocument& model() const;
    CameraPlacement placement(double aspect) const;

    StandardView m_view = StandardView::Front;
    std::optional<LookAt> m_camera; ///< in place of the standard view
    std::optional<LookAt> m_fitted; ///< the direction in which a part is looked at
    osg::ref_ptr<osg::Node> m_part; ///< that part, null for the whole model
    ViewStyle m_style;
};

} // namespace vfViewer
