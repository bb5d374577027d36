// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

namespace vfScene {

/// Has objects of OpenSceneGraph made from now on keep room for a few graphics contexts, and take more when they are drawn in
/// more. They keep it for 32 otherwise, which is a quarter of the memory of a model of many small parts, and a third of the
/// time to make them. To be called before there are any.
VFSCENE_EXPORT void expectFewGraphicsContexts();

} // namespace vfScene
