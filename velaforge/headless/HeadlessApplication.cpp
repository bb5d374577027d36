// SPDX-License-Identifier: MIT
#include <velaforge/headless/HeadlessApplication.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/ArgumentParser.h>
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

#include <osg/Notify>
#include <osg/Timer>
#include <osgDB/FileNameUtils>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace vfApplication {

namespace {

constexpr int turntableLimit = 10000;

struct Request
{
    bool isListWanted = false;
    bool areCommandsWanted = false;
    vfBase::StringList commands; ///< each with its argument behind "="
    vfBase::VfString script;
    vfBase::VfString snapshot;
    SnapshotFormat format;
    int turntable = 0; ///< number of pictures all around; 0 for one as it is
};

/// The command line is the process's, and so is what it asks for.
Request& request()
{
    static Request asked;
    return asked;
}

bool say(const vfBase::VfString& subject, const vfBase::VfString& reason)
{
    std::cerr << Application::instance(false)->getApplicationName() << ": " << vfBase::printable(subject)
              << ": " << reason << std::endl;
    return false;
}

bool fail(const vfBase::VfString& path, const vfBase::VfString& reason)
{
    return say(path, "snapshot not written: " + reason.str());
}

/// A command of the command line, or of a script.
struct Invocation
{
    std::string name;
    Command command;
    vfBase::VfVariant argument;
    std::string
        where; ///< in which file and line, for whoever looks for a mistake; empty for the command line
    bool isLast = false; ///< a script goes no further when it fails

    std::string subject() const { return where + name; }
};

/// @param text  a name, and behind "=" an argument
Invocation makeInvocation(const std::string& text)
{
    const std::size_t equals = text.find('=');
    Invocation invocation;
    invocation.name = text.substr(0, equals);
    if (equals != std::string::npos)
        invocation.argument = vfBase::VfVariant(vfBase::VfString(text.substr(equals + 1)));
    return invocation;
}

std::string trimmed(const std::string& text)
{
    const char* const blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Reads one command a line; empty lines and what begins with "#" are for people.
/// @param path  "-" for standard input
bool readScript(const vfBase::VfString& path, std::vector<Invocation>& invocations, vfBase::VfString& reason)
{
    std::ifstream file;
    if (path != "-") {
        errno = 0;
        file.open(path.str());
        if (!file || file.peek() == std::ifstream::traits_type::eof()) {
            // A directory can be opened, and fails when it is read.
            if (!file || errno != 0)
                reason = std::strerror(errno != 0 ? errno : ENOENT);
            else
                file.clear();
        }
        if (!reason.empty())
            return false;
    }
    std::istream& input = path == "-" ? std::cin : file;
    int number = 0;
    for (std::string line; std::getline(input, line);) {
        ++number;
        const std::string text = trimmed(line);
        if (text.empty() || text[0] == '#')
            continue;
        Invocation invocation = makeInvocation(text);
        invocation.where =
            (path == "-" ? std::string("standard input") : path.str()) + ":" + std::to_string(number) + ": ";
        invocation.isLast = true;
        invocations.push_back(invocation);
    }
    return true;
}

/// @return false when a name is unknown, which is told for each
bool findCommands(std::vector<Invocation>& invocations)
{
    bool areAllKnown = true;
    for (Invocation& invocation : invocations) {
        invocation.command = Command::getCommandByName(invocation.name);
        if (invocation.command.isValid())
            continue;
        const vfBase::VfString nearest = nearestName(invocation.name, commandNames());
        areAllKnown = say(invocation.subject(),
                          nearest.empty() ? std::string("there is no such command")
                                          : "there is no such command; did you mean " + nearest.str() + "?");
    }
    return areAllKnown;
}

bool isSet(const Command& command, const char* property)
{
    return command.getProperties().value(property, vfBase::VfVariant()).toBool();
}

/// Nobody tells whether a command that was invoked did its work. One that can be undone stands in the history if so;
/// others may say it in their properties.
bool invoke(Invocation& invocation)
{
    const Document* document = Application::instance(false)->getActiveDocument();
    if (!document && !isSet(invocation.command, "standalone"))
        return say(invocation.subject(), "there is no document for the command");
    invocation.command.invoke(invocation.argument);
    if (isSet(invocation.command, "failed"))
        return !invocation.isLast || say(invocation.subject(), "the command could not be carried out");
    if (!document || !invocation.command.canUndo() ||
        Application::instance(false)->getActiveDocument() != document)
        return true;
    const bool isDone = document->getCommandProcessor()->getCurrentCommand() == invocation.command;
    return isDone || say(invocation.subject(), "the command could not be carried out");
}

/// Stops at the first change that fails: those behind it may rely on it.
bool invokeCommands(const Request& asked)
{
    std::vector<Invocation> invocations;
    vfBase::VfString reason;
    if (!asked.script.empty() && !readScript(asked.script, invocations, reason))
        return say(asked.script, reason);
    for (unsigned int i = 0; i < asked.commands.size(); ++i)
        invocations.push_back(makeInvocation(asked.commands.get(i).str()));
    return findCommands(invocations) &&
           std::all_of(invocations.begin(), invocations.end(), [](Invocation& one) { return invoke(one); });
}

bool takeSnapshot(SnapshotSource& source, const SnapshotFormat& format, const vfBase::VfString& path)
{
    const osg::Timer_t start = osg::Timer::instance()->tick();
    vfBase::VfString reason;
    const osg::ref_ptr<osg::Image> image = source.takeSnapshot(format, reason);
    if (!image)
        return fail(path, reason);
    const double duration = osg::Timer::instance()->delta_m(start, osg::Timer::instance()->tick());
    if (!writeImage(*image, path, reason))
        return fail(path, reason);
    if (vfBase::NotifyHandler::instance().isNotifyEnabled())
        osg::notify(osg::ALWAYS) << "Snapshot of " << format.width << "x" << format.height
                                 << " pixels rendered in: " << duration << " ms, written to "
                                 << vfBase::printable(path) << std::endl;
    return true;
}

/// @return the name of one of several pictures: boat.png gives boat-007.png
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
        return fail(asked.snapshot, "no document is open");
    auto* source =
        dynamic_cast<SnapshotSource*>(Application::instance(false)->getDocManager().getCurrentView());
    if (!source)
        return fail(asked.snapshot, "this kind of document cannot be shown without a window");
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

bool serve(const Request& asked)
{
    if (asked.isListWanted)
        listUi(std::cout);
    if (asked.areCommandsWanted)
        listCommands();
    return invokeCommands(asked) && (asked.snapshot.empty() || takeSnapshots(asked));
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
    parser.addCommandLineOption("--transparent", "Leave the background out of the snapshot", nullptr);
    parser.addCommandLineOption("--turntable <n>", "Take that many snapshots, all around; they are numbered",
                                nullptr);
    parser.addCommandLineOption("--invoke <command>[=<argument>]",
                                "Run a command on the active document; as often as given, in order", nullptr);
    parser.addCommandLineOption(
        "--script <file>",
        "Run the commands of a file, one a line, as --invoke has them; - for standard input", nullptr);
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
            parser.reportError("--transparent: pictures of this format cannot be seen through; png, tga and "
                               "tif can");
    }
    int count = 0;
    if (parser.readOptionParameter("--turntable", count)) {
        if (count < 1 || count > turntableLimit)
            parser.reportError("--turntable: there can be 1 to " + std::to_string(turntableLimit) +
                               " pictures");
        else if (request().snapshot.empty())
            parser.reportError("--turntable: the pictures need a name; add --snapshot <file>");
        request().turntable = count;
    }
    parser.readOptionParameter("--script", request().script);
    parser.readOptionParameter("--invoke", request().commands);
    if (parser.readOptionParameter("--list-ui"))
        request().isListWanted = true;
    if (parser.readOptionParameter("--list-commands"))
        request().areCommandsWanted = true;
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
    HeadlessDockWindowProducer::restoreStates();
    const CommandItem toolbars = declaredToolbars();
    d->toolbars.assign(toolbars.getList().begin(), toolbars.getList().end());
    const bool isDone = d->exitRequested || serve(request());
    HeadlessDockWindowProducer::saveStates();
    if (d->exitRequested)
        return d->exitCode;
    return isDone ? 0 : requestFailed;
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
