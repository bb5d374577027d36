// SPDX-License-Identifier: MIT
#include <velaforge/scene/MirrorCallback.h>

#include <osg/FrontFace>
#include <osg/RenderInfo>
#include <osg/State>

namespace vfScene {

namespace {

bool isMirrored(const osg::Matrix& matrix)
{
    const osg::Vec3d x(matrix(0, 0), matrix(0, 1), matrix(0, 2));
    const osg::Vec3d y(matrix(1, 0), matrix(1, 1), matrix(1, 2));
    const osg::Vec3d z(matrix(2, 0), matrix(2, 1), matrix(2, 2));
    return (x ^ y) * z < 0;
}

/// To files it is the plain callback of OpenSceneGraph, which draws as if there were none.
class MirrorCallback : public osg::Drawable::DrawCallback
{
public:
    void drawImplementation(osg::RenderInfo& renderInfo, const osg::Drawable* drawable) const override
    {
        osg::State& state = *renderInfo.getState();
        if (!isMirrored(state.getModelViewMatrix())) {
            drawable->drawImplementation(renderInfo);
            return;
        }
        const auto* set = dynamic_cast<const osg::FrontFace*>(
            state.getLastAppliedAttribute(osg::StateAttribute::FRONTFACE));
        const bool isReversed = set && set->getMode() == osg::FrontFace::CLOCKWISE;
        (isReversed ? m_plain : m_reversed)->apply(state);
        drawable->drawImplementation(renderInfo);
        (isReversed ? m_reversed : m_plain)->apply(state);
    }

private:
    osg::ref_ptr<osg::FrontFace> m_plain = new osg::FrontFace(osg::FrontFace::COUNTER_CLOCKWISE);
    osg::ref_ptr<osg::FrontFace> m_reversed = new osg::FrontFace(osg::FrontFace::CLOCKWISE);
};

} // namespace

osg::ref_ptr<osg::Drawable::DrawCallback> mirrorCallback()
{
    static const osg::ref_ptr<osg::Drawable::DrawCallback> shared = new MirrorCallback;
    return shared;
}

} // namespace vfScene
