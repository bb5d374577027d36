// SPDX-License-Identifier: MIT
#pragma once

#include "model/StandardView.h"

namespace vfViewer {

/// What a view of a model is, beside a View, whatever it is shown on.
class ModelView
{
public:
    virtual ~ModelView() = default;

    /// Looks at the whole model from there.
    virtual void lookFrom(StandardView view) = 0;

    /// Looks at the whole model from where it looks now.
    virtual void fit() = 0;
};

} // namespace vfViewer
