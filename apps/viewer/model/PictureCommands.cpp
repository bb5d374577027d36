// SPDX-License-Identifier: MIT
// The commands that keep what a view shows.
#include "model/ModelDocument.h"
#include "model/ModelView.h"
#include "model/NamedCommands.h"

#include <velaforge/headless/ImageFile.h>

namespace vfViewer {

namespace {

using vfApplication::SnapshotFormat;
using vfBase::VfString;
using vfBase::VfVariant;

/// Reads what a picture is to be like: a size, "transparent", or both with a comma between them.
bool readFormat(std::string text, SnapshotFormat& format)
{
    const std::string mark = "transparent";
    format.isTransparent =
        text.size() >= mark.size() && text.compare(text.size() - mark.size(), mark.size(), mark) == 0;
    if (format.isTransparent) {
        text.erase(text.size() - mark.size());
        if (text.empty())
            return true;
        if (text.back() != ',')
            return false;
        text.pop_back();
    }
    return vfApplication::parseImageSize(text, format.width, format.height);
}

/// Takes the format off the front of the argument, if one stands there.
/// @return false for one that is wrong
bool takeFormat(std::string& argument, SnapshotFormat& format)
{
    const std::size_t end = argument.find(' ');
    const std::string first = argument.substr(0, end);
    const std::size_t cross = first.find('x');
    const bool isSize = cross != std::string::npos && cross == first.find_first_not_of("0123456789");
    if (end == std::string::npos || (!isSize && first != "transparent"))
        return true;
    argument.erase(0, end + 1);
    return readFormat(first, format);
}

struct SavePicture : DirectCommand
{
    SavePicture()
    {
        getProperties()["prompt"] = VfVariant("Picture");
        getProperties()["promptKind"] = VfVariant("picture");
    }
    bool carryOut(ModelDocument& document, const VfVariant& argument) override
    {
        ModelView* view = currentModelView(document);
        if (!view)
            return false;
        std::string path = argument.toString().str();
        SnapshotFormat format;
        if (!takeFormat(path, format) || path.empty())
            return failed(document, "to keep a picture, its file is needed: "
                                    "vfViewer::SavePicture=[<width>x<height>][,transparent] <file>");
        VfString reason;
        if (!vfApplication::canWriteImage(path, reason))
            return failed(document, path + ": " + reason.str());
        if (format.isTransparent && !vfApplication::canBeTransparent(path))
            return failed(document, path + ": this image format has no transparency; use png, tga or tif");
        const osg::ref_ptr<osg::Image> picture = view->takePicture(format, reason);
        if (!picture || !vfApplication::writeImage(*picture, path, reason))
            return failed(document, path + ": picture not written: " + reason.str());
        return true;
    }
};

const CommandRecord<SavePicture> savePicture("SavePicture", "vfViewer::SavePicture");

} // namespace

} // namespace vfViewer
