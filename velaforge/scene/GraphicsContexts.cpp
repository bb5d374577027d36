// SPDX-License-Identifier: MIT
#include <velaforge/scene/GraphicsContexts.h>

#include <osg/DisplaySettings>

namespace vfScene {

void expectFewGraphicsContexts()
{
    constexpr unsigned int few = 2; // a window, and pictures beside it
    osg::DisplaySettings::instance()->setMaxNumberOfGraphicsContexts(few);
}

} // namespace vfScene
