// SPDX-License-Identifier: MIT
#include "headless/HeadlessDocManager.h"
#include "headless/LargePages.h"
#include "model/FirstView.h"
#include "model/ViewerDocuments.h"
#include "ui/ModulePlugin.h"
#include "ui/OptionsPages.h"
#include "ui/SceneModule.h"
#include "ui/ViewerUiSetup.h"
#include "ui/WindowSide.h"

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationCallback.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/base/FileNames.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Printable.h>
#include <velaforge/base/StandardDescriptors.h>
#include <velaforge/base/Version.h>
#include <velaforge/formats/FormatList.h>
#include <velaforge/formats/ReadGuard.h>
#include <velaforge/formats/ReadJob.h>
#include <velaforge/headless/HeadlessApplication.h>
#include <velaforge/headless/HeadlessApplicationProducer.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/scene/GraphicsContexts.h>

#include <osg/Notify>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

namespace {

using vfApplication::Application;
using vfApplication::HeadlessApplication;
using vfBase::VfString;

/// What run() returns after the usage text, and for errors on the command line before the start, which the program prints.
constexpr int helpShown = 1;
constexpr int commandLineErrors = 2;

/// Declares the viewer's menus, kinds of document and options pages.
class ViewerSetup : public vfApplication::ApplicationSetup
{
public:
    /// @param window  null for the viewer without a window
    explicit ViewerSetup(const vfViewer::WindowSide* window) : m_window(window) {}

    const vfApplication::UiSetup& getUiSetup() const override
    {
        static const vfViewer::ViewerUiSetup setup; // the module of the application outlives the application
        return setup;
    }
    void onRegisterDocumentType() const override
    {
        Application* application = Application::instance(false);
        if (m_window) {
            application->setDocManager(m_window->makeDocManager());
            m_window->announceOptionsPages();
        } else {
            application->setDocManager(new vfViewer::HeadlessDocManager);
            vfViewer::announceOptionsPages();
        }
    }

private:
    const vfViewer::WindowSide* m_window;
};

/// Opens the image of "--image" ahead of the files.
struct ViewerCallback : vfApplication::ApplicationCallback
{
    int onApplicationInitialized(Application* application) override
    {
        if (!image.empty())
            application->openDocument(image.c_str(), vfBase::Options());
        return 0;
    }
    void onClosingDocument(vfApplication::Document*) override {}
    void onDocumentCreated(vfApplication::Document*) override {}
    void callbackExtension() override {}

    VfString image;
};

/// The modules, one of which comes from a library of its own.
void addModules()
{
    static const vfViewer::SceneUiSetup sceneSetup;
    vfApplication::ModuleRegistry::instance(false)->addModule(new vfViewer::SceneModule(sceneSetup));
    vfViewer::SceneModule::addDockWindows();
    std::string reason;
    if (!vfViewer::addModuleFromLibrary("vfviewer_statistics", reason))
        std::cerr << "vfviewer: warning: there will be no statistics: " << vfBase::printable(reason)
                  << std::endl;
}

void introduce()
{
    vfBase::ApplicationInfo& info = vfBase::ApplicationInfo::instance();
    info.setApplicationName("vfviewer");
    info.setApplicationVersion(vfBase::getVersion());
    info.setApplicationVendorName("velaFORGE");
    info.setApplicationVendorShortName("velaforge");
}

/// Reads the viewer's own options before anything is opened, so that a mistake costs no time.
/// @param window  null without a window
void readOptions(vfBase::ArgumentParser& parser, ViewerCallback& callback, const vfViewer::WindowSide* window)
{
    HeadlessApplication::declareOptions(parser);
    parser.addCommandLineOption("--headless", "Open no window, even with a display", nullptr);
    parser.addCommandLineOption("--list-formats", "List the formats that can be read and written", nullptr);
    parser.addCommandLineOption("--file-lamps", "Use the lamps of files in place of the viewer's", nullptr);
    parser.addCommandLineOption("--require-sandbox",
                                "Read no file where the system lacks a part of the sandbox", nullptr);
    parser.addCommandLineOption("--verbose", "Print more messages", nullptr);
    parser.addCommandLineOption("--log", "Ask the readers for a log", nullptr);
    if (window)
        window->readOptions(parser);
    HeadlessApplication::readOptions(parser);
    parser.readOptionParameter("--headless"); // consumed only: main() has tested for it already
    parser.readOptionParameter("--image", callback.image);
    if (parser.readOptionParameter("--require-sandbox"))
        vfFormats::requireSandbox();
    if (parser.readOptionParameter("--file-lamps"))
        vfViewer::chooseFileLamps();
    int view = 0;
    if (parser.readOptionParameter("--defaultCameraView", view)) {
        if (view >= 0 && view < vfScene::standardViewCount)
            vfViewer::chooseFirstView(static_cast<vfScene::StandardView>(view));
        else
            parser.reportError("--defaultCameraView: there are the views 0 to 9");
    }
}

/// @return whether the command line asks for what is done without a window
bool wantsNoWindow(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        for (const char* option :
             {"--headless", "--snapshot", "--turntable", "--list-ui", "--list-commands", "--help", "-h"})
        {
            if (!std::strcmp(argv[i], option))
                return true;
        }
    }
    return false;
}

/// @return whether the command line asks for the formats, which takes no application
bool wantsFormats(int argc, char** argv)
{
    return std::any_of(argv + std::min(argc, 1), argv + argc,
                       [](const char* argument) { return !std::strcmp(argument, "--list-formats"); });
}

/// Finds the side with a window, where it is wanted, installed, and has a display.
/// @return false when it is there and its display does not answer, which is told
bool findWindow(int argc, char** argv, const vfViewer::WindowSide*& window)
{
    const auto isSet = [](const char* name) {
        const char* value = std::getenv(name);
        return value && *value;
    };
    const bool hasDisplay = isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM");
    if (!hasDisplay || wantsNoWindow(argc, argv))
        return true;
    std::string reason;
    window = vfViewer::openWindowSide(reason);
    if (!window) {
        std::cerr << "vfviewer: warning: there will be no window: " << vfBase::printable(reason) << std::endl;
        return true;
    }
    reason = window->displayError(argc, argv);
    if (!reason.empty())
        std::cerr << "vfviewer: " << vfBase::printable(reason) << "; --headless works without a display"
                  << std::endl;
    return reason.empty();
}

/// @return whether a file that the command line named could not be opened in the window; without a window the shell's
///         result tells
bool hasFailed(const Application& application, const std::vector<std::string>& named)
{
    const auto& failures = dynamic_cast<const vfViewer::FailureLog&>(application.getDocManager()).failures();
    return std::any_of(failures.begin(), failures.end(), [&named](const std::string& path) {
        return std::find(named.begin(), named.end(), path) != named.end();
    });
}

/// @return the arguments as absolute paths, whatever they are
std::vector<std::string> absolutePaths(int argc, char** argv)
{
    std::vector<std::string> paths;
    for (int i = 0; i < argc; ++i)
        paths.push_back(vfBase::absolutePath(argv[i]).str());
    return paths;
}

int run(int argc, char** argv)
{
    introduce();
    if (wantsFormats(argc, argv)) {
        std::cout << vfFormats::listFormats();
        return HeadlessApplication::finishOutput() ? EXIT_SUCCESS : HeadlessApplication::requestFailed;
    }
    const std::vector<std::string> named = absolutePaths(argc, argv);
    const vfViewer::WindowSide* window = nullptr;
    if (!findWindow(argc, argv, window))
        return EXIT_FAILURE;
    if (!window)
        vfViewer::useLargePages();
    vfBase::NotifyHandler::instance().install();
    if (!std::getenv("OSG_NOTIFY_LEVEL"))
        osg::setNotifyLevel(osg::WARN);
    vfFormats::installReadGuard();
    vfScene::expectFewGraphicsContexts();
    if (window)
        window->install();
    else
        vfApplication::HeadlessApplicationProducer::install();

    ViewerCallback callback;
    Application application(argc, argv, ViewerSetup(window));
    application.registerCallback(&callback);
    addModules();
    readOptions(application.getArgumentParser(), callback, window);
    const int result = application.run();
    if (result == commandLineErrors)
        application.getArgumentParser().printErrorMessages();
    if (result == helpShown && !HeadlessApplication::finishOutput())
        return HeadlessApplication::requestFailed;
    if (result == 0 && window && hasFailed(application, named))
        return HeadlessApplication::requestFailed;
    if (result == 0 && !window && application.getNumDocuments() == 0)
        std::cerr << "vfviewer: no file to show; \"vfviewer --help\" tells what can be said" << std::endl;
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    // First of all: a socket of the reader's must not come to lie on a standard stream that is closed.
    vfBase::openStandardDescriptors();
    // A write beyond a limit of the size of files fails, as on a full disk; its signal would end the program.
    std::signal(SIGXFSZ, SIG_IGN);
    int status = EXIT_FAILURE;
    try {
        vfFormats::prepareReading(); // which gets ready meanwhile
        status = run(argc, argv);
    } catch (...) {
        std::cerr << "vfviewer: " << vfBase::printable(vfBase::BaseException::describeCurrent()) << std::endl;
    }
    vfFormats::ReadJob::waitForThreads();
    return status;
}
