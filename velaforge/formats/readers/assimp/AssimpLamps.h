// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Group>
#include <osg/Light>
#include <osg/ref_ptr>

#include <map>
#include <string>

struct aiNode;
struct aiScene;

namespace vfFormats {

/// The lamps of a file, which a view shows where the user asks for them.
class AssimpLamps
{
public:
    explicit AssimpLamps(const aiScene& scene);

    /// Adds the lamps that stand in a node.
    void add(const aiNode& node, osg::Group& group) const;

private:
    std::multimap<std::string, osg::ref_ptr<osg::Light>> m_lights; ///< by the names of their nodes
};

} // namespace vfFormats
