// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Image>
#include <osg/StateSet>
#include <osg/Vec2>
#include <osg/Vec4>
#include <osg/ref_ptr>

#include <map>
#include <string>
#include <vector>

struct aiMaterial;
struct aiScene;
struct aiTexture;

namespace vfFormats {

/// @return a colour of the format's linear kind as screens show it
osg::Vec4 toSrgb(const osg::Vec4& linear);

/// Which texture coordinates a texture takes, and how it lies on the surface.
struct TexturePlacement
{
    unsigned int channel = 0;
    osg::Vec2 offset;
    osg::Vec2 scale{1, 1};
    float rotation = 0; ///< in radians

    /// @return coordinates as they are in the picture, both with v upwards, as OpenGL counts
    osg::Vec2 transformed(const osg::Vec2& place) const;
};

/// What a material asks for in the meshes that have it.
struct MeshLook
{
    TexturePlacement base;
    TexturePlacement emission;
    bool hasEmission = false;          ///< there is a picture of what it emits
    osg::Vec4 colorFactor{1, 1, 1, 1}; ///< of the colours of vertices
    bool isLinear = false;             ///< as those colours and the factor are
    bool isOpaque = false;             ///< whatever alpha they have
};

/// The materials of a scene, as they are drawn.
class AssimpMaterials
{
public:
    /// @param directory  in which the file lies
    AssimpMaterials(const aiScene& scene, const std::string& directory);

    /// @param hasColors  whether the mesh has colours of vertices
    /// @return null for a number that there is not
    osg::StateSet* find(unsigned int number, bool hasColors);

    MeshLook lookOf(unsigned int number) const;

private:
    osg::ref_ptr<osg::StateSet> make(unsigned int number, bool hasColors);
    void addTexture(osg::StateSet& state, const aiMaterial& material, bool& isTransparent);
    /// @return what the surface emits everywhere
    osg::Vec4 addEmissionOf(osg::StateSet& state, const aiMaterial& material);
    osg::ref_ptr<osg::Image> readImage(const std::string& name);
    static osg::ref_ptr<osg::Image> decode(const aiTexture& texture);

    const aiScene& m_scene;
    std::string m_directory;
    std::vector<osg::ref_ptr<osg::StateSet>> m_states; ///< two of each: without and with colours of vertices
    std::map<std::string, osg::ref_ptr<osg::Image>> m_images;
};

} // namespace vfFormats
