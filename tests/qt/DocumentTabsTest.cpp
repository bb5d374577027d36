// SPDX-License-Identifier: MIT
// The tabs of the open documents.
#include "Program.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/qt/QtDocManager.h>
#include <velaforge/qt/internal/MainWindow.h>

#include <gmock/gmock.h>

#include <QClipboard>
#include <QMenu>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTextDocument>

using vfTest::Program;
using vfTest::TemporaryDirectory;

namespace {

std::vector<std::string> sheets(const TemporaryDirectory& directory, int count)
{
    std::vector<std::string> paths;
    for (int i = 0; i < count; ++i)
        paths.push_back(directory.write("sheet-" + std::to_string(i) + ".sheet", "one\n"));
    return paths;
}

QTabWidget& tabs(const Program& program)
{
    return *program.window().findChild<QTabWidget*>(QStringLiteral("documents"));
}

std::vector<std::string> titles(Program& program)
{
    return program.ui([&] {
        std::vector<std::string> texts;
        for (int i = 0; i < tabs(program).count(); ++i)
            texts.push_back(tabs(program).tabText(i).toStdString());
        return texts;
    });
}

QMenu* openMenu()
{
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

/// Opens the menu of a tab and presses a key in it.
void chooseInMenu(Program& program, int index, Qt::Key key)
{
    program.start([&program, index] {
        QTabBar& bar = *tabs(program).tabBar();
        Q_EMIT bar.customContextMenuRequested(bar.tabRect(index).center());
    });
    ASSERT_TRUE(program.waitFor([] { return openMenu() != nullptr; }));
    program.start([key] { QTest::keyClick(openMenu(), key); });
    EXPECT_TRUE(program.waitFor([] { return openMenu() == nullptr; }));
}

} // namespace

TEST(DocumentTabs, AreWideEnoughToReadHoweverMany)
{
    const TemporaryDirectory directory;
    Program program(sheets(directory, 12));
    program.run([&] {
        program.ui([&] { program.window().resize(500, 400); });
        Program::pause(50);
        program.ui([&] {
            const QTabBar& bar = *tabs(program).tabBar();
            ASSERT_EQ(12, bar.count());
            for (int i = 0; i < bar.count(); ++i)
                EXPECT_LE(bar.fontMetrics().horizontalAdvance(QLatin1String("sheet-0")),
                          bar.tabRect(i).width())
                    << i;
            EXPECT_TRUE(bar.usesScrollButtons());
            EXPECT_GE(500, program.window().width());
        });
    });
}

TEST(DocumentTabs, ALongNameTakesNoMoreThanItsShare)
{
    const TemporaryDirectory directory;
    Program program({directory.write(std::string(150, 'w') + ".sheet", "one\n")});
    program.run([&] {
        program.ui([&] {
            const QTabBar& bar = *tabs(program).tabBar();
            EXPECT_GT(40 * bar.fontMetrics().averageCharWidth(), bar.tabRect(0).width());
        });
    });
}

TEST(DocumentTabs, TellTheWholePathAsItIs)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("<b>x<i>.sheet", "one\n");
    Program program({path});
    program.run([&] {
        program.ui([&] {
            QTextDocument shown;
            shown.setHtml(tabs(program).tabToolTip(0));
            EXPECT_EQ(path, shown.toPlainText().toStdString());
        });
    });
}

TEST(DocumentTabs, AMiddleClickCloses)
{
    const TemporaryDirectory directory;
    Program program(sheets(directory, 3));
    program.run([&] {
        program.ui([&] {
            QTabBar& bar = *tabs(program).tabBar();
            QTest::mouseClick(&bar, Qt::MiddleButton, {}, bar.tabRect(1).center());
        });
        EXPECT_THAT(titles(program), testing::ElementsAre("sheet-0.sheet", "sheet-2.sheet"));
    });
}

TEST(DocumentTabs, TheMenuClosesThisOneOrTheOthers)
{
    const TemporaryDirectory directory;
    Program program(sheets(directory, 4));
    program.run([&] {
        chooseInMenu(program, 0, Qt::Key_C);
        EXPECT_THAT(titles(program), testing::ElementsAre("sheet-1.sheet", "sheet-2.sheet", "sheet-3.sheet"));
        chooseInMenu(program, 1, Qt::Key_O);
        EXPECT_THAT(titles(program), testing::ElementsAre("sheet-2.sheet"));
    });
}

TEST(DocumentTabs, ClosingTheOthersStopsAtOneThatIsToStay)
{
    const TemporaryDirectory directory;
    Program program(sheets(directory, 4));
    program.run([&] {
        program.ui([&] {
            tabs(program).setCurrentIndex(1);
            program.invoke("sheet::AddLine", "two");
        });
        program.start([&] {
            QTabBar& bar = *tabs(program).tabBar();
            Q_EMIT bar.customContextMenuRequested(bar.tabRect(3).center());
        });
        ASSERT_TRUE(program.waitFor([] { return openMenu() != nullptr; }));
        program.start([] { QTest::keyClick(openMenu(), Qt::Key_O); });
        EXPECT_TRUE(program.answer("saveQuestion", "Cancel"));
        EXPECT_TRUE(program.waitForNoDialog());
        EXPECT_THAT(titles(program),
                    testing::ElementsAre("sheet-1.sheet*", "sheet-2.sheet", "sheet-3.sheet"));
    });
}

TEST(DocumentTabs, TheMenuCopiesThePath)
{
    const TemporaryDirectory directory;
    const std::vector<std::string> paths = sheets(directory, 2);
    Program program(paths);
    program.run([&] {
        chooseInMenu(program, 1, Qt::Key_P);
        EXPECT_EQ(paths[1], program.ui([] { return QGuiApplication::clipboard()->text().toStdString(); }));
    });
}

TEST(DocumentTabs, ADocumentWithoutAFileHasNoPathToCopy)
{
    Program program;
    program.run([&] {
        program.ui([&] { program.invoke("vfApplicationQt::ActionNew"); });
        program.start([&] {
            QTabBar& bar = *tabs(program).tabBar();
            Q_EMIT bar.customContextMenuRequested(bar.tabRect(0).center());
        });
        ASSERT_TRUE(program.waitFor([] { return openMenu() != nullptr; }));
        program.ui([] {
            int enabled = 0;
            for (const QAction* action : openMenu()->actions())
                enabled += !action->isSeparator() && action->isEnabled() ? 1 : 0;
            EXPECT_EQ(1, enabled); // "Close"
        });
        program.start([] { openMenu()->close(); });
        EXPECT_TRUE(program.waitFor([] { return openMenu() == nullptr; }));
    });
}
