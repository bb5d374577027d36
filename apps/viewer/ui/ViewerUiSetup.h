// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/modules/MinimalUiSetup.h>

namespace vfViewer {

/// The menus and toolbars of the viewer itself; its modules add to them.
class ViewerUiSetup : public vfApplication::MinimalUiSetup
{
public:
    vfBase::StringList getDocumentViewTemplates() const override;
    void setupMenus(vfApplication::CommandItem* root) override;
    void setupToolbars(vfApplication::CommandItem* root) override;
};

} // namespace vfViewer
