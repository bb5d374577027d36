// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Image>
#include <osg/StateSet>
#include <osg/ref_ptr>

#include <map>
#include <string>
#include <vector>

struct aiMaterial;
struct aiScene;
struct aiTexture;

namespace vfViewer {

/// The materials of a scene, as they are drawn.
class AssimpMaterials
{
public:
    /// @param directory  in which the file lies
    AssimpMaterials(const aiScene& scene, const std::string& directory);

    /// @return null for a number that there is not
    osg::StateSet* find(unsigned int number);

    /// @return the set of texture places that the material uses
    unsigned int textureChannel(unsigned int number) const;

private:
    osg::ref_ptr<osg::StateSet> make(const aiMaterial& material);
    void addTexture(osg::StateSet& state, const aiMaterial& material, bool& isTransparent);
    osg::ref_ptr<osg::Image> readImage(const std::string& name);
    static osg::ref_ptr<osg::Image> decode(const aiTexture& texture);

    const aiScene& m_scene;
    std::string m_directory;
    std::vector<osg::ref_ptr<osg::StateSet>> m_states;
    std::map<std::string, osg::ref_ptr<osg::Image>> m_images;
};

} // namespace vfViewer
