// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/assimp/AssimpLamps.h>

#include <osg/LightSource>
#include <osg/Math>

#include <assimp/light.h>
#include <assimp/scene.h>

#include <algorithm>

namespace vfFormats {

namespace {

/// @param highest  the strongest part of a colour among all lamps
osg::Vec4 toOsg(const aiColor3D& color, float highest)
{
    const float scale = highest > 1 ? 1 / highest : 1;
    return {color.r * scale, color.g * scale, color.b * scale, 1};
}

osg::Vec3 toOsg(const aiVector3D& vector)
{
    return {vector.x, vector.y, vector.z};
}

void setShape(osg::Light& light, const aiLight& source)
{
    const osg::Vec3 direction = toOsg(source.mDirection);
    if (source.mType == aiLightSource_DIRECTIONAL) {
        light.setPosition(osg::Vec4(-direction, 0));
        return;
    }
    light.setPosition(osg::Vec4(toOsg(source.mPosition), 1));
    if (source.mType == aiLightSource_SPOT) {
        light.setDirection(direction);
        light.setSpotCutoff(std::clamp(osg::RadiansToDegrees(source.mAngleOuterCone) / 2, 0.0f, 90.0f));
    }
}

} // namespace

AssimpLamps::AssimpLamps(const aiScene& scene)
{
    // Some formats measure light in units of physics; what counts here is which lamp is the stronger.
    float highest = 0;
    for (unsigned int i = 0; i < scene.mNumLights; ++i) {
        const aiColor3D& color = scene.mLights[i]->mColorDiffuse;
        highest = std::max({highest, color.r, color.g, color.b});
    }
    for (unsigned int i = 0; i < scene.mNumLights; ++i) {
        const aiLight& source = *scene.mLights[i];
        const osg::ref_ptr<osg::Light> light = new osg::Light;
        light->setLightNum(static_cast<int>(i));
        light->setName(source.mName.C_Str());
        light->setAmbient(toOsg(source.mColorAmbient, highest));
        light->setDiffuse(toOsg(source.mColorDiffuse, highest));
        light->setSpecular(toOsg(source.mColorSpecular, highest));
        setShape(*light, source);
        m_lights.emplace(source.mName.C_Str(), light);
    }
}

void AssimpLamps::add(const aiNode& node, osg::Group& group) const
{
    const auto [begin, end] = m_lights.equal_range(node.mName.C_Str());
    for (auto found = begin; found != end; ++found) {
        const osg::ref_ptr<osg::LightSource> lamp = new osg::LightSource;
        lamp->setName(found->first);
        lamp->setLight(found->second);
        group.addChild(lamp);
    }
}

} // namespace vfFormats
