// SPDX-License-Identifier: MIT
#pragma once

#include "model/Measurement.h"
#include "model/ViewStyle.h"

#include <osg/ClipNode>
#include <osg/Group>
#include <osg/LightSource>
#include <osg/Vec3d>
#include <osg/ref_ptr>

#include <unordered_map>
#include <vector>

namespace vfViewer {

class ModelScene;

/// The scene of a document as a view shows it: in the viewer's light, in the view's style, with what is drawn beside it.
/// The scene itself is not changed by any of that.
class ShownScene
{
public:
    explicit ShownScene(ModelScene& model);

    /// @return what is to be drawn; the same for life
    osg::Group& root() const { return *m_root; }

    const ViewStyle& getStyle() const { return m_style; }
    void setStyle(const ViewStyle& style);

    /// Marks a part; null for none.
    void setSelection(osg::Node* node);

    /// Marks what was measured, and the points that were picked for the next.
    void setMeasurements(const std::vector<Measurement>& measurements,
                         const std::vector<osg::Vec3d>& picked = {});

    /// Follows the model, which has changed.
    void update();

    /// Follows parts of the model that have moved by themselves. That alone moves none: drawing goes on no time.
    void follow();

    /// @return the node of the model that is drawn by @p node of this scene; null for what belongs to no model
    osg::Node* modelNode(osg::Node& node) const;

    /// @return whether a section plane takes that point of the scene away
    bool isCutAway(const osg::Vec3d& point) const;

private:
    void updateModel();
    void updateLamps();
    void updateFileLamps();
    void updateContrast();
    void updateState();
    void updateSections();
    void updateDecorations();

    osg::ref_ptr<ModelScene> m_model;
    ViewStyle m_style;
    osg::ref_ptr<osg::Group> m_root;
    osg::ref_ptr<osg::Group> m_lamps;
    osg::ref_ptr<osg::LightSource> m_contrast;
    osg::ref_ptr<osg::ClipNode> m_content; ///< the model, or its copy
    osg::ref_ptr<osg::Group> m_decorations;
    osg::ref_ptr<osg::Node> m_mark;
    osg::ref_ptr<osg::Group> m_measurements;
    std::unordered_map<const osg::Node*, osg::Node*> m_originals; ///< of the nodes of the copy
    std::vector<osg::Plane> m_planes;                             ///< what lies behind one is not drawn
};

} // namespace vfViewer
