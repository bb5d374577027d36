// SPDX-License-Identifier: MIT
#include "model/FirstView.h"

#include "model/ModelDocument.h"
#include "model/ViewerSettings.h"

#include <optional>

namespace vfViewer {

namespace {

std::optional<StandardView> chosen;
bool wantsFileLamps = false;

} // namespace

StandardView firstViewFor(const vfApplication::Document& document)
{
    // A flat image is looked at straight on.
    const bool isImage = dynamic_cast<const ImageDocument*>(&document) != nullptr;
    const auto first = static_cast<StandardView>(ViewerSettings::instance().getFirstView());
    return chosen.value_or(isImage ? StandardView::Front : first);
}

void chooseFirstView(StandardView view)
{
    chosen = view;
}

ViewStyle firstStyle()
{
    ViewStyle style = ViewerSettings::instance().getFirstStyle();
    style.usesFileLamps = style.usesFileLamps || wantsFileLamps;
    return style;
}

void chooseFileLamps()
{
    wantsFileLamps = true;
}

} // namespace vfViewer
