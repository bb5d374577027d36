// SPDX-License-Identifier: MIT
// Where dock windows stand, from one run to the next.
#include "Program.h"

#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/Settings.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/dockwindows/DockWindowManagerSettings.h>
#include <velaforge/qt/QtDockWindow.h>
#include <velaforge/qt/QtDockWindowContents.h>
#include <velaforge/qt/internal/Docks.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/WindowSettings.h>

#include <gmock/gmock.h>

#include <QDockWidget>
#include <QScreen>
#include <QTableWidget>

#include <map>
#include <set>
#include <sstream>

#include <sys/wait.h>
#include <unistd.h>

using vfApplication::DockWindow;
using vfApplication::DockWindowManagerSettings;
using vfApplication::QtDockWindow;
using vfApplication::WindowSettings;
using vfTest::Program;

namespace {

const std::vector<std::string> ten = {"w0", "w1", "w2", "w3", "w4", "w5", "w6", "w7", "w8", "w9"};

DockWindow::DockArea areaOf(const std::string& id)
{
    constexpr DockWindow::DockArea areas[] = {DockWindow::LeftDockArea, DockWindow::RightDockArea,
                                              DockWindow::BottomDockArea, DockWindow::TopDockArea};
    return areas[(id[1] - '0') % 4];
}

QDockWidget& panel(const Program& program, const std::string& id)
{
    DockWindow* window = program.application().getDockWindowManager().findDockWindow(id.c_str());
    return *dynamic_cast<QtDockWindow&>(*window->getDockWindowInterface()).getWidget();
}

/// How the windows stand, a line each: what a person sees of it.
std::map<std::string, std::string> standing(const Program& program, const std::vector<std::string>& ids)
{
    std::map<std::string, std::string> lines;
    for (const std::string& id : ids) {
        const QDockWidget& dock = panel(program, id);
        const DockWindow& window = *program.application().getDockWindowManager().findDockWindow(id.c_str());
        std::ostringstream line;
        line << "area " << window.getArea() << (window.getVisible() ? "" : " closed")
             << (window.getAutoHide() ? " hides" : "") << " tabs";
        std::set<QString> others;
        for (const QDockWidget* other : program.window().tabifiedDockWidgets(&const_cast<QDockWidget&>(dock)))
            others.insert(other->objectName());
        for (const QString& other : others)
            line << ' ' << other.toStdString();
        const QRect rect = dock.geometry();
        if (!dock.isHidden() && others.empty())
            line << " at " << rect.x() << ',' << rect.y() << ' ' << rect.width() << 'x' << rect.height();
        lines[id] = line.str();
    }
    return lines;
}

/// Runs a program with those windows, in a process of its own: what is in the settings is all that stays.
/// @param script  its expectations count
void inAnotherProcess(const std::vector<std::string>& ids, const std::function<void(Program&)>& script)
{
    const pid_t child = fork();
    if (child == 0) {
        Program program;
        for (const std::string& id : ids) {
            program.application().getDockWindowManager().addNewOrGetExistingDockWindow(
                id.c_str(), areaOf(id), true, false, 0, nullptr);
        }
        const int code = program.run([&] { script(program); });
        std::fflush(nullptr);
        _exit(code == 0 && !testing::Test::HasFailure() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "what failed stands above";
}

/// Moves the windows about as a person would.
void rearrange(Program& program)
{
    program.ui([&] {
        QMainWindow& window = program.window();
        window.resize(1300, 950);
        window.tabifyDockWidget(&panel(program, "w0"), &panel(program, "w4"));
        window.splitDockWidget(&panel(program, "w1"), &panel(program, "w5"), Qt::Horizontal);
        window.addDockWidget(Qt::RightDockWidgetArea, &panel(program, "w2"));
        panel(program, "w6").setFloating(true);
        panel(program, "w6").setGeometry(300, 310, 222, 111);
        panel(program, "w7").close();
        program.application().getDockWindowManager().findDockWindow("w8")->setAutoHide(true);
    });
    program.pause(50);
    program.ui([&] {
        program.window().resizeDocks({&panel(program, "w1")}, {180}, Qt::Horizontal);
        program.window().resizeDocks({&panel(program, "w3")}, {140}, Qt::Vertical);
    });
    program.pause(50);
}

using Standing = std::map<std::string, std::string>;

/// What one process hands to the next, past the settings.
std::string notePath()
{
    const char* home = std::getenv("HOME");
    return std::string(home ? home : ".") + "/standing";
}

void keep(const Standing& lines)
{
    FILE* file = std::fopen(notePath().c_str(), "w");
    for (const auto& [id, line] : lines)
        std::fprintf(file, "%s\t%s\n", id.c_str(), line.c_str());
    std::fclose(file);
}

Standing kept()
{
    Standing lines;
    FILE* file = std::fopen(notePath().c_str(), "r");
    char id[16];
    char line[256];
    while (file && std::fscanf(file, "%15s\t%255[^\n]\n", id, line) == 2)
        lines[id] = line;
    if (file)
        std::fclose(file);
    return lines;
}

std::vector<std::string> without(const std::string& id)
{
    std::vector<std::string> nine = ten;
    nine.erase(std::find(nine.begin(), nine.end(), id));
    return nine;
}

void expectAsKept(Program& program, const std::vector<std::string>& ids)
{
    program.pause(50);
    const Standing before = kept();
    const Standing now = program.ui([&] { return standing(program, ids); });
    for (const std::string& id : ids)
        EXPECT_EQ(before.at(id), now.at(id)) << id;
}

} // namespace

TEST(Layout, IsFoundAgainInTheNextRun)
{
    inAnotherProcess(ten, [](Program& program) {
        rearrange(program);
        keep(program.ui([&] { return standing(program, ten); }));
    });
    inAnotherProcess(ten, [](Program& program) { expectAsKept(program, ten); });
}

TEST(Layout, ACopyOfTheSettingsHasAllOfThemAndANewOneNone)
{
    WindowSettings& settings = WindowSettings::instance();
    settings.geometry = "geometry";
    settings.layout = "layout";
    settings.language = "de";
    settings.shortcuts["sheet::AddLine"] = "Ctrl+L";
    const osg::ref_ptr<osg::Object> copy = settings.clone(osg::CopyOp());
    ASSERT_TRUE(settings.isSameKindAs(copy));
    const auto& copied = static_cast<const WindowSettings&>(*copy);
    EXPECT_EQ("geometry", copied.geometry);
    EXPECT_EQ("layout", copied.layout);
    EXPECT_EQ("de", copied.language);
    EXPECT_EQ(settings.shortcuts, copied.shortcuts);
    const osg::ref_ptr<osg::Object> made = settings.cloneType();
    EXPECT_EQ("", static_cast<const WindowSettings&>(*made).layout);
}

TEST(Layout, SavedRestoredAndSavedAgainIsTheSame)
{
    vfBase::ApplicationInfo::instance().setApplicationName("program");
    const auto saved = [] {
        vfBase::Settings::loadGlobal();
        return WindowSettings::instance().layout;
    };
    inAnotherProcess(ten, [](Program& program) { rearrange(program); });
    const std::string first = saved();
    EXPECT_LT(200u, first.size());
    inAnotherProcess(ten, [](Program& program) { program.pause(50); });
    EXPECT_EQ(first, saved());
    // The window itself was larger than the screen, and has been put onto it by now.
    const std::string geometry = WindowSettings::instance().geometry;
    inAnotherProcess(ten, [](Program& program) { program.pause(50); });
    EXPECT_EQ(first, saved());
    EXPECT_EQ(geometry, WindowSettings::instance().geometry);
}

class LayoutWithoutOne : public testing::TestWithParam<std::string>
{};

// A window that is missing takes its place along; what is to be left as it was are those in other places, and the order
// and the tabs of all.
TEST_P(LayoutWithoutOne, LeavesTheOthersWhereTheyStoodAndComesBackToItsPlace)
{
    const std::string missing = GetParam();
    inAnotherProcess(ten, [](Program& program) {
        rearrange(program);
        keep(program.ui([&] { return standing(program, ten); }));
    });
    inAnotherProcess(without(missing), [&](Program& program) {
        program.pause(50);
        const Standing before = kept();
        const Standing now = program.ui([&] { return standing(program, without(missing)); });
        for (const std::string& id : without(missing)) {
            const auto place = [&missing](std::string line) {
                const std::size_t name = line.find(" " + missing);
                if (name != std::string::npos)
                    line.erase(name, missing.size() + 1);
                return line.substr(0, line.find(" at "));
            };
            EXPECT_EQ(place(before.at(id)), place(now.at(id))) << id;
        }
    });
    inAnotherProcess(ten, [](Program& program) { expectAsKept(program, ten); });
}

INSTANTIATE_TEST_SUITE_P(Ten, LayoutWithoutOne, testing::ValuesIn(ten));

/// How a window stands, without what a new one in that area may change. A new one gets a column or row of its own, at the
/// cost of the middle; where that is the outermost it pushes the others of its area inwards as they are, and a row, which
/// goes from edge to edge, takes from the height of the columns at both sides.
std::string asFarAsItMayMove(const std::string& line, DockWindow::DockArea added)
{
    int area = 0, x = 0, y = 0, width = 0, height = 0;
    const std::size_t at = line.find(" at ");
    if (at == std::string::npos || std::sscanf(line.c_str(), "area %d", &area) != 1 ||
        std::sscanf(line.c_str() + at, " at %d,%d %dx%d", &x, &y, &width, &height) != 4)
        return line;
    const bool isRow = added == DockWindow::TopDockArea || added == DockWindow::BottomDockArea;
    const bool isAtSide = area == DockWindow::LeftDockArea || area == DockWindow::RightDockArea;
    if (added == DockWindow::RightDockArea && area == added)
        x = 0;
    if (isRow && area == added)
        y = 0;
    if (isRow && isAtSide)
        y = height = 0;
    std::ostringstream rest;
    rest << line.substr(0, at) << " at " << x << ',' << y << ' ' << width << 'x' << height;
    return rest.str();
}

class LayoutWithANewOne : public testing::TestWithParam<std::string>
{};

TEST_P(LayoutWithANewOne, TakesItsRoomFromTheMiddle)
{
    const std::string added = GetParam();
    inAnotherProcess(without(added), [&](Program& program) {
        program.ui([&] { program.window().resize(1300, 950); });
        program.pause(50);
        keep(program.ui([&] { return standing(program, without(added)); }));
    });
    inAnotherProcess(ten, [&](Program& program) {
        program.pause(50);
        const Standing before = kept();
        const Standing now = program.ui([&] { return standing(program, without(added)); });
        for (const std::string& id : without(added)) {
            EXPECT_EQ(asFarAsItMayMove(before.at(id), areaOf(added)),
                      asFarAsItMayMove(now.at(id), areaOf(added)))
                << id;
        }
        program.ui([&] {
            EXPECT_TRUE(panel(program, added).isVisible());
            EXPECT_EQ(areaOf(added),
                      program.application().getDockWindowManager().findDockWindow(added.c_str())->getArea());
        });
    });
}

INSTANTIATE_TEST_SUITE_P(Ten, LayoutWithANewOne, testing::ValuesIn(ten));

TEST(Layout, AWindowThatWasNeverShownHasRoomForItsContentsInALaterRun)
{
    const auto hide = [](Program& program) {
        program.ui(
            [&] { program.application().getDockWindowManager().findDockWindow("w1")->setVisible(false); });
    };
    inAnotherProcess({"w1"}, [&](Program& program) { hide(program); });
    // The contents are not made in this run, and the layout is saved as it was without them.
    inAnotherProcess({"w1"}, [&](Program& program) {
        program.ui([&] { program.window().resize(1300, 950); });
        program.pause(50);
    });
    vfApplication::QtDockWindowContents::setContents(
        "w1", [](QWidget& parent) { return new QTableWidget(&parent); });
    inAnotherProcess({"w1"}, [](Program& program) {
        program.ui(
            [&] { program.application().getDockWindowManager().findDockWindow("w1")->setVisible(true); });
        program.pause(50);
        program.ui([&] {
            const QDockWidget& shown = panel(program, "w1");
            ASSERT_NE(nullptr, shown.widget());
            EXPECT_LE(shown.widget()->sizeHint().width(), shown.width());
        });
    });
}

TEST(Layout, AWindowThatFloatedBesideAllScreensIsBroughtBack)
{
    inAnotherProcess(ten, [](Program& program) {
        program.ui([&] {
            panel(program, "w6").setFloating(true);
            panel(program, "w6").move(-3000, -3000);
        });
        program.pause(50);
    });
    inAnotherProcess(ten, [](Program& program) {
        program.ui([&] {
            EXPECT_TRUE(panel(program, "w6").isFloating());
            EXPECT_TRUE(panel(program, "w6").isVisible());
            EXPECT_TRUE(program.window().screen()->geometry().contains(panel(program, "w6").pos()));
        });
    });
}

TEST(Layout, ResetPutsEverythingAsItWasAtFirst)
{
    inAnotherProcess(ten, [](Program& program) {
        program.ui([&] { program.window().resize(1300, 950); });
        program.pause(50);
        keep(program.ui([&] { return standing(program, ten); }));
        rearrange(program);
    });
    inAnotherProcess(ten, [](Program& program) {
        program.ui([&] {
            program.invoke("vfApplicationQt::ActionResetLayout");
            program.window().resize(1300, 950);
        });
        expectAsKept(program, ten);
    });
}

TEST(Layout, ThatIsDamagedIsReplacedByWhatIsKnownOfEachWindow)
{
    inAnotherProcess(ten, [](Program& program) { rearrange(program); });
    vfBase::ApplicationInfo::instance().setApplicationName("program");
    vfBase::Settings::loadGlobal();
    WindowSettings::instance().layout = "bm90IGEgbGF5b3V0";
    WindowSettings::instance().geometry = "/////";
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    inAnotherProcess(ten, [](Program& program) {
        program.ui([&] {
            const auto window = [&](const char* id) -> const DockWindow& {
                return *program.application().getDockWindowManager().findDockWindow(id);
            };
            EXPECT_TRUE(program.window().isVisible());
            EXPECT_EQ(DockWindow::RightDockArea, window("w2").getArea());
            EXPECT_TRUE(window("w6").isFloating());
            EXPECT_FALSE(window("w7").getVisible());
            EXPECT_TRUE(window("w8").getAutoHide());
        });
    });
}

TEST(Layout, IsKeptAlsoWhenTheProgramIsEndedByACall)
{
    inAnotherProcess({"w0", "w1"}, [](Program& program) {
        program.ui([&] { program.window().addDockWidget(Qt::BottomDockWidgetArea, &panel(program, "w0")); });
    });
    vfBase::ApplicationInfo::instance().setApplicationName("program");
    vfBase::Settings::loadGlobal();
    EXPECT_EQ(DockWindow::BottomDockArea,
              DockWindowManagerSettings::instance(false)->getDockWindowAreaState("w0"));
    EXPECT_EQ(DockWindow::RightDockArea,
              DockWindowManagerSettings::instance(false)->getDockWindowAreaState("w1"));
}
