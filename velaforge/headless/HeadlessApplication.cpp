// SPDX-License-Identifier: MIT
#include <velaforge/headless/HeadlessApplication.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Printable.h>
#include <velaforge/commands/CommandItem.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/View.h>
#include <velaforge/headless/HeadlessDocManager.h>
#include <velaforge/headless/HeadlessDockWindowProducer.h>
#include <velaforge/headless/HeadlessStatusBar.h>
#include <velaforge/headless/HeadlessTitleBar.h>
#include <velaforge/headless/HeadlessToolbar.h>
#include <velaforge/headless/ImageFile.h>
#include <velaforge/headless/OffscreenRenderer.h>
#include <velaforge/headless/SnapshotSource.h>
#include <velaforge/headless/UiListing.h>
#include <velaforge/toolkit/CommandNames.h>
#include <velaforge/toolkit/Declarations.h>
#include <velaforge/toolkit/RequestedCommands.h>
#include <velaforge/toolkit/Tell.h>

#include <osg/Notify>
#include <osg/Timer>
#include <osgDB/FileNameUtils>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include <unistd.h>

namespace vfApplication {

namespace {

constexpr int turntableLimit = 10000;

struct Request
{
    bool isListWanted = false;
    bool areCommandsWanted = false;

    RequestedCommands commands;
    vfBase::VfString snapshot;
    SnapshotFormat format;

    /// Number of pictures around the model; 0 for one with the camera as it is.
    int turntable = 0;
};

/// The options of the command line of the current application. They are read before there is a shell.
Request& request()
{
    static Request asked;
    return asked;
}

bool failPicture(const vfBase::VfString& path, const vfBase::VfString& reason)
{
    return tell(path, "snapshot not written: " + reason.str());
}

/// Runs @p work and reports an exception in one line on standard error.
/// @param subject  what the line is about
/// @return the result of @p work; false if it throws
template <class Work>
bool attempt(const vfBase::VfString& subject, Work work)
{
    try {
        return work();
    } catch (...) {
        return tell(subject, vfBase::BaseException::describeCurrent());
    }
}

/// Returns the number of failures that the document manager reported, such as files that could not be opened.
unsigned int failureCount()
{
    const auto* manager =
        dynamic_cast<const HeadlessDocManager*>(&Application::instance(false)->getDocManager());
    return manager ? manager->getFailureCount() : 0;
}

/// Runs the commands of the script and of the command line.
/// @param isPictureWanted  set to false if a command fails on which the picture may depend
/// @return false if a command failed
bool invokeCommands(const Request& asked, bool& isPictureWanted)
{
    const RequestedCommands::Host host = {
        [](const vfBase::VfString& subject, const vfBase::VfString& reason) { tell(subject, reason); },
        failureCount, [] { return false; }};
    const RequestedCommands::Result result = asked.commands.run(host);
    isPictureWanted = isPictureWanted && result != RequestedCommands::Result::Stopped;
    return result == RequestedCommands::Result::Done;
}

bool takeSnapshot(SnapshotSource& source, const SnapshotFormat& format, const vfBase::VfString& path)
{
    const osg::Timer_t start = osg::Timer::instance()->tick();
    vfBase::VfString reason;
    osg::ref_ptr<osg::Image> image;
    try {
        image = source.takeSnapshot(format, reason);
    } catch (...) {
        reason = vfBase::BaseException::describeCurrent();
    }
    if (!image)
        return failPicture(path, reason);
    const double duration = osg::Timer::instance()->delta_m(start, osg::Timer::instance()->tick());
    if (!writeImage(*image, path, reason))
        return failPicture(path, reason);
    if (vfBase::NotifyHandler::instance().isNotifyEnabled())
        osg::notify(osg::ALWAYS) << "Snapshot of " << format.width << "x" << format.height
                                 << " pixels rendered in: " << duration << " ms, written to "
                                 << vfBase::printable(path) << std::endl;
    return true;
}

/// Returns the path of one of several pictures: boat-007.png for boat.png and 7.
vfBase::VfString numbered(const vfBase::VfString& path, int number, int count)
{
    const std::string digits = std::to_string(number);
    const std::size_t width = std::max<std::size_t>(3, std::to_string(count - 1).size());
    return osgDB::getNameLessExtension(path) + "-" + std::string(width - digits.size(), '0') + digits + "." +
           osgDB::getFileExtension(path);
}

bool takeSnapshots(const Request& asked)
{
    if (!Application::instance(false)->getActiveDocument())
        return failPicture(asked.snapshot, "no document is open");
    auto* source =
        dynamic_cast<SnapshotSource*>(Application::instance(false)->getDocManager().getCurrentView());
    if (!source)
        return failPicture(asked.snapshot, "this kind of document cannot be shown without a window");
    if (asked.turntable == 0)
        return takeSnapshot(*source, asked.format, asked.snapshot);
    for (int i = 0; i < asked.turntable; ++i) {
        SnapshotFormat format = asked.format;
        format.turn = static_cast<double>(i) / asked.turntable;
        if (!takeSnapshot(*source, format, numbered(asked.snapshot, i, asked.turntable)))
            return false;
    }
    return true;
}

void listCommands()
{
    for (const vfBase::VfString& name : commandNames())
        std::cout << vfBase::printable(name) << '\n';
    std::cout.flush();
}

/// Carries out the options of the command line: lists, commands, pictures.
/// @return false if a part failed
bool serve(const Request& asked)
{
    bool isAllDone = true;
    if (asked.isListWanted)
        isAllDone = attempt("--list-ui", [] {
            listUi(std::cout);
            return true;
        });
    if (asked.areCommandsWanted)
        isAllDone = attempt("--list-commands",
                            [] {
                                listCommands();
                                return true;
                            }) &&
                    isAllDone;
    bool isPictureWanted = !asked.snapshot.empty();
    isAllDone = invokeCommands(asked, isPictureWanted) && isAllDone;
    if (isPictureWanted)
        isAllDone = takeSnapshots(asked) && isAllDone;
    return isAllDone;
}

} // namespace

struct HeadlessApplicationPrivate
{
    HeadlessStatusBar statusBar;
    HeadlessTitleBar titleBar;
    std::vector<HeadlessToolbar> toolbars;
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
    parser.addCommandLineOption("--transparent", "Make the background of the snapshot transparent", nullptr);
    parser.addCommandLineOption("--turntable <n>", "Write that many numbered snapshots around the model",
                                nullptr);
    RequestedCommands::declareOptions(parser);
    parser.addCommandLineOption("--list-ui", "List menus, toolbars, dock windows and options pages", nullptr);
    parser.addCommandLineOption("--list-commands", "List the names of all commands", nullptr);
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
    SnapshotFormat& format = request().format;
    if (parser.readOptionParameter("--size", value) && !parseImageSize(value, format.width, format.height))
        parser.reportError("--size " + vfBase::printable(value).str() +
                           ": not a size; write <width>x<height>, each from 1 to " +
                           std::to_string(OffscreenRenderer::sizeLimit));
    if (parser.readOptionParameter("--transparent")) {
        format.isTransparent = true;
        if (!request().snapshot.empty() && !canBeTransparent(request().snapshot))
            parser.reportError("--transparent: this image format has no transparency; use png, tga or tif");
    }
    int count = 0;
    if (parser.readOptionParameter("--turntable", count)) {
        if (count < 1 || count > turntableLimit)
            parser.reportError("--turntable: the number of pictures must be from 1 to " +
                               std::to_string(turntableLimit));
        else if (request().snapshot.empty())
            parser.reportError("--turntable: the pictures need a file name; add --snapshot <file>");
        request().turntable = count;
    }
    request().commands.readOptions(parser);
    if (parser.readOptionParameter("--list-ui"))
        request().isListWanted = true;
    if (parser.readOptionParameter("--list-commands"))
        request().areCommandsWanted = true;
}

void HeadlessApplication::forgetOptions()
{
    request() = Request();
}

bool HeadlessApplication::wantsSnapshot()
{
    return !request().snapshot.empty();
}

int HeadlessApplication::onBeforeRun()
{
    readOptions(Application::instance(false)->getArgumentParser());
    return 0;
}

int HeadlessApplication::runEventLoop()
{
    attempt("dock windows", [this] {
        HeadlessDockWindowProducer::restoreStates();
        const CommandItem toolbars = declaredToolbars();
        d->toolbars.assign(toolbars.getList().begin(), toolbars.getList().end());
        return true;
    });
    bool isDone = d->exitRequested || serve(request());
    attempt("dock windows", [] {
        HeadlessDockWindowProducer::saveStates();
        return true;
    });
    if (d->exitRequested)
        return d->exitCode;
    isDone = finishOutput() && isDone;
    return isDone && failureCount() == 0 ? 0 : requestFailed;
}

bool HeadlessApplication::finishOutput()
{
    std::cout.flush();
    if (std::cout)
        return true;
    // The stream does not store errno; writing one more byte sets it again.
    const bool isWritten = write(STDOUT_FILENO, "\n", 1) == 1;
    return tell("standard output", isWritten ? "not all output could be written" : std::strerror(errno));
}

void HeadlessApplication::reset()
{
    d = std::make_unique<HeadlessApplicationPrivate>();
}

HeadlessTitleBar& HeadlessApplication::getTitleBar()
{
    d->titleBar.titleBarOperationA();
    return d->titleBar;
}

const std::vector<HeadlessToolbar>& HeadlessApplication::getToolbars() const
{
    return d->toolbars;
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
