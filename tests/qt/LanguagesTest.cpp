// SPDX-License-Identifier: MIT
// Every text follows the language.
#include "Program.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/Settings.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/WindowSettings.h>
#include <velaforge/toolkit/CommandNames.h>

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QTranslator>

#include <set>

using testing::ElementsAre;
using vfApplication::CommandItem;
using vfApplication::QtApplication;
using vfApplication::WindowSettings;
using vfTest::Program;
using vfTest::SheetUi;

namespace {

/// Says every text in brackets.
struct Brackets : QTranslator
{
    QString translate(const char*, const char* text, const char*, int) const override
    {
        return QLatin1Char('[') + QString::fromUtf8(text) + QLatin1Char(']');
    }
    bool isEmpty() const override { return false; }
};

/// Texts that are no language: names of files and programs, keys, numbers, what Qt puts there by itself.
bool isTranslated(const QString& text)
{
    bool hasLetters = false;
    for (const QChar letter : text)
        hasLetters = hasLetters || letter.isLetter();
    return !hasLetters || text.contains(QLatin1Char('[')) || text.startsWith(QLatin1String("program")) ||
           text.contains(QLatin1String(".sheet"));
}

std::set<std::string> untranslated(const QWidget& root)
{
    std::set<std::string> texts;
    const auto check = [&texts](const QString& text) {
        if (!isTranslated(text))
            texts.insert(text.toStdString());
    };
    check(root.windowTitle());
    for (const QAction* action : root.findChildren<QAction*>()) {
        check(action->text());
        check(action->toolTip());
        check(action->statusTip());
    }
    for (const QWidget* widget : root.findChildren<QWidget*>()) {
        check(widget->windowTitle());
        check(widget->toolTip());
    }
    for (const QAbstractButton* button : root.findChildren<QAbstractButton*>())
        check(button->text());
    for (const QLabel* label : root.findChildren<QLabel*>())
        check(label->text());
    for (const QMenu* menu : root.findChildren<QMenu*>())
        check(menu->title());
    return texts;
}

} // namespace

TEST(Languages, ReachEveryTextOfTheWindow)
{
    auto ui = std::make_unique<SheetUi>();
    ui->menus = [](CommandItem* root) {
        CommandItem all(root);
        all.setCommand("All", nullptr);
        for (const vfBase::VfString& name : vfApplication::commandNames())
            all << name.c_str();
        CommandItem own(&all);
        own.setCommand("sheet::AddLine", "boats");
        own.setProperty("text", vfBase::VfVariant("Own words"), nullptr);
        own.setProperty("argument", vfBase::VfVariant("x"), nullptr);
    };
    const vfTest::TemporaryDirectory directory;
    Program program({directory.write("one.sheet", "one\n")}, std::move(ui));
    program.application()
        .getDockWindowManager()
        .addNewOrGetExistingDockWindow("test::Layers", vfApplication::DockWindow::LeftDockArea, true, false,
                                       0, nullptr)
        .setTitle("Layers", "boats");
    program.run([&] {
        program.ui([&] {
            EXPECT_THAT(untranslated(program.window()), testing::Contains("Own words"));
            EXPECT_THAT(untranslated(program.window()), testing::Contains("Layers"));
            auto* brackets = new Brackets;
            brackets->setParent(qApp);
            QCoreApplication::installTranslator(brackets);
        });
        EXPECT_TRUE(program.waitFor([&] { return untranslated(program.window()).empty(); }))
            << testing::PrintToString(program.ui([&] { return untranslated(program.window()); }));
    });
}

TEST(Languages, ReachTheDialogs)
{
    const vfTest::TemporaryDirectory directory;
    Program program({directory.write("one.sheet", "one\n")});
    program.run([&] {
        program.ui([&] {
            auto* brackets = new Brackets;
            brackets->setParent(qApp);
            QCoreApplication::installTranslator(brackets);
            QtApplication::instance()->showProblem("one.sheet", "gone");
            program.sheet()->changed();
        });
        for (const char* command : {"vfApplicationQt::ActionClose", "vfApplicationQt::ActionRevert",
                                    "vfApplicationQt::ActionOptions", "vfApplicationQt::ActionCommands",
                                    "vfApplicationQt::ActionShortcuts"})
        {
            program.start([&, command] { program.invoke(command); });
            ASSERT_TRUE(program.waitFor([] { return Program::dialog(); })) << command;
            EXPECT_THAT(program.ui([] { return untranslated(*Program::dialog()); }), ElementsAre())
                << command;
            program.ui([] { Program::dialog()->reject(); });
            EXPECT_TRUE(program.waitForNoDialog());
        }
        EXPECT_THAT(program.ui([&] {
            return untranslated(*program.window().findChild<QDialog*>(QStringLiteral("problems")));
        }),
                    ElementsAre());
    });
}

TEST(Languages, AreChosenKeptAndShownAtOnce)
{
    Program program;
    program.run([&] {
        program.ui([] {
            EXPECT_THAT(QtApplication::instance()->getLanguages(), ElementsAre("de", "en"));
            EXPECT_EQ("en", QtApplication::instance()->getLanguage());
        });
        program.ui([&] { program.invoke("vfApplicationQt::ActionLanguage", "de"); });
        EXPECT_TRUE(program.waitFor([&] {
            return program.window().menuBar()->actions()[0]->text() == QStringLiteral("&Datei") &&
                   program.action("vfApplicationQt::ActionOpen")->text() == QStringLiteral("Ö&ffnen …");
        }));
        EXPECT_EQ("de", program.ui([] { return QtApplication::instance()->getLanguage(); }));
        EXPECT_EQ("de", WindowSettings::instance().language);
        program.ui([] { QtApplication::instance()->setLanguage("en"); });
        EXPECT_TRUE(program.waitFor(
            [&] { return program.window().menuBar()->actions()[0]->text() == QStringLiteral("&File"); }));
        program.ui([] { QtApplication::instance()->setLanguage("tlh"); }); // without a translation
        EXPECT_EQ("en", program.ui([] { return QtApplication::instance()->getLanguage(); }));
    });
}

TEST(Languages, AreChosenFromAMenu)
{
    auto ui = std::make_unique<SheetUi>();
    ui->menus = [](CommandItem* root) {
        CommandItem edit(root);
        edit.setCommand("Edit", nullptr);
        edit << "vfApplicationQt::ActionLanguage";
    };
    Program program({}, std::move(ui));
    program.run([&] {
        program.ui([&] {
            auto* menu =
                program.window().findChild<QMenu*>(QStringLiteral("vfApplicationQt::ActionLanguage"));
            menu->popup(QPoint());
            menu->close();
            ASSERT_EQ(2, menu->actions().size());
            EXPECT_EQ(QStringLiteral("Deutsch"), menu->actions()[0]->text());
            EXPECT_TRUE(menu->actions()[1]->isChecked());
            menu->actions()[0]->trigger();
        });
        EXPECT_EQ("de", program.ui([] { return QtApplication::instance()->getLanguage(); }));
    });
}

TEST(Languages, StartWithThatOfTheSystem)
{
    unsetenv("LC_ALL");
    unsetenv("LC_MESSAGES");
    unsetenv("LANGUAGE");
    setenv("LANG", "de_AT.UTF-8", 1);
    Program program;
    program.run(
        [&] { EXPECT_EQ("de", program.ui([] { return QtApplication::instance()->getLanguage(); })); });
}
