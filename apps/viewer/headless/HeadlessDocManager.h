// SPDX-License-Identifier: MIT
#pragma once

#include "model/ViewerDocuments.h"

namespace vfViewer {

/// The viewer's document manager without a window, whose views can be drawn without one.
class HeadlessDocManager : public ViewerDocManager
{
public:
    HeadlessDocManager();

    /// Loads the graphics driver meanwhile, when a picture is wanted.
    void waitFor(vfIsolation::Job& job, bool isSaving) override;
};

} // namespace vfViewer
