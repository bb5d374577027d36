// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Array>
#include <osg/Geometry>
#include <osg/Image>
#include <osg/NodeVisitor>
#include <osg/ref_ptr>

#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace vfViewer {

/// Finds the arrays, indices and images of a scene in its order, each once: the same order in the copy of a scene as in the
/// scene. Arrays in the shapes of bones and morphs are not found.
class FindBlocks : public osg::NodeVisitor
{
public:
    FindBlocks();

    void apply(osg::Node& node) override;
    void apply(osg::Geometry& geometry) override;

    std::vector<osg::ref_ptr<osg::BufferData>> arrays; ///< arrays and indices
    std::vector<osg::ref_ptr<osg::Image>> images;

private:
    void add(osg::StateSet* state);
    void add(osg::BufferData& data);

    std::unordered_set<const osg::Referenced*> m_seen;
};

/// Puts empty arrays and images of one pixel into a scene in the place of others, which stay as they are.
///
/// Changes the geometries and textures of the scene, so no view may show them.
class DetachBlocks : public osg::NodeVisitor
{
public:
    DetachBlocks();

    /// Has an array be detached.
    void add(osg::BufferData& data);
    void add(osg::Image& image);

    /// Has an image be removed from its textures.
    void drop(osg::Image& image) { m_others[&image] = nullptr; }

    void apply(osg::Node& node) override;
    void apply(osg::Geometry& geometry) override;

private:
    void detach(osg::StateSet* state);

    std::unordered_map<const osg::Referenced*, osg::ref_ptr<osg::Object>> m_others;
    std::unordered_set<const osg::Referenced*> m_seen;
};

} // namespace vfViewer
