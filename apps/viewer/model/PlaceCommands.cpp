// SPDX-License-Identifier: MIT
// The commands of cameras to come back to.
#include "model/ModelDocument.h"
#include "model/ModelView.h"
#include "model/NamedCommands.h"

#include <velaforge/base/Printable.h>
#include <velaforge/base/StringList.h>
#include <velaforge/scene/CameraBookmarks.h>

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

namespace vfViewer {

namespace {

using vfBase::VfVariant;

std::vector<vfScene::CameraBookmark> placesOf(const ModelDocument& document)
{
    return vfScene::CameraBookmarks::instance().of(document.getFilename().str());
}

/// A command of a place that has been kept, named by name or number.
struct PlaceCommand : DirectCommand
{
    PlaceCommand()
    {
        vfBase::StringList names;
        if (const ModelDocument* document = activeModel()) {
            for (const vfScene::CameraBookmark& place : placesOf(*document))
                names.append(place.name.c_str());
        }
        getProperties()["enabled"] = VfVariant(names.size() > 0);
        getProperties()["prompt"] = VfVariant("Camera place:");
        getProperties()["promptKind"] = VfVariant("choice");
        getProperties()["promptChoices"] = VfVariant(names);
    }

    bool carryOut(ModelDocument& document, const VfVariant& argument) override
    {
        const std::string text = argument.toString().str();
        const std::vector<vfScene::CameraBookmark> places = placesOf(document);
        auto found =
            std::find_if(places.begin(), places.end(),
                         [&text](const vfScene::CameraBookmark& place) { return place.name == text; });
        const std::vector<double> number = readNumbers(text);
        if (found == places.end() && number.size() == 1 && number[0] >= 1 &&
            number[0] <= static_cast<double>(places.size()))
            found = places.begin() + (static_cast<std::ptrdiff_t>(number[0]) - 1);
        if (found != places.end())
            return carryOut(document, *found);
        return failed(document, places.empty() ? "no camera place is kept of this file"
                                               : "there is no camera place of that name or number");
    }

    virtual bool carryOut(ModelDocument& document, const vfScene::CameraBookmark& place) = 0;
};

struct KeepPlace : DirectCommand
{
    KeepPlace()
    {
        getProperties()["prompt"] = VfVariant("Name of the camera place:");
        if (const ModelDocument* document = activeModel())
            getProperties()["promptValue"] = VfVariant(freeName(*document));
    }

    bool carryOut(ModelDocument& document, const VfVariant& argument) override
    {
        const ModelView* view = currentModelView(document);
        if (!view)
            return false;
        const std::string name = argument.toString().str();
        if (name.size() > vfScene::CameraBookmarks::longestName)
            return failed(document, "the name of a camera place may have " +
                                        std::to_string(vfScene::CameraBookmarks::longestName) + " bytes");
        const vfScene::CameraBookmark place = {name.empty() ? freeName(document) : name, view->getCamera(),
                                               view->getStyle().projection};
        return vfScene::CameraBookmarks::instance().keep(document.getFilename().str(), place) ||
               failed(document, "no more than " + std::to_string(vfScene::CameraBookmarks::mostBookmarks) +
                                    " camera places can be kept of a file");
    }

private:
    static std::string freeName(const ModelDocument& document)
    {
        const std::vector<vfScene::CameraBookmark> places = placesOf(document);
        for (std::size_t number = places.size() + 1;; ++number) {
            std::string name = std::to_string(number);
            if (std::none_of(places.begin(), places.end(),
                             [&name](const vfScene::CameraBookmark& place) { return place.name == name; }))
                return name;
        }
    }
};

struct GoToPlace : PlaceCommand
{
    using PlaceCommand::carryOut;
    bool carryOut(ModelDocument& document, const vfScene::CameraBookmark& place) override
    {
        ModelView* view = currentModelView(document);
        if (!view)
            return false;
        vfScene::ViewStyle style = view->getStyle();
        style.projection = place.projection;
        view->setStyle(style);
        view->setCamera(place.camera);
        return true;
    }
};

struct ForgetPlace : PlaceCommand
{
    using PlaceCommand::carryOut;
    bool carryOut(ModelDocument& document, const vfScene::CameraBookmark& place) override
    {
        return vfScene::CameraBookmarks::instance().forget(document.getFilename().str(), place.name);
    }
};

struct PrintPlaces : ScriptCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        for (const vfScene::CameraBookmark& place : placesOf(document))
            std::cout << vfBase::printable(place.name) << std::endl;
        return true;
    }
};

const CommandRecord<KeepPlace> keepPlace("KeepPlace", "vfViewer::KeepPlace");
const CommandRecord<GoToPlace> goToPlace("GoToPlace", "vfViewer::GoToPlace");
const CommandRecord<ForgetPlace> forgetPlace("ForgetPlace", "vfViewer::ForgetPlace");
const CommandRecord<PrintPlaces> printPlaces("PrintPlaces", "vfViewer::PrintPlaces");

} // namespace

} // namespace vfViewer
