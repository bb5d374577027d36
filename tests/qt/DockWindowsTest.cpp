// SPDX-License-Identifier: MIT
#include "Program.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/CommandItem.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/dockwindows/DockWindowManagerSettings.h>
#include <velaforge/dockwindows/DockWindowPrivate.h>
#include <velaforge/dockwindows/DockWindowProducer.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtDockWindow.h>
#include <velaforge/qt/QtDockWindowContents.h>
#include <velaforge/qt/internal/AutoHideStrips.h>
#include <velaforge/qt/internal/Docks.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/WindowSettings.h>

#include <gmock/gmock.h>

#include <QContextMenuEvent>
#include <QDockWidget>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTableWidget>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QTranslator>

#include <map>
#include <set>

using vfApplication::DockWindow;
using vfApplication::QtDockWindow;
using vfApplication::QtDockWindowContents;
using vfTest::Program;

namespace {

QtDockWindow& half(DockWindow& window)
{
    return dynamic_cast<QtDockWindow&>(*window.getDockWindowInterface());
}

QDockWidget* panel(DockWindow& window)
{
    return half(window).getWidget();
}

/// A window of the manager's, docked and visible.
DockWindow& add(const Program& program, const char* id, DockWindow::DockArea area)
{
    DockWindow& window = program.application().getDockWindowManager().addNewOrGetExistingDockWindow(
        id, area, true, false, 0, nullptr);
    window.setTitle(id, nullptr);
    return window;
}

/// Fills its panel with a text.
struct Layers : DockWindow, QtDockWindowContents
{
    Layers() : DockWindow("test::Layers") {}
    QWidget* createContents(QWidget& parent) override
    {
        ++made;
        return new QLabel(QStringLiteral("layers"), &parent);
    }
    bool applyDefaultState() override
    {
        setTitle("Layers", nullptr);
        setArea(BottomDockArea);
        return true;
    }
    int made = 0;
};

} // namespace

TEST(QtDockWindows, KeepWhatTheyAreToldUntilThereIsAWindow)
{
    const Program program;
    DockWindow& window = add(program, "test::Window", DockWindow::RightDockArea);
    EXPECT_EQ(nullptr, panel(window));
    EXPECT_EQ(DockWindow::RightDockArea, window.getArea());
    EXPECT_FALSE(window.isFloating());
    EXPECT_TRUE(window.getVisible());
    EXPECT_FALSE(window.isTabbed());
    window.setVisible(false);
    EXPECT_FALSE(window.getVisible());
    window.setAllowedDockingAreas(DockWindow::LeftDockArea);
    EXPECT_EQ(DockWindow::NoDockArea, window.getArea());
    EXPECT_TRUE(window.isFloating());
    window.setArea(DockWindow::RightDockArea);
    EXPECT_EQ(DockWindow::NoDockArea, window.getArea()); // not allowed
    window.setFloatable(false);
    EXPECT_FALSE(window.isFloating());
}

TEST(QtDockWindows, ThatAreShownForTheFirstTimeHaveRoomForTheirContents)
{
    Program program;
    DockWindow& window = add(program, "test::Table", DockWindow::RightDockArea);
    window.setVisible(false);
    QtDockWindowContents::setContents("test::Table",
                                      [](QWidget& parent) { return new QTableWidget(&parent); });
    program.run([&] {
        program.ui([&] { window.setVisible(true); });
        program.pause(50);
        program.ui([&] {
            ASSERT_NE(nullptr, panel(window)->widget());
            EXPECT_LE(panel(window)->widget()->sizeHint().width(), panel(window)->width());
        });
    });
}

TEST(QtDockWindows, AreOnTheScreenAsTheyWereToldBefore)
{
    Program program;
    DockWindow& window = add(program, "test::Window", DockWindow::RightDockArea);
    DockWindow& hidden = add(program, "test::Hidden", DockWindow::BottomDockArea);
    window.setCloseable(false);
    window.setMoveable(false);
    window.setAllowedDockingAreas(DockWindow::RightDockArea | DockWindow::TopDockArea);
    hidden.setVisible(false);
    program.run([&] {
        program.ui([&] {
            QDockWidget* dock = panel(window);
            ASSERT_NE(nullptr, dock);
            EXPECT_EQ(QStringLiteral("test::Window"), dock->windowTitle());
            EXPECT_EQ(Qt::RightDockWidgetArea, program.window().dockWidgetArea(dock));
            EXPECT_EQ(QDockWidget::DockWidgetFloatable, dock->features());
            EXPECT_EQ(Qt::RightDockWidgetArea | Qt::TopDockWidgetArea, dock->allowedAreas());
            EXPECT_TRUE(dock->isVisible());
            EXPECT_TRUE(panel(hidden)->isHidden());
        });
    });
}

TEST(QtDockWindows, AnswerWithWhatThePanelDoes)
{
    Program program;
    DockWindow& window = add(program, "test::Window", DockWindow::LeftDockArea);
    program.run([&] {
        program.ui([&] {
            QDockWidget* dock = panel(window);
            // As if by the mouse.
            dock->setFloating(true);
            EXPECT_TRUE(window.isFloating());
            EXPECT_EQ(DockWindow::NoDockArea, window.getArea());
            dock->setFloating(false);
            EXPECT_FALSE(window.isFloating());
            EXPECT_EQ(DockWindow::LeftDockArea, window.getArea());
            program.window().addDockWidget(Qt::TopDockWidgetArea, dock);
            EXPECT_EQ(DockWindow::TopDockArea, window.getArea());
            dock->close();
            EXPECT_FALSE(window.getVisible());
            dock->show();
            EXPECT_TRUE(window.getVisible());
        });
    });
}

TEST(QtDockWindows, EachOperationReachesThePanel)
{
    Program program;
    DockWindow& window = add(program, "test::Window", DockWindow::LeftDockArea);
    program.run([&] {
        program.ui([&] {
            QDockWidget* dock = panel(window);
            window.setTitle("New title", nullptr);
            EXPECT_EQ(QStringLiteral("New title"), dock->windowTitle());
            window.setArea(DockWindow::BottomDockArea);
            EXPECT_EQ(Qt::BottomDockWidgetArea, program.window().dockWidgetArea(dock));
            EXPECT_EQ(DockWindow::BottomDockArea, window.getArea());
            window.setArea(static_cast<DockWindow::DockArea>(3)); // two areas are no place
            EXPECT_EQ(DockWindow::BottomDockArea, window.getArea());
            window.setArea(DockWindow::NoDockArea);
            EXPECT_TRUE(dock->isFloating());
            window.setFloatable(false);
            EXPECT_FALSE(window.getFloatable());
            EXPECT_FALSE(dock->isFloating());
            EXPECT_FALSE(dock->features().testFlag(QDockWidget::DockWidgetFloatable));
            window.setArea(DockWindow::NoDockArea); // it may not be torn off
            EXPECT_NE(DockWindow::NoDockArea, window.getArea());
            window.setFloatable(true);
            window.setCloseable(false);
            EXPECT_FALSE(window.getCloseable());
            EXPECT_FALSE(dock->features().testFlag(QDockWidget::DockWidgetClosable));
            window.setMoveable(false);
            EXPECT_FALSE(window.getMoveable());
            EXPECT_FALSE(dock->features().testFlag(QDockWidget::DockWidgetMovable));
            window.setArea(DockWindow::LeftDockArea);
            window.setAllowedDockingAreas(DockWindow::RightDockArea);
            EXPECT_EQ(unsigned(DockWindow::RightDockArea), window.getAllowedDockingAreas());
            EXPECT_EQ(Qt::RightDockWidgetArea, dock->allowedAreas());
            EXPECT_TRUE(window.isFloating()); // where it stood it may no longer stand
            window.setVisible(false);
            EXPECT_TRUE(dock->isHidden());
            window.setVisible(true);
            EXPECT_FALSE(dock->isHidden());
        });
    });
}

TEST(QtDockWindows, WithoutTearingOffGoToAnAreaThatIsAllowed)
{
    Program program;
    DockWindow& window = add(program, "test::Window", DockWindow::LeftDockArea);
    window.setFloatable(false);
    program.run([&] {
        program.ui([&] {
            window.setAllowedDockingAreas(DockWindow::TopDockArea | DockWindow::BottomDockArea);
            EXPECT_EQ(DockWindow::TopDockArea, window.getArea());
            EXPECT_FALSE(window.isFloating());
        });
    });
}

TEST(QtDockWindows, AreTabbedWhenTheyShareAPlace)
{
    Program program;
    DockWindow& one = add(program, "test::One", DockWindow::LeftDockArea);
    DockWindow& two = add(program, "test::Two", DockWindow::LeftDockArea);
    program.run([&] {
        program.ui([&] {
            EXPECT_FALSE(one.isTabbed());
            program.window().tabifyDockWidget(panel(one), panel(two));
            EXPECT_TRUE(one.isTabbed());
            EXPECT_TRUE(two.isTabbed());
            EXPECT_TRUE(one.getVisible()); // behind the other, but there
            two.setVisible(false);
            EXPECT_FALSE(one.isTabbed());
            EXPECT_FALSE(two.isTabbed());
        });
    });
}

TEST(QtDockWindows, ThatMayNotBeTabbedGoBesideTheOther)
{
    Program program;
    DockWindow& one = add(program, "test::One", DockWindow::LeftDockArea);
    DockWindow& two = add(program, "test::Two", DockWindow::LeftDockArea);
    program.run([&] {
        program.ui([&] {
            two.setAllowTabbed(false);
            EXPECT_FALSE(two.getAllowTabbed());
            program.window().tabifyDockWidget(panel(one), panel(two));
            EXPECT_TRUE(two.isTabbed()); // as one, which may be tabbed, is behind a tab of it
            one.setAllowTabbed(false);   // now neither may be behind the other
            EXPECT_FALSE(one.isTabbed());
            EXPECT_FALSE(two.isTabbed());
            EXPECT_EQ(DockWindow::LeftDockArea, one.getArea());
            EXPECT_EQ(DockWindow::LeftDockArea, two.getArea());
        });
        // With the mouse it is no other.
        program.ui([&] { program.window().tabifyDockWidget(panel(one), panel(two)); });
        EXPECT_TRUE(program.waitFor([&] { return !one.isTabbed() && !two.isTabbed(); }));
        program.ui([&] {
            one.setAllowTabbed(true);
            one.setAllowTabbing(false);
            two.setAllowTabbing(false);
            EXPECT_FALSE(one.getAllowTabbing());
            program.window().tabifyDockWidget(panel(one), panel(two));
        });
        EXPECT_TRUE(program.waitFor([&] { return !one.isTabbed() && !two.isTabbed(); }));
    });
}

TEST(QtDockWindows, ThatHideThemselvesAreAButtonAndOpenOverTheirNeighbours)
{
    Program program;
    DockWindow& window = add(program, "test::Window", DockWindow::RightDockArea);
    QtDockWindowContents::setContents("test::Window", [](QWidget& parent) {
        auto* edit = new QLineEdit(&parent);
        edit->setObjectName(QStringLiteral("inside"));
        return edit;
    });
    program.run([&] {
        program.ui([&] {
            window.setAutoHide(true);
            EXPECT_TRUE(window.getAutoHide());
            EXPECT_TRUE(window.getVisible());
            EXPECT_EQ(DockWindow::RightDockArea, window.getArea());
            EXPECT_TRUE(panel(window)->isHidden());
            auto* button = program.window().findChild<QToolButton*>(QStringLiteral("autoHide:test::Window"));
            ASSERT_NE(nullptr, button);
            EXPECT_EQ(QStringLiteral("test::Window"), button->text());
        });
        EXPECT_TRUE(program.waitFor([&] {
            return program.window()
                .findChild<QToolButton*>(QStringLiteral("autoHide:test::Window"))
                ->isVisible();
        }));
        program.ui([&] {
            auto* button = program.window().findChild<QToolButton*>(QStringLiteral("autoHide:test::Window"));
            auto* inside = program.window().findChild<QLineEdit*>(QStringLiteral("inside"));
            ASSERT_NE(nullptr, inside);
            EXPECT_FALSE(inside->isVisible());
            QTest::mouseClick(button, Qt::LeftButton);
            EXPECT_TRUE(inside->isVisible());
            QTest::mouseClick(inside, Qt::LeftButton); // stays while one works in it
            EXPECT_TRUE(inside->isVisible());
            QTest::mouseClick(program.window().centralWidget(), Qt::LeftButton);
            EXPECT_FALSE(inside->isVisible());
            QTest::mouseClick(button, Qt::LeftButton);
            QTest::keyClick(inside, Qt::Key_Escape);
            EXPECT_FALSE(inside->isVisible());
            QTest::mouseClick(button, Qt::LeftButton);
            QTest::mouseClick(button, Qt::LeftButton);
            EXPECT_FALSE(inside->isVisible());

            window.setVisible(false);
            EXPECT_FALSE(window.getVisible());
            EXPECT_EQ(nullptr,
                      program.window().findChild<QToolButton*>(QStringLiteral("autoHide:test::Window")));
            window.setVisible(true);
            EXPECT_NE(nullptr,
                      program.window().findChild<QToolButton*>(QStringLiteral("autoHide:test::Window")));
            window.setAutoHide(false);
            EXPECT_TRUE(panel(window)->isVisible());
            EXPECT_TRUE(inside->isVisible());
            EXPECT_EQ(DockWindow::RightDockArea, window.getArea());
        });
    });
}

TEST(QtDockWindows, ThatHideThemselvesOpenAlongTheEdgeTheyBelongTo)
{
    Program program;
    QtDockWindowContents::setContents("test::Window", [](QWidget& parent) { return new QLabel(&parent); });
    DockWindow& window = add(program, "test::Window", DockWindow::TopDockArea);
    program.run([&] {
        for (const DockWindow::DockArea area : {DockWindow::TopDockArea, DockWindow::BottomDockArea,
                                                DockWindow::LeftDockArea, DockWindow::RightDockArea})
        {
            program.ui([&] {
                window.setAutoHide(false);
                window.setArea(area);
                window.setAutoHide(true);
            });
            const auto button = [&] {
                return program.window().findChild<QToolButton*>(QStringLiteral("autoHide:test::Window"));
            };
            ASSERT_TRUE(program.waitFor([&] { return button() && button()->isVisible(); }));
            program.ui([&] {
                QTest::mouseClick(button(), Qt::LeftButton);
                const QRect opened =
                    program.window().findChild<QFrame*>(QStringLiteral("autoHidePanel"))->geometry();
                const QRect middle = program.window().centralWidget()->geometry();
                const bool isLevel = area == DockWindow::TopDockArea || area == DockWindow::BottomDockArea;
                EXPECT_EQ(isLevel, opened.width() == middle.width()) << area;
                EXPECT_EQ(!isLevel, opened.height() == middle.height()) << area;
                EXPECT_EQ(area != DockWindow::BottomDockArea, opened.top() == middle.top()) << area;
                EXPECT_EQ(area != DockWindow::TopDockArea, opened.bottom() == middle.bottom()) << area;
                EXPECT_EQ(area != DockWindow::RightDockArea, opened.left() == middle.left()) << area;
                EXPECT_EQ(area != DockWindow::LeftDockArea, opened.right() == middle.right()) << area;
                const auto* strip = qobject_cast<QToolBar*>(button()->parentWidget());
                ASSERT_TRUE(strip);
                EXPECT_EQ(int(area), int(program.window().toolBarArea(strip))); // the same numbers in Qt
                QTest::mouseClick(button(), Qt::LeftButton);
            });
        }
    });
}

TEST(QtDockWindows, TheirOwnMenuHidesTearsOffAndCloses)
{
    Program program;
    DockWindow& window = add(program, "test::Window", DockWindow::LeftDockArea);
    DockWindow& fixed = add(program, "test::Fixed", DockWindow::RightDockArea);
    fixed.setCloseable(false);
    fixed.setFloatable(false);
    program.run([&] {
        const auto menu = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
        const auto openMenu = [&](DockWindow& owner) {
            program.start([&] {
                QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(4, 4), QPoint(4, 4));
                QApplication::sendEvent(panel(owner), &event);
            });
            return program.waitFor([&] { return menu() != nullptr; });
        };
        const auto entries = [&] {
            return program.ui([&] {
                QStringList texts;
                for (const QAction* action : menu()->actions()) {
                    if (action->isEnabled())
                        texts << (action->isChecked() ? QStringLiteral("*") : QString()) + action->text();
                }
                return texts;
            });
        };
        const auto choose = [&](DockWindow& owner, const QString& text) {
            EXPECT_TRUE(openMenu(owner));
            program.ui([&] {
                for (QAction* action : menu()->actions()) {
                    if (action->text() == text)
                        menu()->setActiveAction(action);
                }
                QTest::keyClick(menu(), Qt::Key_Return);
            });
            EXPECT_TRUE(program.waitFor([&] { return !menu(); }));
        };
        const QString hides = QStringLiteral("Hide when not in use");
        const QString floats = QStringLiteral("Tear off");
        const QString closes = QStringLiteral("Close");
        ASSERT_TRUE(openMenu(window));
        EXPECT_EQ(QStringList({hides, floats, closes}), entries());
        program.ui([&] { QTest::keyClick(menu(), Qt::Key_Escape); });
        ASSERT_TRUE(openMenu(fixed));
        EXPECT_EQ(QStringList({hides}), entries());
        program.ui([&] { QTest::keyClick(menu(), Qt::Key_Escape); });
        EXPECT_TRUE(program.waitFor([&] { return !menu(); }));

        choose(window, floats);
        EXPECT_TRUE(program.waitFor([&] { return window.isFloating(); }));
        ASSERT_TRUE(openMenu(window));
        EXPECT_EQ(QStringList({QStringLiteral("*") + floats, closes}), entries());
        program.ui([&] { QTest::keyClick(menu(), Qt::Key_Escape); });
        choose(window, floats);
        EXPECT_TRUE(program.waitFor([&] { return !window.isFloating(); }));
        choose(window, closes);
        EXPECT_TRUE(program.waitFor([&] { return !window.getVisible(); }));
        program.ui([&] { window.setVisible(true); });
        choose(window, hides);
        EXPECT_TRUE(program.waitFor([&] { return window.getAutoHide(); }));
    });
}

TEST(QtDockWindows, AreListedWithTheToolbarsInTheMenuOfTheWindowsBars)
{
    Program program;
    DockWindow& window = add(program, "test::Window", DockWindow::LeftDockArea);
    program.declaration().toolbars = [](vfApplication::CommandItem* root) {
        vfApplication::CommandItem bar(root);
        bar.setCommand("Tools", nullptr);
        bar << "vfApplicationQt::ActionOpen";
    };
    program.run([&] {
        program.ui([&] {
            const std::unique_ptr<QMenu> menu(static_cast<QMainWindow&>(program.window()).createPopupMenu());
            std::map<std::string, QAction*> entries;
            for (QAction* action : menu->actions())
                entries[action->text().toStdString()] = action;
            ASSERT_EQ(1u, entries.count("test::Window"));
            EXPECT_TRUE(entries["test::Window"]->isChecked());
            entries["test::Window"]->trigger();
            EXPECT_FALSE(window.getVisible());
            ASSERT_EQ(1u, entries.count("Tools"));
            auto* bar = program.window().findChild<QToolBar*>(QString(), Qt::FindDirectChildrenOnly);
            ASSERT_TRUE(bar);
            EXPECT_TRUE(bar->isVisible());
            entries["Tools"]->trigger();
            EXPECT_FALSE(bar->isVisible());
        });
    });
}

TEST(QtDockWindows, ThatAreTornOffDoNotHideUntilTheyAreDocked)
{
    Program program;
    DockWindow& window = add(program, "test::Window", DockWindow::RightDockArea);
    program.run([&] {
        program.ui([&] {
            window.setArea(DockWindow::NoDockArea);
            window.setAutoHide(true);
            EXPECT_TRUE(window.getAutoHide());
            EXPECT_TRUE(panel(window)->isVisible());
            window.setArea(DockWindow::LeftDockArea);
            EXPECT_TRUE(panel(window)->isHidden());
            EXPECT_TRUE(window.getVisible());
        });
    });
}

TEST(QtDockWindows, MakeTheirContentsWhenTheyAreFirstSeenAndOnce)
{
    Program program;
    Layers layers;
    layers.setVisible(false);
    program.run([&] {
        program.ui([&] {
            EXPECT_EQ(QStringLiteral("Layers"), panel(layers)->windowTitle());
            EXPECT_EQ(DockWindow::BottomDockArea, layers.getArea()); // as it wants to stand by itself
            EXPECT_EQ(0, layers.made);
            layers.setVisible(true);
            EXPECT_EQ(1, layers.made);
            EXPECT_EQ(QStringLiteral("layers"), qobject_cast<QLabel*>(panel(layers)->widget())->text());
            layers.setVisible(false);
            layers.setVisible(true);
            EXPECT_EQ(1, layers.made);
        });
    });
}

TEST(QtDockWindows, MadeWhileTheWindowIsThereAppearAndLeaveTheScreenAtOnce)
{
    Program program;
    program.run([&] {
        DockWindow* window = program.ui([&] { return &add(program, "test::Late", DockWindow::TopDockArea); });
        EXPECT_TRUE(program.waitFor([&] { return panel(*window) && panel(*window)->isVisible(); }));
        program.ui([&] {
            EXPECT_EQ(Qt::TopDockWidgetArea, program.window().dockWidgetArea(panel(*window)));
            program.application().getDockWindowManager().removeDockWindow("test::Late");
        });
        EXPECT_TRUE(program.waitFor(
            [&] { return !program.window().findChild<QDockWidget*>(QStringLiteral("test::Late")); }));
    });
}

TEST(QtDockWindows, ThatWereDestroyedInTheManagersTableLeaveTheScreenAndTheTable)
{
    Program program;
    auto window = std::make_unique<Layers>();
    program.application().getDockWindowManager().addDockWindow(window.get());
    program.run([&] {
        program.ui([&] { window.reset(); });
        EXPECT_TRUE(program.waitFor(
            [&] { return !program.window().findChild<QDockWidget*>(QStringLiteral("test::Layers")); }));
    });
    EXPECT_EQ(0u, program.application().getDockWindowManager().getNumDockWindows());
}

TEST(QtDockWindows, AreShownAndHiddenByMenuByCommandAndByKey)
{
    Program program;
    DockWindow& window = add(program, "test::Window", DockWindow::LeftDockArea);
    DockWindow& fixed = add(program, "test::Fixed", DockWindow::LeftDockArea);
    fixed.setCloseable(false);
    window.setShortcut(int(Qt::CTRL) | int(Qt::Key_7));
    program.run([&] {
        program.ui([&] {
            QMenu menu;
            program.window().docks().fillMenu(menu);
            ASSERT_EQ(2, menu.actions().size());
            EXPECT_TRUE(menu.actions()[0]->isChecked());
            EXPECT_FALSE(menu.actions()[1]->isEnabled());
            menu.actions()[0]->trigger();
            EXPECT_FALSE(window.getVisible());
            EXPECT_TRUE(program.invoke("vfApplicationQt::ActionDockWindows", "test::Window"));
            EXPECT_TRUE(window.getVisible());
            program.window().activateWindow();
        });
        EXPECT_TRUE(program.waitFor([&] { return program.window().isActiveWindow(); }));
        program.ui([&] { QTest::keyClick(&program.window(), Qt::Key_7, Qt::ControlModifier); });
        EXPECT_FALSE(program.ui([&] { return window.getVisible(); }));
    });
}

TEST(QtDockWindows, TitlesAreTranslatedInTheirContext)
{
    struct German : QTranslator
    {
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            return !qstrcmp(context, "boats") && !qstrcmp(text, "Sails") ? QStringLiteral("Segel")
                                                                         : QString();
        }
        bool isEmpty() const override { return false; }
    };
    Program program;
    DockWindow& window = add(program, "test::Window", DockWindow::LeftDockArea);
    window.setTitle("Sails", "boats");
    program.run([&] {
        program.ui([&] {
            EXPECT_EQ(QStringLiteral("Sails"), panel(window)->windowTitle());
            auto* german = new German;
            german->setParent(qApp);
            QCoreApplication::installTranslator(german);
        });
        EXPECT_TRUE(program.waitFor([&] { return panel(window)->windowTitle() == QStringLiteral("Segel"); }));
        EXPECT_STREQ("Sails", window.getTitle());
    });
}
