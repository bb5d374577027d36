// SPDX-License-Identifier: MIT
#include "Program.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtToolbar.h>
#include <velaforge/qt/internal/ActionTable.h>
#include <velaforge/qt/internal/MainWindow.h>

#include <gmock/gmock.h>

#include <osg/Notify>

#include <QColorDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <functional>
#include <sstream>
#include <utility>

using testing::ElementsAre;
using testing::HasSubstr;
using vfApplication::ActionTable;
using vfApplication::CommandItem;
using vfApplication::QtApplication;
using vfBase::VfVariant;
using vfTest::Program;
using vfTest::SheetUi;
using vfTest::TemporaryDirectory;

namespace {

CommandItem add(CommandItem parent, const char* name)
{
    CommandItem item(&parent);
    item.setCommand(name, nullptr);
    return item;
}

/// What a menu shows, line by line: "Open…", "-" for a separator, "Sub >" with what is in it behind.
std::vector<std::string> shown(const QWidget& menu)
{
    std::vector<std::string> lines;
    for (const QAction* action : menu.actions()) {
        if (action->isSeparator()) {
            lines.emplace_back("-");
        } else if (action->menu()) {
            lines.push_back(ActionTable::plainText(action->text()).toStdString() + " >");
            for (const std::string& line : shown(*action->menu()))
                lines.push_back("  " + line);
        } else {
            lines.push_back(ActionTable::plainText(action->text()).toStdString());
        }
    }
    return lines;
}

/// Does something when it is made, once.
struct Growing : vfApplication::CommandPrivate
{
    Growing()
    {
        if (const auto grow = std::exchange(onMade, {}))
            grow();
    }
    void invoke(const VfVariant&) override {}

    static std::function<void()> onMade;
};

std::function<void()> Growing::onMade;

const vfBase::ClassInfo growing("test", "Growing", "test::Growing",
                                &vfApplication::CommandPrivate::s_classInfo, nullptr, sizeof(Growing),
                                []() -> vfBase::VfObject* { return new Growing; });

/// Has a table know two hundred commands more.
void addCommands(ActionTable& table, const char* kind)
{
    for (int i = 0; i < 200; ++i) {
        CommandItem item;
        item.setCommand("sheet::Switch", nullptr);
        item.setProperty("argument", VfVariant((kind + std::to_string(i)).c_str()), nullptr);
        table.action(item);
    }
}

QMenu* menu(const Program& program, const char* title)
{
    for (const QAction* action : program.window().menuBar()->actions()) {
        if (action->menu() && ActionTable::plainText(action->text()) == QLatin1String(title))
            return action->menu();
    }
    return nullptr;
}

/// Opens and closes a menu, as a person does who looks at it.
void look(QMenu& opened)
{
    opened.popup(QPoint(10, 10));
    opened.close();
}

std::unique_ptr<SheetUi> declaring(SheetUi::Declare menus, SheetUi::Declare toolbars = {})
{
    auto ui = std::make_unique<SheetUi>();
    ui->menus = std::move(menus);
    ui->toolbars = toolbars ? std::move(toolbars) : [](CommandItem*) {};
    return ui;
}

/// Keeps the argument that the user was asked for.
struct Asking : vfApplication::CommandPrivate
{
    Asking()
    {
        getProperties()["prompt"] = VfVariant("Which?");
        getProperties()["promptKind"] = VfVariant(kind);
        getProperties()["promptFilter"] = VfVariant(filter);
        getProperties()["promptValue"] = VfVariant(proposal);
    }
    void invoke(const VfVariant& argument) override
    {
        ++calls;
        given = argument;
    }

    static std::string kind;
    static std::string filter;
    static std::string proposal;
    static int calls;
    static VfVariant given;
};

std::string Asking::kind;
std::string Asking::filter;
std::string Asking::proposal;
int Asking::calls = 0;
VfVariant Asking::given;

const vfBase::ClassInfo asking("menus", "Asking", "menus::Asking",
                               &vfApplication::CommandPrivate::s_classInfo, nullptr, sizeof(Asking),
                               []() -> vfBase::VfObject* { return new Asking; });

struct Extra : vfApplication::Module
{
    explicit Extra(const vfApplication::UiSetup& setup) : Module(setup) {}
    const char* getId() const override { return "test::Extra"; }
    const char* getModuleName() const override { return "Extra"; }
};

} // namespace

TEST(Menus, TheLeastDeclarationHasOpenExitAndAbout)
{
    Program program;
    program.run([&] {
        program.ui([&] {
            EXPECT_THAT(shown(*program.window().menuBar()), ElementsAre("File >", "  Open", "  Exit"));
            const auto& toolbars = QtApplication::instance()->getToolbars();
            ASSERT_EQ(1u, toolbars.size());
            EXPECT_EQ(QStringLiteral("Standard"), toolbars[0]->getWidget().windowTitle());
            EXPECT_THAT(shown(toolbars[0]->getWidget()), ElementsAre("About"));
        });
    });
}

TEST(Menus, NestWithSeparatorsAndLeavesInTheBar)
{
    Program program({}, declaring([](CommandItem* root) {
                        CommandItem edit = add(*root, "&Edit");
                        edit << "sheet::AddLine"
                             << "";
                        add(edit, "&More") << "sheet::Fail";
                        *root << "sheet::Switch";
                    }));
    program.run([&] {
        program.ui([&] {
            EXPECT_THAT(shown(*program.window().menuBar()),
                        ElementsAre("Edit >", "  Add line", "  -", "  More >", "    Fail", "Switch"));
        });
    });
}

TEST(Menus, OfOneNameAreOneAndACommandStandsThereOnce)
{
    SheetUi extra;
    extra.menus = [](CommandItem* root) {
        add(*root, "&Edit") << "sheet::AddLine"
                            << "sheet::Fail";
        add(*root, "&Extra") << "sheet::AddLine";
    };
    extra.toolbars = [](CommandItem*) {};
    Program program({}, declaring([](CommandItem* root) {
                        add(*root, "&Edit") << "sheet::Switch"
                                            << "sheet::AddLine";
                    }));
    vfApplication::ModuleRegistry::instance(false)->addModule(new Extra(extra));
    program.run([&] {
        program.ui([&] {
            EXPECT_THAT(shown(*program.window().menuBar()),
                        ElementsAre("Edit >", "  Switch", "  Add line", "  Fail", "Extra >", "  Add line"));
            EXPECT_EQ(menu(program, "Edit")->actions()[1], menu(program, "Extra")->actions()[0]);
        });
    });
}

TEST(Menus, ADeclarationThatContainsItselfEnds)
{
    CommandItem loop;
    loop.setCommand("Loop", nullptr);
    loop << "sheet::Switch" << loop;
    Program program({}, declaring([loop](CommandItem* root) { *root << loop; }));
    program.run([&] {
        program.ui([&] { EXPECT_THAT(shown(*program.window().menuBar()), testing::Contains("  Switch")); });
    });
    loop.remove("Loop"); // so that it can go
}

TEST(Menus, AnItemsPropertiesSayHowItLooks)
{
    Program program({}, declaring([](CommandItem* root) {
                        CommandItem item = add(add(*root, "Edit"), "sheet::AddLine");
                        item.setProperty("text", VfVariant("A&ppend"), nullptr);
                        item.setProperty("toolTip", VfVariant("Puts a line at the end"), nullptr);
                        item.setProperty("shortcut", VfVariant("Ctrl+L; Ctrl+Shift+L"), nullptr);
                        item.setProperty("icon", VfVariant("edit-undo"), nullptr);
                        item.setProperty("argument", VfVariant("milk"), nullptr);
                        item.setProperty("checkable", VfVariant(true), nullptr);
                    }));
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    program.run([&] {
        program.ui([&] {
            program.open(path);
            const QAction* action = menu(program, "Edit")->actions()[0];
            EXPECT_EQ(QStringLiteral("A&ppend"), action->text());
            EXPECT_EQ(QStringLiteral("Puts a line at the end (Ctrl+L)"), action->toolTip());
            EXPECT_EQ(QKeySequence::listFromString(QStringLiteral("Ctrl+L; Ctrl+Shift+L")),
                      action->shortcuts());
            EXPECT_FALSE(action->icon().isNull());
            EXPECT_TRUE(action->isCheckable());
            QtApplication::instance()->updateActions();
            menu(program, "Edit")->actions()[0]->trigger();
            EXPECT_EQ("one\nmilk\n", program.sheet()->text());
        });
    });
}

TEST(Menus, ACommandSaysOfItselfWhatTheItemDoesNot)
{
    Program program({}, declaring([](CommandItem* root) {
                        CommandItem edit = add(*root, "Edit");
                        edit << "sheet::Switch";
                    }));
    program.run([&] {
        program.ui([&] {
            QAction* action = menu(program, "Edit")->actions()[0];
            EXPECT_EQ(QStringLiteral("&Switch"), action->text());
            EXPECT_TRUE(action->isCheckable());
            EXPECT_FALSE(action->isChecked());
            action->trigger();
            EXPECT_TRUE(vfTest::Sheet::isSwitchOn);
            EXPECT_TRUE(action->isChecked());
            vfTest::Sheet::isSwitchOn = false; // without a notification
            look(*menu(program, "Edit"));
            EXPECT_FALSE(action->isChecked());
        });
    });
}

TEST(Menus, ANameThatNobodyRegisteredIsDisabledAndToldOnce)
{
    vfBase::NotifyHandler::instance().install();
    osg::setNotifyLevel(osg::WARN);
    testing::internal::CaptureStderr();
    Program program({}, declaring([](CommandItem* root) { add(*root, "Edit") << "sheet::NoSuchThing"; }));
    program.run([&] {
        program.ui([&] {
            EXPECT_FALSE(program.action("sheet::NoSuchThing")->isEnabled());
            look(*menu(program, "Edit"));
            look(*menu(program, "Edit"));
            QtApplication::instance()->updateActions();
        });
    });
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_THAT(told, HasSubstr("sheet::NoSuchThing, which is not registered"));
    EXPECT_EQ(told.find("NoSuchThing"), told.rfind("NoSuchThing"));
}

TEST(Menus, ANameThatIsRegisteredLaterCanBeChosenThen)
{
    struct Late : vfApplication::CommandPrivate
    {};
    Program program({}, declaring([](CommandItem* root) { add(*root, "Edit") << "sheet::Late"; }));
    program.run([&] {
        program.ui([&] {
            EXPECT_FALSE(program.action("sheet::Late")->isEnabled());
            const vfBase::ClassInfo record("sheet", "Late", "sheet::Late",
                                           &vfApplication::CommandPrivate::s_classInfo, nullptr, sizeof(Late),
                                           []() -> vfBase::VfObject* { return new Late; });
            look(*menu(program, "Edit"));
            EXPECT_TRUE(program.action("sheet::Late")->isEnabled());
        });
    });
}

TEST(Menus, WhatChangesADocumentNeedsOne)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({}, declaring([](CommandItem* root) { add(*root, "Edit") << "sheet::AddLine"; }));
    program.run([&] {
        EXPECT_FALSE(program.ui([&] { return program.action("sheet::AddLine")->isEnabled(); }));
        program.ui([&] { program.open(path); });
        EXPECT_TRUE(program.waitFor([&] { return program.action("sheet::AddLine")->isEnabled(); }));
        program.ui([&] { program.application().closeDocument(program.sheet()); });
        EXPECT_TRUE(program.waitFor([&] { return !program.action("sheet::AddLine")->isEnabled(); }));
    });
}

TEST(Menus, UndoAndRedoNameWhatTheyWouldUndoAndRedo)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({}, declaring([](CommandItem* root) {
                        add(*root, "Edit") << "vfApplicationQt::ActionUndo"
                                           << "vfApplicationQt::ActionRedo";
                    }));
    program.run([&] {
        program.ui([&] {
            program.open(path);
            QAction* undo = program.action("vfApplicationQt::ActionUndo");
            QAction* redo = program.action("vfApplicationQt::ActionRedo");
            EXPECT_EQ(QStringLiteral("&Undo"), undo->text());
            EXPECT_FALSE(undo->isEnabled());
            program.invoke("sheet::AddLine", "two");
            EXPECT_EQ(QStringLiteral("&Undo: Add line"), undo->text());
            EXPECT_TRUE(undo->isEnabled());
            EXPECT_FALSE(redo->isEnabled());
            undo->trigger();
            EXPECT_EQ("one\n", program.sheet()->text());
            EXPECT_EQ(QStringLiteral("&Redo: Add line"), redo->text());
            EXPECT_TRUE(redo->isEnabled());
            redo->trigger();
            EXPECT_EQ("one\ntwo\n", program.sheet()->text());
        });
        // Changes of the history by other code are noticed, too.
        program.ui([&] { program.sheet()->getCommandProcessor()->undo(); });
        EXPECT_TRUE(
            program.waitFor([&] { return program.action("vfApplicationQt::ActionRedo")->isEnabled(); }));
    });
}

TEST(Menus, UndoBackToWhatWasSavedLeavesNoChanges)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program;
    program.run([&] {
        program.ui([&] {
            program.open(path);
            program.invoke("sheet::AddLine", "two");
            EXPECT_TRUE(program.sheet()->save().success());
            program.invoke("sheet::AddLine", "three");
            EXPECT_TRUE(program.sheet()->isModified());
            program.invoke("vfApplicationQt::ActionUndo");
            EXPECT_FALSE(program.sheet()->isModified());
            program.invoke("vfApplicationQt::ActionUndo");
            EXPECT_TRUE(program.sheet()->isModified());
        });
    });
}

TEST(Menus, ACommandThatFailsOrRaisesIsToldInTheStatusBar)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program;
    program.run([&] {
        program.ui([&] {
            program.open(path);
            QString failed;
            QObject::connect(&program.window().actionTable(), &ActionTable::failed, &program.window(),
                             [&failed](const QString& command, const QString& reason) {
                                 failed = command + QLatin1Char('|') + reason;
                             });
            EXPECT_FALSE(program.invoke("sheet::Fail"));
            EXPECT_EQ(QStringLiteral("Fail|The command could not be carried out."), failed);
            EXPECT_FALSE(program.invoke("sheet::Throw"));
            EXPECT_EQ(QStringLiteral("Throw|it burns"), failed);
            EXPECT_FALSE(program.invoke("sheet::Throw", "number"));
            EXPECT_EQ(QStringLiteral("Throw|An unknown error occurred."), failed);
            EXPECT_FALSE(program.invoke("sheet::NoSuchThing"));
            EXPECT_TRUE(program.invoke("sheet::AddLine", "two"));
        });
    });
}

TEST(Menus, ACommandThatWantsAnArgumentIsGivenTheAnswer)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program;
    program.run([&] {
        program.ui([&] { program.open(path); });
        program.start([&] { program.invoke("sheet::AskFirst"); });
        ASSERT_TRUE(program.waitFor([] { return Program::dialog(); }));
        program.ui([] { Program::dialog()->reject(); });
        EXPECT_EQ("one\n", program.ui([&] { return program.sheet()->text(); }));
        program.start([&] { program.invoke("sheet::AskFirst"); });
        ASSERT_TRUE(program.waitFor([] { return Program::dialog(); }));
        program.ui([] { QTest::keyClicks(Program::dialog()->focusWidget(), QStringLiteral("butter")); });
        program.ui([] { Program::dialog()->accept(); });
        EXPECT_TRUE(program.waitFor([&] { return program.sheet()->text() == "one\nbutter\n"; }));
        program.ui([&] { program.invoke("sheet::AskFirst", "given"); });
        EXPECT_EQ("one\nbutter\ngiven\n", program.ui([&] { return program.sheet()->text(); }));
    });
}

TEST(Menus, ACommandThatWantsFilesIsGivenThoseThatAreChosen)
{
    const TemporaryDirectory directory;
    const std::string one = directory.write("one.sheet", "one\n");
    const std::string two = directory.write("two \xC3\xBC.txt", "two\n");
    Asking::kind = "files";
    Program program;
    program.run([&] {
        const auto open = [&](const char* filter) {
            Asking::filter = filter;
            program.start([&] { program.invoke("menus::Asking"); });
            return program.waitFor([] { return qobject_cast<QFileDialog*>(Program::dialog()); });
        };
        const auto filters = [] { return qobject_cast<QFileDialog*>(Program::dialog())->nameFilters(); };
        ASSERT_TRUE(open(""));
        EXPECT_EQ(QStringList({QStringLiteral("All files (*)")}), program.ui(filters));
        program.ui([] { Program::dialog()->reject(); });
        EXPECT_TRUE(program.waitForNoDialog());
        EXPECT_EQ(0, program.ui([] { return Asking::calls; }));

        ASSERT_TRUE(open("sheet,txt"));
        EXPECT_EQ(
            QStringList({QStringLiteral("Suitable files (*.sheet *.txt)"), QStringLiteral("All files (*)")}),
            program.ui(filters));
        program.ui([&] {
            Program::dialog()
                ->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
                ->setText(QStringLiteral("\"%1\" \"%2\"")
                              .arg(QString::fromStdString(one), QString::fromStdString(two)));
            QMetaObject::invokeMethod(Program::dialog(), "accept", Qt::QueuedConnection);
        });
        EXPECT_TRUE(program.waitFor([] { return Asking::calls == 1; }));
        program.ui([&] {
            const vfBase::StringList paths = Asking::given.toStringList();
            ASSERT_EQ(2u, paths.size());
            EXPECT_EQ(one, paths.get(0).str());
            EXPECT_EQ(two, paths.get(1).str());
        });
    });
}

TEST(Menus, ACommandThatWantsAColourProposesOneAndIsGivenTheOther)
{
    Asking::kind = "color";
    Program program;
    program.run([&] {
        const auto dialog = [] { return qobject_cast<QColorDialog*>(Program::dialog()); };
        const std::pair<const char*, QColor> proposals[] = {
            {"1,0,0", Qt::red}, {"blue", Qt::white}, {"", Qt::white}};
        for (const auto& [text, color] : proposals) {
            Asking::proposal = text;
            program.start([&] { program.invoke("menus::Asking"); });
            ASSERT_TRUE(program.waitFor(dialog));
            EXPECT_EQ(color.name().toStdString(),
                      program.ui([&] { return dialog()->currentColor().name().toStdString(); }));
            program.ui([&] { dialog()->reject(); });
            EXPECT_TRUE(program.waitForNoDialog());
        }
        EXPECT_EQ(0, program.ui([] { return Asking::calls; }));
        program.start([&] { program.invoke("menus::Asking"); });
        ASSERT_TRUE(program.waitFor(dialog));
        program.ui([&] {
            dialog()->setCurrentColor(QColor(51, 102, 255));
            dialog()->accept();
        });
        EXPECT_TRUE(program.waitFor([] { return Asking::calls == 1; }));
        EXPECT_EQ("0.2,0.4,1", program.ui([] { return Asking::given.toString().str(); }));
    });
}

TEST(Menus, AKeyRunsItsCommand)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({}, declaring([](CommandItem* root) {
                        CommandItem item = add(add(*root, "Edit"), "sheet::AddLine");
                        item.setProperty("shortcut", VfVariant("Ctrl+L"), nullptr);
                        item.setProperty("argument", VfVariant("by key"), nullptr);
                    }));
    program.run([&] {
        program.ui([&] {
            program.open(path);
            program.window().activateWindow();
        });
        ASSERT_TRUE(program.waitFor([&] { return program.window().isActiveWindow(); }));
        program.ui([&] { QTest::keyClick(&program.window(), Qt::Key_L, Qt::ControlModifier); });
        EXPECT_EQ("one\nby key\n", program.ui([&] { return program.sheet()->text(); }));
    });
}

TEST(Menus, AKeyRunsItsCommandInWindowsOfDocumentsAndNotInDialogs)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    auto ui = declaring([](CommandItem* root) {
        CommandItem item = add(add(*root, "Edit"), "sheet::AddLine");
        item.setProperty("shortcut", VfVariant("L"), nullptr);
        item.setProperty("argument", VfVariant("by key"), nullptr);
    });
    ui->mode = vfApplication::UiSetup::SeparateWindows;
    Program program({path}, std::move(ui));
    program.run([&] {
        const auto lines = [&] { return program.ui([&] { return program.sheet()->lines.size(); }); };
        program.ui([&] { QtApplication::instance()->showProblem("one", "two"); });
        QWidget* problems = program.ui([&] {
            auto* dialog = program.window().findChild<QWidget*>(QStringLiteral("problems"));
            dialog->activateWindow();
            return dialog;
        });
        ASSERT_TRUE(program.waitFor([&] { return problems->isActiveWindow(); }));
        program.ui([&] { QTest::keyClick(problems, Qt::Key_L); });
        EXPECT_EQ(1u, lines());
        QWidget* own = program.ui([&] {
            QWidget* window =
                dynamic_cast<vfTest::SheetView*>(program.sheet()->getFirstView())->getWidget()->window();
            problems->hide();
            window->activateWindow();
            return window;
        });
        ASSERT_NE(&program.window(), own);
        ASSERT_TRUE(program.waitFor([&] { return own->isActiveWindow(); }));
        program.ui([&] { QTest::keyClick(own, Qt::Key_L); });
        EXPECT_EQ(2u, lines());
    });
}

TEST(Menus, OfTheActiveViewJoinThoseOfTheWindow)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    auto ui = declaring([](CommandItem* root) { add(*root, "&File") << "vfApplicationQt::ActionOpen"; });
    ui->viewMenus = [](const std::string& viewName, CommandItem* root) {
        if (viewName != "SheetView")
            return;
        add(*root, "&File") << "vfApplicationQt::ActionOpen"
                            << "sheet::AddLine";
        add(*root, "&Sheet") << "sheet::Switch";
    };
    Program program({}, std::move(ui));
    program.run([&] {
        program.ui([&] {
            EXPECT_THAT(shown(*program.window().menuBar()), ElementsAre("File >", "  Open"));
            program.open(path);
            EXPECT_THAT(shown(*program.window().menuBar()),
                        ElementsAre("File >", "  Open", "  Add line", "Sheet >", "  Switch"));
        });
    });
}

TEST(Menus, AreMadeAnewWhenAModuleCame)
{
    SheetUi extra;
    extra.menus = [](CommandItem* root) { add(*root, "&Extra") << "sheet::Switch"; };
    extra.toolbars = [](CommandItem* root) { add(*root, "Extra bar") << "sheet::Switch"; };
    Program program({}, declaring([](CommandItem* root) { add(*root, "&File") << "sheet::AddLine"; }));
    program.run([&] {
        program.ui([&] {
            vfApplication::ModuleRegistry::instance(false)->addModule(new Extra(extra));
            QtApplication::instance()->rebuildMenus();
            EXPECT_THAT(shown(*program.window().menuBar()),
                        ElementsAre("File >", "  Add line", "Extra >", "  Switch"));
            ASSERT_EQ(1u, QtApplication::instance()->getToolbars().size());
            EXPECT_EQ(QStringLiteral("Extra bar"),
                      QtApplication::instance()->getToolbars()[0]->getWidget().windowTitle());
        });
    });
}

TEST(Toolbars, FollowTheHintsOfTheirItems)
{
    Program program({}, declaring([](CommandItem*) {},
                                  [](CommandItem* root) {
                                      CommandItem bar = add(*root, "Bar");
                                      add(bar, "sheet::AddLine").setToolbarHint(CommandItem::TextUnderIcon);
                                      bar << "";
                                      add(bar, "sheet::Switch").setToolbarHint(CommandItem::TextOnly);
                                      add(bar, "sheet::Fail");
                                      CommandItem more = add(bar, "More");
                                      more << "sheet::Throw";
                                  }));
    program.run([&] {
        program.ui([&] {
            QToolBar& bar = QtApplication::instance()->getToolbars()[0]->getWidget();
            const QList<QAction*> actions = bar.actions();
            ASSERT_EQ(5, actions.size());
            const auto style = [&](int index) {
                return qobject_cast<QToolButton*>(bar.widgetForAction(actions[index]))->toolButtonStyle();
            };
            EXPECT_EQ(Qt::ToolButtonTextUnderIcon, style(0));
            EXPECT_TRUE(actions[1]->isSeparator());
            EXPECT_EQ(Qt::ToolButtonTextOnly, style(2));
            EXPECT_EQ(bar.toolButtonStyle(), style(3));
            ASSERT_NE(nullptr, actions[4]->menu());
            EXPECT_THAT(shown(*actions[4]->menu()), ElementsAre("Throw"));
        });
    });
}

TEST(Toolbars, AreShownHiddenAndNamedByTheirInterface)
{
    Program program;
    program.run([&] {
        program.ui([&] {
            vfApplication::QtToolbar& toolbar = *QtApplication::instance()->getToolbars()[0];
            toolbar.toolbarOperationB();
            EXPECT_TRUE(toolbar.getWidget().isHidden());
            toolbar.toolbarOperationA();
            EXPECT_FALSE(toolbar.getWidget().isHidden());
            EXPECT_EQ(&program.application(), toolbar.getApplication());
            toolbar.getWidget().setWindowTitle(QStringLiteral("other"));
            toolbar.toolbarOperationD();
            EXPECT_EQ(QStringLiteral("Standard"), toolbar.getWidget().windowTitle());
            program.action("vfApplicationQt::CommandAbout")->setEnabled(false);
            toolbar.toolbarOperationC();
            EXPECT_TRUE(program.action("vfApplicationQt::CommandAbout")->isEnabled());
        });
    });
}

TEST(Menus, OfSeveralCommandsOneIsOnWithARadioMark)
{
    const vfTest::TemporaryDirectory directory;
    auto ui = std::make_unique<SheetUi>();
    ui->menus = [](CommandItem* root) {
        CommandItem test = add(*root, "&Test");
        for (const char* command : {"sheet::Switch", "sheet::Fail"}) {
            CommandItem item;
            item.setCommand(command, nullptr);
            item.setProperty("checkable", VfVariant(true), nullptr);
            item.setProperty("group", VfVariant("one of two"), nullptr);
            test << item;
        }
    };
    Program program({}, std::move(ui));
    program.run([&] {
        program.ui([&] {
            QMenu* test = menu(program, "Test");
            ASSERT_NE(nullptr, test);
            const QList<QAction*> actions = test->actions();
            ASSERT_EQ(2, actions.size());
            for (const QAction* action : actions) {
                ASSERT_NE(nullptr, action->actionGroup());
                EXPECT_TRUE(action->actionGroup()->isExclusive()) << "which is drawn as a radio mark";
                EXPECT_FALSE(action->isChecked());
            }
            EXPECT_EQ(actions[0]->actionGroup(), actions[1]->actionGroup());
            actions[0]->trigger();
            EXPECT_TRUE(actions[0]->isChecked());
            actions[0]->trigger();
            EXPECT_FALSE(actions[0]->isChecked()) << "the command says what is on";
        });
    });
}

TEST(Menus, ToolTipsSayTheKey)
{
    Program program;
    program.run([&] {
        program.ui([&] {
            const QAction* open = program.action("vfApplicationQt::ActionOpen");
            ASSERT_NE(nullptr, open);
            EXPECT_EQ(QStringLiteral("Open files (Ctrl+O)"), open->toolTip());
            const QAction* about = program.action("vfApplicationQt::CommandAbout");
            ASSERT_NE(nullptr, about);
            EXPECT_EQ(QStringLiteral("About"), about->toolTip());
        });
    });
}

TEST(ActionTable, MakesLabelsOfTheNamesOfClasses)
{
    EXPECT_EQ(QStringLiteral("Add line"), ActionTable::labelFor("sheet::AddLine"));
    EXPECT_EQ(QStringLiteral("Open"), ActionTable::labelFor("vfApplicationQt::ActionOpen"));
    EXPECT_EQ(QStringLiteral("About"), ActionTable::labelFor("vfApplicationQt::CommandAbout"));
    EXPECT_EQ(QStringLiteral("Command"), ActionTable::labelFor("Command"));
    EXPECT_EQ(QString(), ActionTable::labelFor(""));
    EXPECT_EQ(QStringLiteral("Fish & chips"), ActionTable::plainText(QStringLiteral("&Fish && chips…")));
}

TEST(ActionTable, KeysThatTwoWantStayWithTheFirst)
{
    Program program(
        {}, declaring([](CommandItem* root) {
            CommandItem edit = add(*root, "Edit");
            add(edit, "sheet::AddLine").setProperty("shortcut", VfVariant("Ctrl+L"), nullptr);
            add(edit, "sheet::Switch").setProperty("shortcut", VfVariant("Ctrl+L; Ctrl+M"), nullptr);
        }));
    program.run([&] {
        program.ui([&] {
            EXPECT_EQ(QKeySequence::listFromString(QStringLiteral("Ctrl+L")),
                      program.action("sheet::AddLine")->shortcuts());
            EXPECT_EQ(QKeySequence::listFromString(QStringLiteral("Ctrl+M")),
                      program.action("sheet::Switch")->shortcuts());
        });
    });
}

TEST(ActionTable, ACommandMayHaveOthersAddedWhileItIsMade)
{
    Program program;
    program.run([&] {
        program.ui([&] {
            QWidget window;
            ActionTable table(window);
            Growing::onMade = [&table] { addCommands(table, "first "); };
            EXPECT_EQ(QStringLiteral("test::Growing"), table.action("test::Growing")->objectName());
            Growing::onMade = [&table] { addCommands(table, "second "); };
            table.refresh();
            EXPECT_EQ(401u, table.entries().size());
            for (const auto& entry : table.entries())
                EXPECT_TRUE(entry->isKnown) << entry->name;
        });
    });
}
