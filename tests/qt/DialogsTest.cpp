// SPDX-License-Identifier: MIT
// Options, the list of commands, shortcuts, status bar, splash screen.
#include "Program.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/application/ApplicationSettings.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Settings.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtOptionsContents.h>
#include <velaforge/qt/internal/CommandPalette.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/OptionsDialog.h>
#include <velaforge/qt/internal/ShortcutEditor.h>
#include <velaforge/qt/internal/Splash.h>
#include <velaforge/qt/internal/WindowSettings.h>
#include <velaforge/shell/OptionsPageManager.h>
#include <velaforge/shell/Registry.h>
#include <velaforge/shell/UiOptionsPage.h>

#include <gmock/gmock.h>

#include <QDialogButtonBox>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QSplashScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include <stdexcept>

using testing::ElementsAre;
using testing::HasSubstr;
using vfApplication::CommandPalette;
using vfApplication::ShortcutEditor;
using vfApplication::WindowSettings;
using vfTest::Program;

namespace {

std::vector<std::string> calls;
bool applyThrows = false;

/// Writes down what it is told.
template <int number>
struct Page : vfApplication::UiOptionsPage, vfApplication::QtOptionsContents
{
    ~Page() override { calls.push_back("~" + name()); }
    static std::string name() { return std::string(1, static_cast<char>('a' + number)); }
    const char* getGroupName() override { return number == 2 ? "Zebra" : "Boats"; }
    const char* getGroupIconName() override { return "configure"; }
    int getGroupOrder() override { return number == 2 ? -1 : 0; }
    int getTabOrder() override { return -number; }
    void loadOptions() override { calls.push_back("load " + name()); }
    void saveOptions() override { calls.push_back("save " + name()); }
    void applyOptions() override
    {
        calls.push_back("apply " + name());
        if (applyThrows)
            throw std::runtime_error("not so");
    }
    QString getTitle() override { return QString::fromStdString(name()); }
    QWidget* createWidget(QWidget& parent) override
    {
        calls.push_back("widget " + name());
        return new QLabel(getTitle(), &parent);
    }
};

/// Knows nothing of widgets.
struct PlainPage : vfApplication::UiOptionsPage
{
    void loadOptions() override { calls.emplace_back("load plain"); }
    void saveOptions() override { calls.emplace_back("save plain"); }
    void applyOptions() override { calls.emplace_back("apply plain"); }
};

template <class Class>
struct Record : vfBase::ClassInfo
{
    explicit Record(const char* id)
        : ClassInfo("test", id, id, &vfApplication::UiOptionsPage::s_classInfo, nullptr, int(sizeof(Class)),
                    []() -> vfBase::VfObject* { return new Class; })
    {
        vfApplication::Registry::instance().getOptionsPageManager().addOptionsPageId(id);
    }
};

void announcePages()
{
    static const Record<Page<0>> a("test::A");
    static const Record<Page<1>> b("test::B");
    static const Record<Page<2>> c("test::C");
    static const Record<PlainPage> plain("test::Plain");
}

std::vector<std::string> rows(const QTreeWidget& list, int column = 0)
{
    std::vector<std::string> texts;
    for (int i = 0; i < list.topLevelItemCount(); ++i) {
        if (!list.topLevelItem(i)->isHidden())
            texts.push_back(list.topLevelItem(i)->text(column).toStdString());
    }
    return texts;
}

QTreeWidgetItem* row(const QTreeWidget& list, const char* name)
{
    const auto found = list.findItems(QString::fromUtf8(name), Qt::MatchExactly);
    return found.isEmpty() ? nullptr : found.first();
}

} // namespace

TEST(Options, StandByGroupAndOrder)
{
    announcePages();
    Program program;
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionOptions"); });
        ASSERT_TRUE(program.waitForDialog("options"));
        program.ui([] {
            const auto* groups = Program::dialog()->findChild<QListWidget*>(QStringLiteral("groups"));
            ASSERT_EQ(2, groups->count()); // the group of pages without widgets is not there
            EXPECT_EQ(QStringLiteral("Zebra"), groups->item(0)->text());
            EXPECT_EQ(QStringLiteral("Boats"), groups->item(1)->text());
            EXPECT_FALSE(groups->item(1)->icon().isNull());
            const auto* stack = Program::dialog()->findChild<QStackedWidget*>();
            auto* boats = qobject_cast<QTabWidget*>(stack->widget(1));
            ASSERT_EQ(2, boats->count());
            EXPECT_EQ(QStringLiteral("b"), boats->tabText(0));
            EXPECT_EQ(QStringLiteral("a"), boats->tabText(1));
            EXPECT_EQ(0, stack->currentIndex());
            Program::dialog()->findChild<QListWidget*>()->setCurrentRow(1);
            EXPECT_EQ(1, stack->currentIndex());
            Program::dialog()->reject();
        });
        EXPECT_TRUE(program.waitForNoDialog());
    });
}

TEST(Options, CancelledApplyAndSaveNothing)
{
    announcePages();
    Program program;
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionOptions"); });
        EXPECT_TRUE(program.answer("options", "Cancel"));
        EXPECT_TRUE(program.waitForNoDialog());
        program.ui([] {
            EXPECT_THAT(calls, testing::IsSupersetOf({"load a", "widget a", "load plain", "~a", "~b", "~c"}));
            for (const std::string& call : calls) {
                EXPECT_EQ(std::string::npos, call.find("apply")) << call;
                EXPECT_EQ(std::string::npos, call.find("save")) << call;
            }
        });
    });
}

TEST(Options, AcceptedApplyAllAndThenSaveAll)
{
    announcePages();
    Program program;
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionOptions"); });
        ASSERT_TRUE(program.waitForDialog("options"));
        program.ui([] {
            EXPECT_THAT(calls, ElementsAre("load c", "widget c", "load b", "widget b", "load a", "widget a",
                                           "load plain"));
            calls.clear();
        });
        EXPECT_TRUE(program.answer("options", "OK"));
        EXPECT_TRUE(program.waitForNoDialog());
        program.ui([] {
            calls.resize(std::min<std::size_t>(calls.size(), 8));
            EXPECT_THAT(calls, ElementsAre("apply c", "apply b", "apply a", "apply plain", "save c", "save b",
                                           "save a", "save plain"));
        });
    });
}

TEST(Options, ThatCannotBeAppliedKeepTheDialogOpen)
{
    announcePages();
    applyThrows = true;
    Program program;
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionOptions"); });
        EXPECT_TRUE(program.answer("options", "OK"));
        EXPECT_TRUE(program.waitFor(
            [&] { return program.window().findChild<QDialog*>(QStringLiteral("problems")); }));
        program.ui([] { EXPECT_EQ(QStringLiteral("options"), Program::dialog()->objectName()); });
    });
}

TEST(Options, WithoutPagesSaySo)
{
    Program program;
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionOptions"); });
        ASSERT_TRUE(program.waitForDialog("options"));
        program.ui([] {
            EXPECT_EQ(QStringLiteral("There is nothing to choose."),
                      Program::dialog()->findChild<QLabel*>()->text());
            Program::dialog()->reject();
        });
    });
}

TEST(CommandPalette, RanksWholePiecesBeforeLettersWithGaps)
{
    const auto rank = [](const char* name, const char* typed) {
        return CommandPalette::rank(QString::fromUtf8(name), QString::fromUtf8(typed));
    };
    EXPECT_EQ(0, rank("Save as", "save"));
    EXPECT_EQ(0, rank("Anything", ""));
    EXPECT_EQ(1, rank("Add line", "line"));
    EXPECT_EQ(2, rank("Online", "line"));
    EXPECT_EQ(-1, rank("Save", "x"));
    EXPECT_EQ(-1, rank("Save", "evas")); // in that order
    EXPECT_LT(rank("Save all", "sal"), rank("Select all parts at last", "sal"));
    EXPECT_LT(2, rank("Full screen", "fscr"));
    EXPECT_EQ(rank("Full screen", "fscr"), rank("Full screen", "f scr"));
}

TEST(CommandPalette, FindsAndRunsByKeysAlone)
{
    const vfTest::TemporaryDirectory directory;
    Program program({directory.write("one.sheet", "one\n")});
    program.run([&] {
        program.ui([&] { program.window().activateWindow(); });
        program.ui([&] { program.window().actionTable().action("vfApplicationQt::ActionCommands"); });
        program.ui([&] { program.window().actionTable().applyKeys(); });
        program.start(
            [&] { QTest::keyClick(&program.window(), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier); });
        ASSERT_TRUE(program.waitForDialog("commandPalette"));
        program.ui([] {
            auto* input = Program::dialog()->findChild<QLineEdit*>();
            const auto* list = Program::dialog()->findChild<QTreeWidget*>();
            EXPECT_THAT(rows(*list), testing::IsSupersetOf({"Open", "Add line", "Switch", "About"}));
            QTest::keyClicks(input, QStringLiteral("swi"));
            EXPECT_EQ("Switch", rows(*list)[0]);
            input->clear();
            QTest::keyClicks(input, QStringLiteral("line"));
            EXPECT_EQ("Add line", rows(*list)[0]);
            QTest::keyClick(input, Qt::Key_Down);
            QTest::keyClick(input, Qt::Key_Up);
            EXPECT_EQ(QStringLiteral("Add line"), list->currentItem()->text(0));
        });
        program.start([] { QTest::keyClick(Program::dialog()->findChild<QLineEdit*>(), Qt::Key_Return); });
        EXPECT_TRUE(program.waitFor([&] { return program.sheet()->lines.size() == 2; }));
        EXPECT_TRUE(program.waitForNoDialog());
    });
}

TEST(CommandPalette, OffersWhatCannotBeDoneNowLastAndDoesNotRunIt)
{
    Program program;
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionCommands"); });
        ASSERT_TRUE(program.waitForDialog("commandPalette"));
        program.ui([] {
            auto* dialog = Program::dialog();
            QTest::keyClicks(dialog->findChild<QLineEdit*>(), QStringLiteral("add line"));
            const auto* list = dialog->findChild<QTreeWidget*>();
            EXPECT_EQ("Add line", rows(*list)[0]);
            EXPECT_EQ(Qt::NoItemFlags, list->topLevelItem(0)->flags());
            QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
            EXPECT_TRUE(dialog->isVisible());
            dialog->reject();
        });
        EXPECT_TRUE(program.waitForNoDialog());
    });
}

TEST(CommandPalette, LeavesOutWhatIsForScriptsAndFindsDockWindows)
{
    auto ui = std::make_unique<vfTest::SheetUi>();
    ui->menus = [](vfApplication::CommandItem* root) {
        vfApplication::CommandItem item;
        item.setCommand("sheet::Switch", nullptr);
        item.setProperty("scriptOnly", vfBase::VfVariant(true), nullptr);
        *root << item;
    };
    Program program({}, std::move(ui));
    program.application()
        .getDockWindowManager()
        .addNewOrGetExistingDockWindow("tools", vfApplication::DockWindow::LeftDockArea, true, true, 0,
                                       nullptr)
        .setTitle("Tools", nullptr);
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionCommands"); });
        ASSERT_TRUE(program.waitForDialog("commandPalette"));
        program.ui([] {
            auto* dialog = Program::dialog();
            const auto* list = dialog->findChild<QTreeWidget*>();
            EXPECT_THAT(rows(*list), testing::Not(testing::Contains("Switch")));
            EXPECT_THAT(rows(*list), testing::Contains("About"));
            QTest::keyClicks(dialog->findChild<QLineEdit*>(), QStringLiteral("dock window: t"));
            ASSERT_EQ(1u, rows(*list).size());
            EXPECT_EQ("Dock window: Tools", rows(*list)[0]);
        });
        program.start([] { QTest::keyClick(Program::dialog()->findChild<QLineEdit*>(), Qt::Key_Return); });
        EXPECT_TRUE(program.waitFor([&] {
            return !program.application().getDockWindowManager().findDockWindow("tools")->getVisible();
        }));
    });
}

TEST(Shortcuts, ClashWhenTheyAreTheSameOrOneBeginsTheOther)
{
    const auto clash = [](const char* one, const char* other) {
        return ShortcutEditor::clash(QKeySequence(QString::fromUtf8(one)),
                                     QKeySequence(QString::fromUtf8(other)));
    };
    EXPECT_TRUE(clash("Ctrl+L", "Ctrl+L"));
    EXPECT_TRUE(clash("Ctrl+L", "Ctrl+L, Ctrl+M"));
    EXPECT_TRUE(clash("Ctrl+L, Ctrl+M", "Ctrl+L"));
    EXPECT_FALSE(clash("Ctrl+L", "Ctrl+M"));
    EXPECT_FALSE(clash("Ctrl+L, Ctrl+M", "Ctrl+L, Ctrl+N"));
    EXPECT_FALSE(clash("", ""));
}

TEST(Shortcuts, ThatClashAreToldAndNotTakenOver)
{
    Program program;
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionShortcuts"); });
        ASSERT_TRUE(program.waitForDialog("shortcutEditor"));
        program.ui([] {
            auto* editor = qobject_cast<ShortcutEditor*>(Program::dialog());
            const auto* list = editor->findChild<QTreeWidget*>();
            auto* ok = editor->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
            EXPECT_TRUE(ok->isEnabled());
            ASSERT_NE(nullptr, row(*list, "Open"));
            EXPECT_EQ(QStringLiteral("Ctrl+O"), row(*list, "Open")->text(1));
            editor->setKeys(QStringLiteral("sheet::Switch"), {QKeySequence(QStringLiteral("Ctrl+O"))});
            EXPECT_EQ(
                QStringList({QStringLiteral("sheet::Switch"), QStringLiteral("vfApplicationQt::ActionOpen")}),
                editor->clashes());
            bool isTold = false;
            for (const QLabel* label : editor->findChildren<QLabel*>())
                isTold =
                    isTold || label->text() == QStringLiteral("These clash: Open (Ctrl+O), Switch (Ctrl+O)");
            EXPECT_TRUE(isTold);
            EXPECT_FALSE(ok->isEnabled());
            editor->accept();
            EXPECT_TRUE(editor->isVisible());
            editor->reject();
        });
        EXPECT_TRUE(program.waitForNoDialog());
        EXPECT_TRUE(WindowSettings::instance().shortcuts.empty());
    });
}

TEST(Shortcuts, ThatAreChangedWorkAtOnceAndInTheNextRun)
{
    Program program;
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionShortcuts"); });
        ASSERT_TRUE(program.waitForDialog("shortcutEditor"));
        program.ui([] {
            auto* editor = qobject_cast<ShortcutEditor*>(Program::dialog());
            auto* list = editor->findChild<QTreeWidget*>();
            auto* search = editor->findChild<QLineEdit*>();
            QTest::keyClicks(search, QStringLiteral("swit"));
            EXPECT_THAT(rows(*list), ElementsAre("Switch"));
            list->setCurrentItem(row(*list, "Switch"));
            editor->findChild<QKeySequenceEdit*>()->setKeySequence(QKeySequence(QStringLiteral("Ctrl+J")));
            EXPECT_EQ(QStringLiteral("Ctrl+J"), row(*list, "Switch")->text(1));
            editor->setKeys(QStringLiteral("vfApplicationQt::ActionOpen"), {});
            editor->accept();
        });
        EXPECT_TRUE(program.waitForNoDialog());
        program.ui([&] {
            EXPECT_EQ(QKeySequence(QStringLiteral("Ctrl+J")), program.action("sheet::Switch")->shortcut());
            EXPECT_TRUE(program.action("vfApplicationQt::ActionOpen")->shortcuts().isEmpty());
        });
        EXPECT_THAT(WindowSettings::instance().shortcuts,
                    ElementsAre(testing::Pair("sheet::Switch", "Ctrl+J"),
                                testing::Pair("vfApplicationQt::ActionOpen", "")));
    });
    // They come back from the settings file.
    WindowSettings::instance().shortcuts.clear();
    vfBase::Settings::loadGlobal();
    EXPECT_EQ(2u, WindowSettings::instance().shortcuts.size());
}

TEST(Shortcuts, GoBackToWhatIsDeclared)
{
    WindowSettings::instance().shortcuts["vfApplicationQt::ActionOpen"] = "Ctrl+J";
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    Program program;
    program.run([&] {
        program.ui([&] {
            WindowSettings::instance().shortcuts["vfApplicationQt::ActionOpen"] = "Ctrl+J";
            program.window().actionTable().applyKeys();
        });
        program.start([&] { program.invoke("vfApplicationQt::ActionShortcuts"); });
        ASSERT_TRUE(program.waitForDialog("shortcutEditor"));
        program.ui([] {
            auto* editor = qobject_cast<ShortcutEditor*>(Program::dialog());
            EXPECT_EQ(QStringLiteral("Ctrl+J"), row(*editor->findChild<QTreeWidget*>(), "Open")->text(1));
            editor->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::RestoreDefaults)->click();
            EXPECT_EQ(QStringLiteral("Ctrl+O"), row(*editor->findChild<QTreeWidget*>(), "Open")->text(1));
            editor->accept();
        });
        EXPECT_TRUE(program.waitForNoDialog());
        EXPECT_TRUE(WindowSettings::instance().shortcuts.empty());
    });
}

TEST(QtStatusBar, ShowsMessagesFieldsAndProgress)
{
    Program program;
    program.run([&] {
        program.ui([&] {
            vfApplication::StatusBar& bar = program.application().getStatusBar();
            QStatusBar& shown = *program.window().statusBar();
            bar.updateStatus(vfApplication::StatusBarMessage, "at work", 0);
            EXPECT_EQ(QStringLiteral("at work"), shown.currentMessage());
            bar.updateStatus(vfApplication::StatusBarMessage, nullptr, 0);
            EXPECT_EQ(QString(), shown.currentMessage());
            bar.updateStatus(vfApplication::StatusBarSelection, "hull", 3);
            const auto* selection = shown.findChild<QLabel*>(QStringLiteral("status1"));
            EXPECT_EQ(QStringLiteral("hull (3)"), selection->text());
            EXPECT_TRUE(selection->isVisible());
            bar.updateStatus(vfApplication::StatusBarSelection, nullptr, 0);
            EXPECT_FALSE(selection->isVisible());
            bar.updateStatus(static_cast<vfApplication::StatusBarTextEnum>(42), "extra", 7);
            EXPECT_EQ(QStringLiteral("extra"), shown.findChild<QLabel*>(QStringLiteral("status42"))->text());

            const auto* progress = shown.findChild<QProgressBar*>(QStringLiteral("progress"));
            EXPECT_FALSE(progress->isVisible());
            bar.updateProgressText("reading");
            bar.updateProgressPercent(-5);
            EXPECT_TRUE(progress->isVisible());
            EXPECT_EQ(0, progress->value());
            bar.updateProgressPercent(40);
            EXPECT_EQ(40, progress->value());
            bar.updateProgressPercent(100);
            EXPECT_FALSE(progress->isVisible());
            bar.updateProgressPercent(250);
            EXPECT_EQ(100, progress->value());
        });
    });
}

TEST(QtStatusBar, GoesQuietWhenItsWindowIsGone)
{
    int argc = 3;
    char name[] = "program";
    char option[] = "-platform";
    char platform[] = "offscreen";
    char* argv[] = {name, option, platform, nullptr};
    const QApplication application(argc, argv);
    auto bar = std::make_unique<QStatusBar>();
    vfApplication::QtStatusBar shown(*bar);
    shown.updateProgressPercent(10);
    bar.reset();
    shown.updateStatus(vfApplication::StatusBarMessage, "this is not shown", 0);
    shown.updateProgressPercent(20);
    shown.updateProgressText("nor this");
    EXPECT_EQ(nullptr, shown.getStatusBarInterface());
}

TEST(Splash, StandsAsTheSettingsSay)
{
    Program program;
    vfApplication::ApplicationSettings& settings = *vfApplication::ApplicationSettings::instance(false);
    EXPECT_EQ(int(Qt::AlignLeft | Qt::AlignBottom), vfApplication::Splash::alignment());
    settings.setSplashHorizontalAlignmet("right");
    settings.setSplashVerticalAlignmet("TOP");
    EXPECT_EQ(int(Qt::AlignRight | Qt::AlignTop), vfApplication::Splash::alignment());
    settings.setSplashHorizontalAlignmet("Center");
    settings.setSplashVerticalAlignmet("Center");
    EXPECT_EQ(int(Qt::AlignHCenter | Qt::AlignVCenter), vfApplication::Splash::alignment());
    settings.setSplashHorizontalAlignmet("sideways");
    settings.setSplashVerticalAlignmet("");
    EXPECT_EQ(int(Qt::AlignLeft | Qt::AlignBottom), vfApplication::Splash::alignment());
}

TEST(Splash, ShowsWhileTheFilesOfTheCommandLineAreOpenedAndGoesWhenTheWindowComes)
{
    const vfTest::TemporaryDirectory directory;
    const std::string picture = directory.file("splash.png");
    vfBase::ApplicationInfo::instance().setSplashImageName(picture.c_str());
    Program program({directory.write("one.sheet", "one\n")});
    QString shown;
    {
        QImage image(300, 200, QImage::Format_RGB32);
        image.fill(Qt::darkBlue);
        ASSERT_TRUE(image.save(QString::fromStdString(picture)));
    }
    program.onInitialized = [&] {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* splash = qobject_cast<QSplashScreen*>(widget);
            if (!splash)
                continue;
            EXPECT_TRUE(splash->isVisible());
            QObject::connect(splash, &QSplashScreen::messageChanged,
                             [&shown](const QString& text) { shown += text; });
        }
    };
    program.run([&] {
        EXPECT_THAT(shown.toStdString(), HasSubstr("Opening one.sheet"));
        EXPECT_TRUE(program.waitFor([] {
            const QWidgetList widgets = QApplication::topLevelWidgets();
            return std::none_of(widgets.begin(), widgets.end(),
                                [](QWidget* widget) { return qobject_cast<QSplashScreen*>(widget); });
        }));
    });
}
