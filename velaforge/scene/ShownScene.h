// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>
#include <velaforge/scene/Measurement.h>
#include <velaforge/scene/ViewStyle.h>

#include <osg/ClipNode>
#include <osg/Group>
#include <osg/LightSource>
#include <osg/Vec3d>
#include <osg/ref_ptr>

#include <unordered_map>
#include <vector>

namespace vfScene {

class ModelScene;

/// A model as a view shows it: with the view's lights, style, section planes and overlays. The model itself does not change.
class VFSCENE_EXPORT ShownScene
{
public:
    /// @param model  kept alive by this object
    explicit ShownScene(ModelScene& model);

    /// Returns the root to render; the same during this object's life.
    osg::Group& root() const { return *m_root; }

    /// Returns the style.
    const ViewStyle& getStyle() const { return m_style; }
    /// Changes the style.
    void setStyle(const ViewStyle& style);

    /// Sets the background for a style without one of its own. The renderer draws it; here it decides about the colour of
    /// lines and points without a colour.
    void setBackground(const Background& background);
    /// Returns the background of the style, otherwise that of setBackground().
    Background getBackground() const { return m_style.background.value_or(m_background); }

    /// Highlights a part.
    /// @param node  in the model; null for none
    void setSelection(osg::Node* node);

    /// Draws measurements.
    /// @param measurements  the finished ones
    /// @param picked        points of the one that the user is making
    void setMeasurements(const std::vector<Measurement>& measurements,
                         const std::vector<osg::Vec3d>& picked = {});

    /// Updates everything after a change of the model.
    void update();

    /// Updates what depends on positions after an animation moved parts. Rendering alone moves none.
    void follow();

    /// Returns the node of the model that a rendered node stands for; null for overlays.
    osg::Node* modelNode(osg::Node& node) const;

    /// Returns whether a section plane cuts a point away.
    /// @param point  in the coordinates of the scene
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
    Background m_background;
    osg::ref_ptr<osg::Group> m_root;
    osg::ref_ptr<osg::Group> m_lamps;
    osg::ref_ptr<osg::LightSource> m_contrast;
    osg::ref_ptr<osg::ClipNode> m_content; ///< the model, or its copy
    osg::ref_ptr<osg::Group> m_decorations;
    osg::ref_ptr<osg::Node> m_mark;
    osg::ref_ptr<osg::Group> m_measurements;
    std::unordered_map<const osg::Node*, osg::Node*> m_originals; ///< of the nodes of the copy
    std::vector<osg::Plane> m_planes;                             ///< points behind one are not drawn
};

} // namespace vfScene
