// SPDX-License-Identifier: MIT
#include <velaforge/scene/Emission.h>

#include <osg/TexEnv>

namespace vfScene {

namespace {

/// Without alpha, which adding would multiply into the surface.
osg::ref_ptr<osg::Image> multiplied(const osg::Image* image, const osg::Vec3& color)
{
    osg::ref_ptr<osg::Image> made = new osg::Image;
    const int width = image ? image->s() : 1;
    const int height = image ? image->t() : 1;
    made->allocateImage(width, height, 1, GL_RGB, GL_UNSIGNED_BYTE, 1);
    for (int row = 0; row < height; ++row) {
        unsigned char* target = made->data(0, static_cast<unsigned int>(row));
        for (int column = 0; column < width; ++column) {
            const osg::Vec4 pixel =
                image ? image->getColor(static_cast<unsigned int>(column), static_cast<unsigned int>(row))
                      : osg::Vec4(1, 1, 1, 1);
            for (int part = 0; part < 3; ++part)
                *target++ = static_cast<unsigned char>(
                    osg::clampBetween(pixel[part] * color[part], 0.0f, 1.0f) * 255 + 0.5f);
        }
    }
    if (image)
        made->setFileName(image->getFileName());
    return made;
}

} // namespace

osg::Texture2D* addEmission(osg::StateSet& state, const osg::Image* image, const osg::Vec3& color)
{
    if (color == osg::Vec3() || (image && (image->s() < 1 || image->t() < 1)))
        return nullptr;
    osg::Texture2D* texture = new osg::Texture2D(multiplied(image, color));
    texture->setWrap(osg::Texture::WRAP_S, osg::Texture::REPEAT);
    texture->setWrap(osg::Texture::WRAP_T, osg::Texture::REPEAT);
    texture->setResizeNonPowerOfTwoHint(false);
    state.setTextureAttributeAndModes(emissionUnit, texture);
    state.setTextureAttribute(emissionUnit, new osg::TexEnv(osg::TexEnv::ADD));
    return texture;
}

} // namespace vfScene
