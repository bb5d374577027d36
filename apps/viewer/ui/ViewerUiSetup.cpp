// SPDX-License-Identifier: MIT
#include "ui/ViewerUiSetup.h"

#include <velaforge/base/StringList.h>
#include <velaforge/commands/CommandItem.h>

namespace vfViewer {

using vfApplication::CommandItem;

namespace {

CommandItem addMenu(CommandItem* parent, const char* name)
{
    CommandItem menu(parent);
    menu.setCommand(name, nullptr);
    return menu;
}

} // namespace

vfBase::StringList ViewerUiSetup::getDocumentViewTemplates() const
{
    vfBase::StringList names;
    names.append("3D models");
    names.append("Images");
    return names;
}

void ViewerUiSetup::setupMenus(CommandItem* root)
{
    addMenu(root, "&File") << "vfApplicationQt::ActionOpen"
                           << "vfViewer::Save"
                           << "vfViewer::SaveAs"
                           << "vfViewer::Revert"
                           << "vfViewer::Close"
                           << "" // a separator
                           << "vfApplicationQt::ActionExit";
    addMenu(root, "&Edit") << "vfViewer::Undo"
                           << "vfViewer::Redo";
    CommandItem view = addMenu(root, "&View");
    addMenu(&view, "&Look from") << "vfViewer::ViewFront"
                                 << "vfViewer::ViewBack"
                                 << "vfViewer::ViewLeft"
                                 << "vfViewer::ViewRight"
                                 << "vfViewer::ViewTop"
                                 << "vfViewer::ViewBottom"
                                 << "vfViewer::ViewFrontLeft"
                                 << "vfViewer::ViewFrontRight"
                                 << "vfViewer::ViewBackRight"
                                 << "vfViewer::ViewBackLeft";
    addMenu(root, "&Help") << "vfApplicationQt::CommandAbout";
}

void ViewerUiSetup::setupToolbars(CommandItem* root)
{
    addMenu(root, "Standard") << "vfApplicationQt::ActionOpen"
                              << "vfViewer::Save"
                              << ""
                              << "vfViewer::Undo"
                              << "vfViewer::Redo";
    addMenu(root, "Views") << "vfViewer::ViewFront"
                           << "vfViewer::ViewRight"
                           << "vfViewer::ViewTop"
                           << "vfViewer::ViewFrontRight";
}

} // namespace vfViewer
