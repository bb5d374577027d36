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
    CommandItem file = addMenu(root, "&File");
    file << "vfApplicationQt::ActionOpen"
         << "vfApplicationQt::ActionOpenRecent"
         << "" // a separator
         << "vfApplicationQt::ActionSave"
         << "vfApplicationQt::ActionSaveAs"
         << "vfApplicationQt::ActionRevert"
         << "";
    addItem(file, "vfViewer::SavePicture", "Save &picture…", "Ctrl+P", nullptr);
    file << ""
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
    addItem(view, "vfViewer::FitSelection", "Fit &selection", "Shift+F", nullptr);
    CommandItem from = addMenu(&view, "&Look from");
    addItem(from, "vfViewer::ViewFront", "&Front", "1", "view-front");
    addItem(from, "vfViewer::ViewBack", "&Back", "Ctrl+1", "view-back");
    addItem(from, "vfViewer::ViewLeft", "&Left", "Ctrl+3", "view-left");
    addItem(from, "vfViewer::ViewRight", "&Right", "3", "view-right");
    addItem(from, "vfViewer::ViewTop", "&Top", "7", "view-top");
    addItem(from, "vfViewer::ViewBottom", "B&ottom", "Ctrl+7", "view-bottom");
    addItem(from, "vfViewer::ViewFrontLeft", "Front left &corner", nullptr, "view-front-left");
    addItem(from, "vfViewer::ViewFrontRight", "Front ri&ght corner", "0", "view-front-right");
    addItem(from, "vfViewer::ViewBackRight", "Back right corn&er", nullptr, "view-back-right");
    addItem(from, "vfViewer::ViewBackLeft", "B&ack left corner", nullptr, "view-back-left");
    CommandItem places = addMenu(&view, "Camera plac&es");
    addItem(places, "vfViewer::KeepPlace", "&Keep this place…", "Ctrl+K", nullptr);
    addItem(places, "vfViewer::GoToPlace", "&Go to a place…", "Ctrl+G", nullptr);
    addItem(places, "vfViewer::ForgetPlace", "&Forget a place…", nullptr, nullptr);
    addItem(view, "vfViewer::Perspective", "&Perspective", "P", nullptr);
    addItem(view, "vfViewer::Orthographic", "&Orthographic", "O", nullptr);
    view << "";
    addItem(view, "vfViewer::Surfaces", "S&urfaces", "Shift+W", nullptr);
    addItem(view, "vfViewer::Wireframe", "&Wireframe", "W", nullptr);
    addItem(view, "vfViewer::Points", "Po&ints", nullptr, nullptr);
    CommandItem shading = addMenu(&view, "S&hading");
    addItem(shading, "vfViewer::FlatShading", "&Flat", nullptr, nullptr);
    addItem(shading, "vfViewer::BackfaceCulling", "&Only front faces", nullptr, nullptr);
    addItem(shading, "vfViewer::Textures", "&Textures", "T", nullptr);
    addItem(shading, "vfViewer::VertexColors", "&Colours of points", nullptr, nullptr);
    addItem(shading, "vfViewer::Headlight", "&Light follows the camera", "L", nullptr);
    addItem(shading, "vfViewer::FileLamps", "Use the lamps of the f&ile", nullptr, nullptr);
    addItem(shading, "vfViewer::Antialiasing", "&Smooth edges", nullptr, nullptr);
    view << "";
    addItem(view, "vfViewer::Grid", "&Grid", "G", nullptr);
    addItem(view, "vfViewer::Axes", "&Axes", "A", nullptr);
    addItem(view, "vfViewer::BoundingBoxes", "&Bounding boxes", "B", nullptr);
    addItem(view, "vfViewer::Background", "Background…", nullptr, nullptr);
    CommandItem sections = addMenu(&view, "Se&ctions");
    addItem(sections, "vfViewer::SectionX", "Across &x", "Shift+X", nullptr);
    addItem(sections, "vfViewer::SectionY", "Across &y", "Shift+Y", nullptr);
    addItem(sections, "vfViewer::SectionZ", "Across &z", "Shift+Z", nullptr);
    view << "";
    CommandItem animation = addMenu(&view, "Ani&mation");
    addItem(animation, "vfViewer::PlayAnimation", "&Play animation", "Space", "media-playback-start");
    addItem(animation, "vfViewer::AnimationTime", "Animation &time…", nullptr, nullptr);
    addItem(animation, "vfViewer::Animation", "&Choose animation…", nullptr, nullptr);
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
