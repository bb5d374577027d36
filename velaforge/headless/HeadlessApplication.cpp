// SPDX-License-Identifier: MIT
#include <velaforge/headless/HeadlessApplication.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Printable.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/View.h>
#include <velaforge/headless/ImageFile.h>
#include <velaforge/headless/OffscreenRenderer.h>
#include <velaforge/headless/SnapshotSource.h>
#include <velaforge/shell/StatusBar.h>

#include <osg/Notify>
#include <osg/Timer>

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace vfApplication {

namespace {

struct Request
{
    vfBase::VfString snapshot;
    int width = 1280;
    int height = 800;
};

/// The command line is the process's, and so is what it asks for.
Request& request()
{
    static Request asked;
    return asked;
}

/// Takes one to five digits off the front of @p text. @return 0 for anything that is no size
int takeLength(std::string& text)
{
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    if (digits == 0 || digits > 5)
        return 0;
    const int length = std::atoi(text.substr(0, digits).c_str());
    text.erase(0, digits);
    return length <= OffscreenRenderer::sizeLimit ? length : 0;
}

bool parseSize(const vfBase::VfString& size, int& width, int& height)
{
    std::string rest = size.str();
    const int parsedWidth = takeLength(rest);
    if (parsedWidth == 0 || rest.empty() || rest[0] != 'x')
        return false;
    rest.erase(0, 1);
    const int parsedHeight = takeLength(rest);
    if (parsedHeight == 0 || !rest.empty())
        return false;
    width = parsedWidth;
    height = parsedHeight;
    return true;
}

bool fail(const vfBase::VfString& path, const vfBase::VfString& reason)
{
    std::cerr << Application::instance(false)->getApplicationName() << ": " << vfBase::printable(path)
              << ": snapshot not written: " << reason << std::endl;
    return false;
}

bool takeSnapshot(const Request& asked)
{
    if (!Application::instance(false)->getActiveDocument())
        return fail(asked.snapshot, "no document is open");
    auto* source =
        dynamic_cast<SnapshotSource*>(Application::instance(false)->getDocManager().getCurrentView());
    if (!source)
        return fail(asked.snapshot, "this kind of document cannot be shown without a window");
    const osg::Timer_t start = osg::Timer::instance()->tick();
    vfBase::VfString reason;
    const osg::ref_ptr<osg::Image> image = source->takeSnapshot(asked.width, asked.height, reason);
    if (!image)
        return fail(asked.snapshot, reason);
    const double duration = osg::Timer::instance()->delta_m(start, osg::Timer::instance()->tick());
    if (!writeImage(*image, asked.snapshot, reason))
        return fail(asked.snapshot, reason);
    if (vfBase::NotifyHandler::instance().isNotifyEnabled())
        osg::notify(osg::ALWAYS) << "Snapshot of " << asked.width << "x" << asked.height
                                 << " pixels rendered in: " << duration << " ms, written to "
                                 << vfBase::printable(asked.snapshot) << std::endl;
    return true;
}

} // namespace

struct HeadlessApplicationPrivate
{
    StatusBar statusBar;
    bool exitRequested = false;
    int exitCode = 0;
};

HeadlessApplication::HeadlessApplication() : d(std::make_unique<HeadlessApplicationPrivate>()) {}

HeadlessApplication::~HeadlessApplication() = default;

void HeadlessApplication::declareOptions(vfBase::ArgumentParser& parser)
{
    parser.addCommandLineOption("--snapshot <file>", "Render the active document into this image, then end",
                                nullptr);
    parser.addCommandLineOption("--size <width>x<height>", "Size of the snapshot in pixels", "1280x800");
}

void HeadlessApplication::readOptions(vfBase::ArgumentParser& parser)
{
    vfBase::VfString value;
    vfBase::VfString reason;
    if (parser.readOptionParameter("--snapshot", value)) {
        if (canWriteImage(value, reason))
            request().snapshot = value;
        else
            parser.reportError("--snapshot " + vfBase::printable(value).str() + ": " + reason.str());
    }
    if (parser.readOptionParameter("--size", value) && !parseSize(value, request().width, request().height))
        parser.reportError("--size " + vfBase::printable(value).str() +
                           ": not a size; write <width>x<height>, each from 1 to " +
                           std::to_string(OffscreenRenderer::sizeLimit));
}

int HeadlessApplication::onBeforeRun()
{
    readOptions(Application::instance(false)->getArgumentParser());
    return 0;
}

int HeadlessApplication::runEventLoop()
{
    if (d->exitRequested)
        return d->exitCode;
    if (!request().snapshot.empty() && !takeSnapshot(request()))
        return snapshotFailed;
    return d->exitRequested ? d->exitCode : 0;
}

int HeadlessApplication::onAfterRun()
{
    return 0;
}

void HeadlessApplication::exit(int code)
{
    d->exitRequested = true;
    d->exitCode = code;
}

void HeadlessApplication::shellExtensionA() {}

StatusBar& HeadlessApplication::getStatusBar()
{
    return d->statusBar;
}

void HeadlessApplication::shellExtensionB() {}

void HeadlessApplication::shellExtensionC() {}

void HeadlessApplication::addFileToFileSystemWatcher(vfBase::VfString) {}

} // namespace vfApplication
