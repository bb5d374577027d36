// SPDX-License-Identifier: MIT
#include <velaforge/headless/HeadlessApplication.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Printable.h>
#include <velaforge/base/StringList.h>
#include <velaforge/base/VfVariant.h>
#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandItem.h>
#include <velaforge/commands/CommandProcessor.h>
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
#include <velaforge/headless/internal/Script.h>
#include <velaforge/headless/internal/Tell.h>
#include <velaforge/toolkit/CommandNames.h>
#include <velaforge/toolkit/Declarations.h>
#include <velaforge/toolkit/ModifiedDocuments.h>

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

    /// Each with its argument behind "=".
    vfBase::StringList commands;
    vfBase::VfString script;
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

/// A command that the command line or a script names.
struct Invocation
{
    std::string name;
    Command command;
    vfBase::VfVariant argument;

    /// File and line of a script, for messages; empty for the command line.
    std::string where;

    std::string subject() const { return where + name; }
    bool isOfScript() const { return !where.empty(); }
};

/// @param text  a name, or a name, "=" and an argument
Invocation makeInvocation(const std::string& text)
{
    const std::size_t equals = text.find('=');
    Invocation invocation;
    invocation.name = text.substr(0, equals);
    if (equals != std::string::npos)
        invocation.argument = vfBase::VfVariant(vfBase::VfString(text.substr(equals + 1)));
    return invocation;
}

/// Makes the commands and reports each name that is not registered.
/// @return false if there is such a name
bool findCommands(std::vector<Invocation>& invocations)
{
    bool areAllKnown = true;
    for (Invocation& invocation : invocations) {
        invocation.command = Command::getCommandByName(invocation.name);
        if (invocation.command.isValid())
            continue;
        const vfBase::VfString nearest = nearestName(invocation.name, commandNames());
        areAllKnown = tell(invocation.subject(),
                           nearest.empty() ? std::string("there is no such command")
                                           : "there is no such command; did you mean " + nearest.str() + "?");
    }
    return areAllKnown;
}

bool isSet(const Command& command, const char* property)
{
    return command.getProperties().value(property, vfBase::VfVariant()).toBool();
}

/// Returns the number of failures that the document manager reported, such as files that could not be opened.
unsigned int failureCount()
{
    const auto* manager =
        dynamic_cast<const HeadlessDocManager*>(&Application::instance(false)->getDocManager());
    return manager ? manager->getFailureCount() : 0;
}

enum class Result
{
    Done,
    Failed,         ///< later commands may depend on this one
    FailedHarmless, ///< the command reported the failure, and no later command depends on it
};

/// Invokes a command and finds out whether it succeeded, since Command::invoke() returns nothing: a command
/// that can be undone is in the undo history afterwards; any command may set its property "failed".
Result invoke(Invocation& invocation)
{
    const unsigned int failuresBefore = failureCount();
    const Document* document = Application::instance(false)->getActiveDocument();
    if (!document && !isSet(invocation.command, "standalone")) {
        tell(invocation.subject(), "there is no document for the command");
        return Result::Failed;
    }
    invocation.command.invoke(invocation.argument);
    followHistories(Application::instance(false)->getDocManager());
    // For a script a further message has the line; otherwise the message of the document manager is enough.
    const bool isTold = !invocation.isOfScript() && failureCount() > failuresBefore;
    if (isSet(invocation.command, "failed")) {
        if (!invocation.isOfScript())
            return Result::FailedHarmless;
        tell(invocation.subject(), "the command could not be carried out");
        return Result::Failed;
    }
    if (!document || !invocation.command.canUndo() ||
        Application::instance(false)->getActiveDocument() != document)
        return Result::Done;
    if (document->getCommandProcessor()->getCurrentCommand() == invocation.command)
        return Result::Done;
    if (!isTold)
        tell(invocation.subject(), "the command could not be carried out");
    return Result::Failed;
}

/// Invokes the commands in order. Stops after a failure on which later commands may depend.
/// @return false if a command failed
bool invokeInOrder(std::vector<Invocation>& invocations, bool& isPictureWanted)
{
    bool isAllDone = true;
    for (Invocation& invocation : invocations) {
        Result result = Result::Failed;
        attempt(invocation.subject(), [&] {
            result = invoke(invocation);
            return true;
        });
        isAllDone = isAllDone && result == Result::Done;
        if (result == Result::Failed) {
            isPictureWanted = false;
            break;
        }
    }
    return isAllDone;
}

/// Runs the commands of the script and of the command line.
/// @param isPictureWanted  set to false if a command fails on which the picture may depend
/// @return false if a command failed
bool invokeCommands(const Request& asked, bool& isPictureWanted)
{
    std::vector<Invocation> invocations;
    std::vector<ScriptLine> lines;
    vfBase::VfString reason;
    if (!asked.script.empty() && !readScript(asked.script, lines, reason)) {
        isPictureWanted = false;
        return tell(asked.script, reason);
    }
    for (const ScriptLine& line : lines) {
        invocations.push_back(makeInvocation(line.text));
        invocations.back().where = line.where;
    }
    for (unsigned int i = 0; i < asked.commands.size(); ++i)
        invocations.push_back(makeInvocation(asked.commands.get(i).str()));
    if (!attempt("commands", [&] { return findCommands(invocations); })) {
        isPictureWanted = false;
        return false;
    }
    return invokeInOrder(invocations, isPictureWanted);
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
    parser.addCommandLineOption("--invoke <command>[=<argument>]",
                                "Run a command on the active document; may be repeated", nullptr);
    parser.addCommandLineOption("--script <file>",
                                "Run the commands of a file, one per line; - reads standard input", nullptr);
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
    parser.readOptionParameter("--script", request().script);
    parser.readOptionParameter("--invoke", request().commands);
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
