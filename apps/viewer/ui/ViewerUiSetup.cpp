// SPDX-License-Identifier: MIT
#include "ui/ViewerUiSetup.h"

#include "ui/Menus.h"

#include <velaforge/base/StringList.h>
#include <velaforge/commands/CommandItem.h>

namespace vfViewer {

using vfApplication::CommandItem;

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
                           << "vfApplicationQt::ActionOpenRecent"
                           << "" // a separator
                           << "vfApplicationQt::ActionSave"
                           << "vfApplicationQt::ActionSaveAs"
                           << "vfApplicationQt::ActionRevert"
                           << ""
                           << "vfApplicationQt::ActionClose"
                           << "vfApplicationQt::ActionCloseAll"
                           << ""
                           << "vfApplicationQt::ActionExit";
    addMenu(root, "&Edit") << "vfApplicationQt::ActionUndo"
                           << "vfApplicationQt::ActionRedo"
                           << ""
                           << "vfApplicationQt::ActionShortcuts"
                           << "vfApplicationQt::ActionLanguage"
                           << "vfApplicationQt::ActionOptions";
    CommandItem view = addMenu(root, "&View");
    addItem(view, "vfViewer::Fit", "&Fit", "F", "zoom-fit-best");
    CommandItem from = addMenu(&view, "&Look from");
    addItem(from, "vfViewer::ViewFront", "&Front", "1", "view-front");
    addItem(from, "vfViewer::ViewBack", "&Back", "Ctrl+1", "view-back");
    addItem(from, "vfViewer::ViewLeft", "&Left", "Ctrl+3", "view-left");
    addItem(from, "vfViewer::ViewRight", "&Right", "3", "view-right");
    addItem(from, "vfViewer::ViewTop", "&Top", "7", "view-top");
    addItem(from, "vfViewer::ViewBottom", "B&ottom", "Ctrl+7", "view-bottom");
    addItem(from, "vfViewer::ViewFrontLeft", "Front left &corner", nullptr, "view-front-left");
    addItem(from, "vfViewer::ViewFrontRight", "Front right co&rner", "0", "view-front-right");
    addItem(from, "vfViewer::ViewBackRight", "Back right corn&er", nullptr, "view-back-right");
    addItem(from, "vfViewer::ViewBackLeft", "B&ack left corner", nullptr, "view-back-left");
    view << ""
         << "vfApplicationQt::ActionFullScreen"
         << "vfApplicationQt::ActionToolbars"
         << "vfApplicationQt::ActionDockWindows"
         << "vfApplicationQt::ActionResetLayout"
         << ""
         << "vfApplicationQt::ActionNewView"
         << "vfApplicationQt::ActionDocuments";
    addMenu(root, "&Help") << "vfApplicationQt::ActionCommands"
                           << "vfApplicationQt::CommandAbout";
}

void ViewerUiSetup::setupToolbars(CommandItem* root)
{
    addMenu(root, "Standard") << "vfApplicationQt::ActionOpen"
                              << "vfApplicationQt::ActionSave"
                              << ""
                              << "vfApplicationQt::ActionUndo"
                              << "vfApplicationQt::ActionRedo";
    addMenu(root, "Views") << "vfViewer::Fit"
                           << "vfViewer::ViewFront"
                           << "vfViewer::ViewRight"
                           << "vfViewer::ViewTop"
                           << "vfViewer::ViewFrontRight";
}

} // namespace vfViewer
