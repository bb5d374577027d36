// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <osg/Image>
#include <osg/NodeVisitor>
#include <osg/ref_ptr>

#include <unordered_set>
#include <vector>

namespace vfFormats {

/// Finds the images of the textures in a scene, each once.
class VFFORMATS_EXPORT FindImages : public osg::NodeVisitor
{
public:
    FindImages();

    void apply(osg::Node& node) override;

    std::vector<osg::ref_ptr<osg::Image>> images;

private:
    std::unordered_set<const osg::Referenced*> m_seen;
};

} // namespace vfFormats
