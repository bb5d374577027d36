// SPDX-License-Identifier: MIT
#include "model/GraphicsContexts.h"

#include <osg/DisplaySettings>

namespace vfViewer {

void expectFewGraphicsContexts()
{
    constexpr unsigned int few = 2; // a window, and pictures beside it
    osg::DisplaySettings::instance()->setMaxNumberOfGraphicsContexts(few);
}

} // namespace vfViewer
