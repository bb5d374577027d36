// SPDX-License-Identifier: MIT
#include "model/FirstView.h"

#include "model/ModelDocument.h"
#include "model/ViewerSettings.h"

#include <optional>

namespace vfViewer {

namespace {

std::optional<vfScene::StandardView> chosen;
bool wantsFileLamps = false;

} // namespace

vfScene::StandardView firstViewFor(const vfApplication::Document& document)
{
    // A flat image is looked at straight on.
    const bool isImage = dynamic_cast<const ImageDocument*>(&document) != nullptr;
    const auto first = static_cast<vfScene::StandardView>(ViewerSettings::instance().getFirstView());
    return chosen.value_or(isImage ? vfScene::StandardView::Front : first);
}

void chooseFirstView(vfScene::StandardView view)
{
    chosen = view;
}

vfScene::ViewStyle firstStyle()
{
    vfScene::ViewStyle style = ViewerSettings::instance().getFirstStyle();
    style.usesFileLamps = style.usesFileLamps || wantsFileLamps;
    return style;
}

void chooseFileLamps()
{
    wantsFileLamps = true;
}

} // namespace vfViewer
