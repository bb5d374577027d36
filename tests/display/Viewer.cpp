// SPDX-License-Identifier: MIT
#include "Viewer.h"

#include "qt/QtModelView.h"
#include "qt/QtWindowSide.h"
#include "ui/SceneModule.h"
#include "ui/ViewerUiSetup.h"

#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/formats/ReadGuard.h>
#include <velaforge/formats/ReadJob.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/qt/internal/MainWindow.h>

#include <osg/Camera>
#include <osg/ComputeBoundsVisitor>
#include <osgViewer/Viewer>

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QScreen>
#include <QWindow>

#include <iterator>
#include <sstream>
#include <stdexcept>

#include <dlfcn.h>
#include <fcntl.h>
#include <glob.h>
#include <sys/file.h>
#include <unistd.h>

namespace vfTest {

namespace {

struct Setup : vfApplication::ApplicationSetup
{
    Setup()
    {
        vfFormats::prepareReading();
        vfFormats::installReadGuard();
        vfViewer::qtWindowSide().install();
    }
    const vfApplication::UiSetup& getUiSetup() const override
    {
        static const vfViewer::ViewerUiSetup setup;
        return setup;
    }
    void onRegisterDocumentType() const override
    {
        vfApplication::Application::instance(false)->setDocManager(vfViewer::qtWindowSide().makeDocManager());
        vfViewer::qtWindowSide().announceOptionsPages();
    }
};

} // namespace

std::string OnDisplay::takeDisplay()
{
    const char* named = std::getenv("VELAFORGE_TEST_DISPLAY");
    std::istringstream words(named ? named : "");
    const std::vector<std::string> displays(std::istream_iterator<std::string>(words), {});
    while (!displays.empty()) {
        for (const std::string& display : displays) {
            const std::string lock = "/tmp/velaforge-test-display" + display;
            const int file = open(lock.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
            if (file < 0)
                throw std::runtime_error("cannot open " + lock);
            if (flock(file, LOCK_EX | LOCK_NB) == 0)
                return display;
            close(file);
        }
        usleep(20000);
    }
    return "";
}

void OnDisplay::keepDriver()
{
#ifdef __SANITIZE_ADDRESS__
    glob_t found = {};
    if (glob("/usr/lib/*/dri/swrast_dri.so", 0, nullptr, &found) == 0)
        dlopen(found.gl_pathv[0], RTLD_LAZY | RTLD_NODELETE);
    globfree(&found);
#endif
}

RunningViewer::RunningViewer(std::vector<std::string> arguments)
    : RunningProgram([&] {
#ifdef __SANITIZE_ADDRESS__
          // What the driver loses cannot be named in another process; the tests within this one look for leaks.
          setenv("ASAN_OPTIONS", "detect_leaks=0:intercept_tls_get_addr=0", 1);
#endif
          arguments.insert(arguments.begin(), VELAFORGE_PROGRAM_DIR "/vfviewer");
          return arguments;
      }())
{}

Viewer::Viewer(const std::vector<std::string>& arguments) : m_program(arguments, Setup())
{
    vfBase::ApplicationInfo::instance().setApplicationName("vfviewer");
    static const vfViewer::SceneUiSetup scene;
    vfApplication::ModuleRegistry::instance(false)->addModule(new vfViewer::SceneModule(scene));
    vfViewer::SceneModule::addDockWindows();
}

int Viewer::run(const std::function<void()>& script)
{
    return m_program.run([&] {
        ui([&] { m_program.window().move(0, 0); });
        focus();
        script();
    });
}

void Viewer::focus()
{
    // Asked for until it holds: what is open at the moment takes the keyboard along when it goes, such as the progress of
    // files that are opened at the start.
    EXPECT_TRUE(waitFor([&] {
        if (m_program.window().isActiveWindow())
            return true;
        if (!QApplication::activeModalWidget())
            m_program.window().activateWindow();
        return false;
    }));
    Program::pause(100);
}

void Viewer::keepPicture(const char* name)
{
    const char* keep = std::getenv("VELAFORGE_KEEP_PICTURES");
    if (!keep)
        return;
    Program::pause(300);
    ui([&] {
        const QString path = QString::fromUtf8(keep) + QLatin1Char('/') + QLatin1String(name);
        // What stands above the window is to be seen as well.
        const QWidget& window = m_program.window();
        const QRect place(window.mapToGlobal(QPoint()), window.size());
        EXPECT_TRUE(
            window.screen()->grabWindow(0, place.x(), place.y(), place.width(), place.height()).save(path))
            << path.toStdString();
    });
}

void Viewer::typeFileName(const std::string& path)
{
    ASSERT_TRUE(waitFor([] {
        const auto* dialog = qobject_cast<QFileDialog*>(Program::dialog());
        return dialog && dialog->isActiveWindow() && dialog->focusWidget();
    }));
    Program::pause(100);
    hand.key("Ctrl+A");
    hand.type(path);
    // The list of proposals takes the first Return where it is open.
    Program::pause(100);
    if (ui([] { return QApplication::activePopupWidget() != nullptr; }))
        hand.key("Escape");
    hand.key("Return");
}

vfViewer::ModelDocument* Viewer::model() const
{
    return dynamic_cast<vfViewer::ModelDocument*>(m_program.application().getActiveDocument());
}

vfApplication::QtViewport* Viewer::viewport() const
{
    auto* view =
        dynamic_cast<vfViewer::QtModelView*>(m_program.application().getDocManager().getCurrentView());
    return view ? view->getViewport() : nullptr;
}

QPoint Viewer::onScreen(const QWidget& widget, const QPoint& point)
{
    // Qt counts in its own units; the hand does so in the screen's.
    return widget.mapToGlobal(point) * widget.devicePixelRatioF();
}

QPoint Viewer::onScreen(const QWidget& widget)
{
    return onScreen(widget, widget.rect().center());
}

QPointF Viewer::seen(osg::Node& part) const
{
    osg::ComputeBoundsVisitor bounds;
    part.accept(bounds);
    const osg::Camera& camera = *viewport()->getViewer().getCamera();
    const osg::Vec3d at = osg::Vec3d(bounds.getBoundingBox().center()) *
                          osg::computeLocalToWorld(part.getParentalNodePaths().front()) *
                          camera.getViewMatrix() * camera.getProjectionMatrix();
    return {(at.x() + 1) / 2 * viewport()->width(), (1 - at.y()) / 2 * viewport()->height()};
}

osg::Node* Viewer::part(const char* name) const
{
    for (const osg::ref_ptr<osg::Node>& part : model()->getModelScene().parts()) {
        if (part->getName() == name)
            return part;
    }
    return nullptr;
}

} // namespace vfTest
