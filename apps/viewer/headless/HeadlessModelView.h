// SPDX-License-Identifier: MIT
#pragma once

#include "model/ModelView.h"

#include <velaforge/documents/View.h>
#include <velaforge/headless/OffscreenRenderer.h>
#include <velaforge/headless/SnapshotSource.h>

namespace vfViewer {

/// Shows a model to nobody, but can be asked for a picture.
class HeadlessModelView : public vfApplication::View, public ModelView, public vfApplication::SnapshotSource
{
public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override;
    bool onCreate(vfApplication::Document* document, const vfBase::Options& options) override;
    osg::ref_ptr<osg::Image> takeSnapshot(int width, int height, vfBase::VfString& reason) override;

    void lookFrom(StandardView view) override;

    /// Nothing: every picture shows the whole model.
    void fit() override {}

private:
    StandardView m_view = StandardView::Front;
    vfApplication::OffscreenRenderer m_renderer;
};

} // namespace vfViewer
