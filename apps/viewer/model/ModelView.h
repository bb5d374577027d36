// SPDX-License-Identifier: MIT
#pragma once

#include "model/StandardView.h"

#include <velaforge/documents/View.h>

namespace vfViewer {

/// A view of a model, whatever it is shown on.
class ModelView : public vfApplication::View
{
public:
    /// Looks at the whole model from there.
    virtual void lookFrom(StandardView view) = 0;
};

} // namespace vfViewer
