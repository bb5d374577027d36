// SPDX-License-Identifier: MIT
// Looking into models and changing them with mouse and keyboard.
#include "Viewer.h"

#include "model/ModelView.h"
#include "qt/StatisticsPanel.h"
#include "support/ModelDigest.h"

#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/View.h>

#include <velaforge/qt/internal/MainWindow.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Transform>

#include <QApplication>
#include <QCheckBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSlider>
#include <QStatusBar>
#include <QTableWidget>
#include <QTranslator>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <gmock/gmock.h>

#include <cmath>

using vfTest::Hand;
using vfTest::Program;
using vfTest::Viewer;

namespace {

using vfTest::sailboat;

class Inspect : public vfTest::OnDisplay
{
protected:
    /// Runs a script with the sailboat seen from the front.
    static void withSailboat(const std::function<void(Viewer&)>& script)
    {
        Viewer viewer({sailboat});
        viewer.run([&] {
            ASSERT_TRUE(
                viewer.waitFor([&] { return viewer.viewport() && viewer.viewport()->getFrameCount() > 0; }));
            viewer.hand.key("1");
            Program::pause(200);
            script(viewer);
        });
    }

    static QPoint placeOf(Viewer& viewer, const char* part)
    {
        return viewer.ui(
            [&] { return Viewer::onScreen(*viewer.viewport(), viewer.seen(*viewer.part(part)).toPoint()); });
    }

    static osg::BoundingBox boundsOf(Viewer& viewer, const char* part)
    {
        return viewer.ui([&] {
            osg::ComputeBoundsVisitor visitor;
            osg::Node& node = *viewer.part(part);
            node.accept(visitor);
            osg::NodePath path = node.getParentalNodePaths(&viewer.model()->scene()).front();
            path.pop_back();
            const osg::Matrixd place = osg::computeLocalToWorld(path);
            osg::BoundingBox box;
            for (unsigned int i = 0; i < 8; ++i)
                box.expandBy(osg::Vec3d(visitor.getBoundingBox().corner(i)) * place);
            return box;
        });
    }

    /// On the thread of the window.
    static std::string selection(Viewer& viewer)
    {
        const osg::Node* selected = viewer.model()->getSelection();
        return selected ? selected->getName() : std::string();
    }

    static void selectByClick(Viewer& viewer, const char* part)
    {
        viewer.hand.click(placeOf(viewer, part));
        EXPECT_TRUE(viewer.waitFor([&] { return selection(viewer) == part; })) << part;
        Program::pause(100);
    }

    /// Opens a dock window that is closed at first.
    static void open(Viewer& viewer, const char* id)
    {
        viewer.ui([&] {
            viewer.program().application().getDockWindowManager().findDockWindow(id)->setVisible(true);
        });
        Program::pause(300);
    }

    template <class Widget>
    static Widget& find(Viewer& viewer, const char* name)
    {
        return *viewer.program().window().findChild<Widget*>(QLatin1String(name));
    }

    static QString valueIn(Viewer& viewer, const char* table, const char* name)
    {
        return viewer.ui([&] {
            const auto& facts = find<QTableWidget>(viewer, table);
            for (int row = 0; row < facts.rowCount(); ++row) {
                if (facts.item(row, 0)->text() == QLatin1String(name))
                    return facts.item(row, 1)->text();
            }
            return QString();
        });
    }
};

} // namespace

TEST_F(Inspect, ADragMovesTheSelectionInOneStep)
{
    withSailboat([](Viewer& viewer) {
        selectByClick(viewer, "hull");
        const osg::BoundingBox before = boundsOf(viewer, "hull");
        const std::string digest =
            viewer.ui([&] { return vfTest::digestOf(viewer.model()->getModelScene()); });
        viewer.hand.key("m");
        Program::pause(200);
        const QPoint from = placeOf(viewer, "hull");
        viewer.hand.drag(from, from + QPoint(150, -60));
        Program::pause(200);
        const osg::BoundingBox after = boundsOf(viewer, "hull");
        const osg::Vec3 moved = after.center() - before.center();
        EXPECT_LT(0.1, moved.x());
        EXPECT_LT(0.05, moved.z());
        EXPECT_NEAR(0, moved.y(), 1e-3);
        EXPECT_NEAR(before.radius(), after.radius(), 1e-4);
        // It lies under the hand, where it was taken hold of.
        const QPoint now = placeOf(viewer, "hull");
        EXPECT_NEAR(150, now.x() - from.x(), 12);
        EXPECT_NEAR(-60, now.y() - from.y(), 12);
        viewer.ui([&] {
            EXPECT_TRUE(viewer.model()->isModified());
            EXPECT_STREQ("Move", viewer.model()->getCommandProcessor()->getCurrentCommand().getName());
        });
        viewer.hand.key("Alt+E");
        EXPECT_TRUE(viewer.waitFor([] {
            const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            return menu && !menu->actions().empty() &&
                   menu->actions().first()->text() == QLatin1String("&Undo: Move");
        }));
        viewer.keepPicture("viewer-changing.png");
        viewer.hand.key("Escape");
        EXPECT_TRUE(viewer.waitFor([] { return !QApplication::activePopupWidget(); }));
        viewer.hand.key("Ctrl+Z");
        EXPECT_TRUE(
            viewer.waitFor([&] { return vfTest::digestOf(viewer.model()->getModelScene()) == digest; }));
        EXPECT_FALSE(viewer.ui([&] { return viewer.model()->getCommandProcessor()->canUndo(); }));
    });
}

TEST_F(Inspect, ADragTurnsAndScalesTheSelectionAboutItsMiddle)
{
    withSailboat([](Viewer& viewer) {
        selectByClick(viewer, "hull");
        const osg::BoundingBox before = boundsOf(viewer, "hull");
        const QPoint middle = placeOf(viewer, "hull");
        viewer.hand.key("k");
        Program::pause(200);
        viewer.hand.drag(middle + QPoint(40, 5), middle + QPoint(80, 10));
        Program::pause(200);
        const osg::BoundingBox larger = boundsOf(viewer, "hull");
        EXPECT_NEAR(2 * before.radius(), larger.radius(), 0.3 * before.radius());
        EXPECT_NEAR(0, (larger.center() - before.center()).length(), 0.02);
        viewer.hand.key("Ctrl+Z");
        Program::pause(200);
        viewer.hand.key("r");
        Program::pause(200);
        viewer.hand.drag(middle + QPoint(60, 0),
                         middle + QPoint(0, -60)); // a quarter turn, against the clock
        Program::pause(200);
        const osg::BoundingBox turned = boundsOf(viewer, "hull");
        EXPECT_NEAR(before.xMax() - before.xMin(), turned.zMax() - turned.zMin(), 0.25);
        EXPECT_NEAR(0, (turned.center() - before.center()).length(), 0.05);
        viewer.ui([&] {
            EXPECT_STREQ("Rotate", viewer.model()->getCommandProcessor()->getCurrentCommand().getName());
        });
    });
}

TEST_F(Inspect, ADragThatIsGivenUpOrThatMissesThePartChangesNothing)
{
    withSailboat([](Viewer& viewer) {
        selectByClick(viewer, "hull");
        const std::string digest =
            viewer.ui([&] { return vfTest::digestOf(viewer.model()->getModelScene()); });
        viewer.hand.key("m");
        Program::pause(200);
        const QPoint from = placeOf(viewer, "hull");
        viewer.hand.moveTo(from);
        viewer.hand.press(Hand::Left);
        viewer.hand.moveTo(from + QPoint(50, 0));
        viewer.hand.moveTo(from + QPoint(100, 0));
        EXPECT_TRUE(viewer.waitFor([&] {
            return vfTest::digestOf(viewer.model()->getModelScene()) != digest; // it is seen to move
        }));
        viewer.hand.key("Escape");
        Program::pause(200);
        viewer.hand.release(Hand::Left);
        Program::pause(200);
        viewer.ui([&] {
            EXPECT_EQ(digest, vfTest::digestOf(viewer.model()->getModelScene()));
            EXPECT_FALSE(viewer.model()->isModified());
            EXPECT_FALSE(viewer.model()->getCommandProcessor()->canUndo());
        });
        EXPECT_EQ("hull", viewer.ui([&] { return selection(viewer); }));
        // Beside the part the camera is turned.
        osg::Vec3d eye;
        osg::Vec3d centre;
        osg::Vec3d up;
        viewer.ui([&] { viewer.viewport()->getLookAt(eye, centre, up); });
        const QPoint beside = viewer.ui([&] { return Viewer::onScreen(*viewer.viewport(), QPoint(30, 30)); });
        viewer.hand.drag(beside, beside + QPoint(80, 40));
        Program::pause(200);
        viewer.ui([&] {
            osg::Vec3d other;
            viewer.viewport()->getLookAt(other, centre, up);
            EXPECT_LT(0.1, (other - eye).length());
            EXPECT_EQ(digest, vfTest::digestOf(viewer.model()->getModelScene()));
        });
    });
}

TEST_F(Inspect, ClicksMeasureBetweenCorners)
{
    withSailboat([](Viewer& viewer) {
        open(viewer, "vfViewer::Measurements");
        viewer.hand.key("d");
        Program::pause(200);
        viewer.hand.click(placeOf(viewer, "hull"));
        Program::pause(100);
        viewer.hand.click(placeOf(viewer, "flag"));
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.model()->getMeasurements().size() == 1; }));
        viewer.ui([&] {
            const vfScene::Measurement& found = viewer.model()->getMeasurements().front();
            EXPECT_EQ(vfScene::MeasureKind::Distance, found.kind);
            EXPECT_LT(1, found.value);
            auto& list = find<QListWidget>(viewer, "measurements");
            ASSERT_EQ(1, list.count());
            EXPECT_TRUE(list.item(0)->text().startsWith(QLatin1String("Distance: ")))
                << list.item(0)->text().toStdString();
        });
        viewer.ui([&] { viewer.program().invoke("vfViewer::MeasureAngle"); });
        for (const char* part : {"hull", "flag", "keel"}) {
            viewer.hand.click(placeOf(viewer, part));
            Program::pause(100);
        }
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.model()->getMeasurements().size() == 2; }));
        EXPECT_EQ("", viewer.ui([&] { return selection(viewer); })); // the clicks were for that
        viewer.keepPicture("viewer-measuring.png");
        viewer.hand.key("Escape");
        Program::pause(200);
        selectByClick(viewer, "hull");
        viewer.ui([&] {
            viewer.program()
                .window()
                .findChild<QListWidget*>(QStringLiteral("measurements"))
                ->parentWidget()
                ->findChild<QPushButton*>()
                ->click();
        });
        EXPECT_TRUE(viewer.ui([&] { return viewer.model()->getMeasurements().empty(); }));
    });
}

TEST_F(Inspect, AClickNearACornerMeasuresFromTheCorner)
{
    withSailboat([](Viewer& viewer) {
        // The corner of the flag that lies farthest to one side, and a place a little inside of it.
        osg::Vec3d corner;
        const QPoint place = viewer.ui([&] {
            const osg::Geometry* flag = viewer.part("flag")->asGeode()->getDrawable(0)->asGeometry();
            const auto& points = dynamic_cast<const osg::Vec3Array&>(*flag->getVertexArray());
            const vfApplication::QtViewport& viewport = *viewer.viewport();
            QPointF outermost = viewer.seen(*viewer.part("flag"));
            const QPointF middle = outermost;
            for (const osg::Vec3& point : points) {
                const QPointF seen = viewport.project(point);
                if (seen.x() > outermost.x()) {
                    outermost = seen;
                    corner = point;
                }
            }
            const QPointF inwards = middle - outermost;
            return (outermost + inwards * (4 / std::hypot(inwards.x(), inwards.y()))).toPoint();
        });
        viewer.ui([&] { viewer.program().invoke("vfViewer::MeasureDistance"); });
        viewer.hand.click(viewer.ui([&] { return Viewer::onScreen(*viewer.viewport(), place); }));
        Program::pause(100);
        viewer.hand.click(placeOf(viewer, "hull"));
        ASSERT_TRUE(viewer.waitFor([&] { return viewer.model()->getMeasurements().size() == 1; }));
        viewer.ui([&] {
            const osg::Vec3d found = viewer.model()->getMeasurements().front().points.front();
            EXPECT_NEAR(0, (found - corner).length(), 1e-6);
        });
    });
}

TEST_F(Inspect, ThreeClicksMeasureACircleAndThreeOnOnePointNothing)
{
    withSailboat([](Viewer& viewer) {
        viewer.ui([&] { viewer.program().invoke("vfViewer::MeasureRadius"); });
        for (int i = 0; i < 3; ++i) {
            viewer.hand.click(placeOf(viewer, "hull"));
            Program::pause(100);
        }
        EXPECT_TRUE(viewer.ui([&] { return viewer.model()->getMeasurements().empty(); }));
        for (const char* part : {"hull", "flag", "keel"}) {
            viewer.hand.click(placeOf(viewer, part));
            Program::pause(100);
        }
        ASSERT_TRUE(viewer.waitFor([&] { return viewer.model()->getMeasurements().size() == 1; }));
        EXPECT_EQ(vfScene::MeasureKind::Radius,
                  viewer.ui([&] { return viewer.model()->getMeasurements().front().kind; }));
    });
}

TEST_F(Inspect, TheTreesMenuActsOnTheRowUnderTheMouse)
{
    withSailboat([](Viewer& viewer) {
        const auto chooses = [&viewer](const QString& entry) {
            viewer.hand.click(viewer.ui([&] {
                auto& tree = find<QTreeWidget>(viewer, "sceneTree");
                const auto rows =
                    tree.findItems(QStringLiteral("hull"), Qt::MatchExactly | Qt::MatchRecursive);
                return Viewer::onScreen(*tree.viewport(), tree.visualItemRect(rows.value(0)).center());
            }),
                              Hand::Right);
            QAction* action = nullptr;
            EXPECT_TRUE(viewer.waitFor([&] {
                const QWidget* menu = QApplication::activePopupWidget();
                for (QAction* each : menu ? menu->actions() : QList<QAction*>())
                    action = each->text() == entry ? each : action;
                return action != nullptr;
            }));
            viewer.hand.click(viewer.ui([&] {
                const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                return Viewer::onScreen(*menu, menu->actionGeometry(action).center());
            }));
            EXPECT_TRUE(viewer.waitFor([] { return !QApplication::activePopupWidget(); }));
        };
        selectByClick(viewer, "flag");
        chooses(QStringLiteral("Hide"));
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.part("hull")->getNodeMask() == 0; }));
        EXPECT_EQ("hull", viewer.ui([&] { return selection(viewer); }));
        chooses(QStringLiteral("Show"));
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.part("hull")->getNodeMask() != 0; }));
        // Beside the rows there is no menu.
        viewer.hand.click(viewer.ui([&] {
            auto& tree = find<QTreeWidget>(viewer, "sceneTree");
            return Viewer::onScreen(*tree.viewport(), QPoint(20, tree.viewport()->height() - 4));
        }),
                          Hand::Right);
        Program::pause(200);
        EXPECT_TRUE(viewer.ui([] { return !QApplication::activePopupWidget(); }));
    });
}

TEST_F(Inspect, PanelsSpeakTheLanguageThatIsChosenWhileTheyAreOpen)
{
    struct Brackets : QTranslator
    {
        QString translate(const char*, const char* text, const char*, int) const override
        {
            return QLatin1Char('[') + QString::fromUtf8(text) + QLatin1Char(']');
        }
        bool isEmpty() const override { return false; }
    };
    withSailboat([](Viewer& viewer) {
        for (const char* id :
             {"vfViewer::Properties", "vfViewer::Sections", "vfViewer::Animation", "vfViewer::Messages"})
            open(viewer, id);
        viewer.ui([] {
            auto* brackets = new Brackets;
            brackets->setParent(qApp);
            QCoreApplication::installTranslator(brackets);
        });
        EXPECT_TRUE(viewer.waitFor([&] {
            return find<QLineEdit>(viewer, "sceneSearch").placeholderText() == QLatin1String("[Search]");
        }));
        viewer.ui([&] {
            EXPECT_EQ(QLatin1String("[Name]"), find<QTableWidget>(viewer, "properties").item(0, 0)->text());
            EXPECT_EQ(QLatin1String("[Other side]"), find<QCheckBox>(viewer, "sectionFlip_y").text());
            EXPECT_EQ(QLatin1String("[Time]"), find<QSlider>(viewer, "animationTime").toolTip());
            EXPECT_TRUE(find<QListWidget>(viewer, "messages")
                            .parentWidget()
                            ->findChild<QPushButton*>()
                            ->text()
                            .startsWith(QLatin1Char('[')));
        });
    });
}

TEST_F(Inspect, TheTreeIsSearchedAndFollowsTheSelection)
{
    withSailboat([](Viewer& viewer) {
        selectByClick(viewer, "hull");
        EXPECT_TRUE(viewer.waitFor([&] {
            const QTreeWidgetItem* current = find<QTreeWidget>(viewer, "sceneTree").currentItem();
            return current && current->text(0) == QLatin1String("hull");
        }));
        viewer.hand.click(
            viewer.ui([&] { return Viewer::onScreen(find<QLineEdit>(viewer, "sceneSearch")); }));
        viewer.hand.type("MAINS");
        EXPECT_TRUE(
            viewer.waitFor([&] { return find<QTreeWidget>(viewer, "sceneTree").topLevelItemCount() == 1; }));
        viewer.hand.click(viewer.ui([&] {
            auto& tree = find<QTreeWidget>(viewer, "sceneTree");
            return Viewer::onScreen(*tree.viewport(), tree.visualItemRect(tree.topLevelItem(0)).center());
        }));
        EXPECT_TRUE(viewer.waitFor([&] { return selection(viewer) == "mainsail"; }));
        viewer.ui([&] { find<QLineEdit>(viewer, "sceneSearch").clear(); });
        viewer.ui([&] {
            auto& tree = find<QTreeWidget>(viewer, "sceneTree");
            EXPECT_EQ(1, tree.topLevelItemCount());
            EXPECT_EQ(QLatin1String("mainsail"), tree.currentItem()->text(0));
        });
        // A name and a part that went are followed.
        viewer.ui([&] { viewer.model()->rename(*viewer.part("mainsail"), "canvas"); });
        viewer.ui([&] { viewer.program().invoke("vfViewer::Fit"); });
        viewer.ui([&] {
            EXPECT_EQ(QLatin1String("canvas"), find<QTreeWidget>(viewer, "sceneTree").currentItem()->text(0));
        });
        const int rows =
            viewer.ui([&] { return find<QTreeWidget>(viewer, "sceneTree").topLevelItem(0)->childCount(); });
        viewer.ui([&] { viewer.program().invoke("vfViewer::Remove"); });
        viewer.ui([&] {
            EXPECT_EQ(rows - 1, find<QTreeWidget>(viewer, "sceneTree").topLevelItem(0)->childCount());
        });
    });
}

TEST_F(Inspect, TheTreeNamesTheFileAndKeepsItsShapeWhenAPartIsMoved)
{
    withSailboat([](Viewer& viewer) {
        const auto rows = [&] {
            return viewer.ui([&] {
                QStringList texts;
                for (QTreeWidgetItemIterator item(&find<QTreeWidget>(viewer, "sceneTree")); *item; ++item)
                    texts << (*item)->text(0);
                return texts;
            });
        };
        const QStringList before = rows();
        EXPECT_EQ(QLatin1String("sailboat.obj"), before.value(0));
        selectByClick(viewer, "hull");
        viewer.ui([&] { viewer.program().invoke("vfViewer::Move", "1,0,0"); });
        EXPECT_LT(0.5, boundsOf(viewer, "hull").center().x());
        EXPECT_EQ(before, rows());
        EXPECT_EQ("hull", viewer.ui([&] { return selection(viewer); }));
        EXPECT_EQ(QLatin1String("hull"),
                  viewer.ui([&] { return find<QTreeWidget>(viewer, "sceneTree").currentItem()->text(0); }));
        // Removed, and brought back by undoing.
        viewer.ui([&] { viewer.program().invoke("vfViewer::Remove"); });
        EXPECT_EQ(before.size() - 1, rows().size());
        viewer.hand.key("Ctrl+Z");
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.part("hull") != nullptr; }));
        EXPECT_EQ(before, rows());
    });
}

TEST_F(Inspect, StatisticsAreReadableAtTheWidthInWhichTheyOpen)
{
    withSailboat([](Viewer& viewer) {
        auto* dock = viewer.ui([&] {
            auto* made = new QDockWidget(&viewer.program().window());
            made->setWidget(new vfViewer::StatisticsPanel(*made));
            viewer.program().window().addDockWidget(Qt::RightDockWidgetArea, made);
            return made;
        });
        Program::pause(300);
        viewer.keepPicture("viewer-statistics.png");
        viewer.ui([&] {
            const auto& facts = *dock->findChild<QTableWidget*>(QStringLiteral("statistics"));
            ASSERT_LT(5, facts.rowCount());
            for (int row = 0; row < facts.rowCount(); ++row) {
                const QRect value = facts.visualItemRect(facts.item(row, 1));
                const int wanted = facts.fontMetrics().horizontalAdvance(facts.item(row, 1)->text());
                EXPECT_TRUE(facts.viewport()->rect().contains(value))
                    << facts.item(row, 0)->text().toStdString();
                EXPECT_LE(wanted, value.width()) << facts.item(row, 1)->text().toStdString();
                const int label = facts.fontMetrics().horizontalAdvance(facts.item(row, 0)->text());
                EXPECT_LE(label, facts.columnWidth(0)) << facts.item(row, 0)->text().toStdString();
            }
        });
    });
}

TEST_F(Inspect, TheStatusBarTellsTheSizeOfTheModelAndTheSelection)
{
    withSailboat([](Viewer& viewer) {
        const auto texts = [&] {
            return viewer.ui([&] {
                QStringList all;
                for (const QLabel* label : viewer.program().window().statusBar()->findChildren<QLabel*>()) {
                    if (label->isVisible())
                        all << label->text();
                }
                return all.join(QLatin1Char('|')).toStdString();
            });
        };
        EXPECT_TRUE(viewer.waitFor([&] {
            const auto labels = viewer.program().window().statusBar()->findChildren<QLabel*>();
            return std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
                return label->text().contains(QLatin1String("triangles"));
            });
        }));
        EXPECT_THAT(texts(), testing::HasSubstr(" × "));
        EXPECT_THAT(texts(), testing::Not(testing::HasSubstr("hull")));
        selectByClick(viewer, "hull");
        EXPECT_THAT(texts(), testing::HasSubstr("hull"));
        viewer.keepPicture("viewer-status.png");
        viewer.ui([&] { viewer.program().invoke("vfApplicationQt::ActionClose"); });
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.model() == nullptr; }));
        EXPECT_THAT(texts(), testing::Not(testing::HasSubstr("triangles")));
    });
}

TEST_F(Inspect, PropertiesAndNumbersAreThoseOfTheSelection)
{
    withSailboat([](Viewer& viewer) {
        open(viewer, "vfViewer::Properties");
        const QString whole = valueIn(viewer, "properties", "Triangles");
        EXPECT_FALSE(whole.isEmpty());
        selectByClick(viewer, "hull");
        EXPECT_EQ(QLatin1String("hull"), valueIn(viewer, "properties", "Name"));
        EXPECT_NE(whole, valueIn(viewer, "properties", "Triangles"));
        viewer.ui([&] { viewer.program().invoke("vfViewer::Hide"); });
        EXPECT_EQ(QLatin1String("no"), valueIn(viewer, "properties", "Shown"));
    });
}

TEST_F(Inspect, StatisticsAreThoseOfTheSelectionOrOfTheWholeModel)
{
    withSailboat([](Viewer& viewer) {
        viewer.ui([&] {
            // As the module does.
            viewer.program().application().getDockWindowManager().addNewOrGetExistingDockWindow(
                "vfViewer::Statistics", vfApplication::DockWindow::RightDockArea, true, false, 0, nullptr);
        });
        open(viewer, "vfViewer::Statistics");
        EXPECT_EQ(QLatin1String("whole model"), valueIn(viewer, "statistics", "Counted"));
        const QString whole = valueIn(viewer, "statistics", "Triangles");
        const QString width = valueIn(viewer, "statistics", "Width (x)");
        selectByClick(viewer, "flag");
        EXPECT_EQ(QLatin1String("selected part"), valueIn(viewer, "statistics", "Counted"));
        EXPECT_NE(whole, valueIn(viewer, "statistics", "Triangles"));
        EXPECT_NE(width, valueIn(viewer, "statistics", "Width (x)"));
        const char* const steps = "Undo steps";
        EXPECT_EQ(QLatin1String("0"), valueIn(viewer, "statistics", steps));
        viewer.ui([&] { viewer.program().invoke("vfViewer::Hide"); });
        EXPECT_EQ(QLatin1String("1"), valueIn(viewer, "statistics", steps));
    });
}

TEST_F(Inspect, SectionsFollowTheirPanelAndThePanelTheCommands)
{
    withSailboat([](Viewer& viewer) {
        open(viewer, "vfViewer::Sections");
        const auto style = [&] {
            return dynamic_cast<vfViewer::ModelView&>(
                       *viewer.program().application().getDocManager().getCurrentView())
                .getStyle();
        };
        viewer.hand.click(viewer.ui([&] {
            const auto& box = find<QCheckBox>(viewer, "section_z");
            return Viewer::onScreen(box, QPoint(10, box.height() / 2));
        }));
        EXPECT_TRUE(viewer.waitFor([&] { return style().sections[2].isOn; }));
        viewer.ui([&] { find<QSlider>(viewer, "sectionPosition_z").setValue(250); });
        EXPECT_EQ(0.25, viewer.ui(style).sections[2].position);
        viewer.ui([&] { viewer.program().invoke("vfViewer::SectionZ", "flip"); });
        EXPECT_TRUE(viewer.ui([&] { return find<QCheckBox>(viewer, "sectionFlip_z").isChecked(); }));
        viewer.ui([&] { viewer.program().invoke("vfViewer::SectionX", "0.75"); });
        viewer.ui([&] {
            EXPECT_TRUE(find<QCheckBox>(viewer, "section_x").isChecked());
            EXPECT_EQ(750, find<QSlider>(viewer, "sectionPosition_x").value());
        });
    });
}

TEST_F(Inspect, MessagesStayToBeRead)
{
    withSailboat([](Viewer& viewer) {
        open(viewer, "vfViewer::Messages");
        viewer.program().start([&] { viewer.program().invoke("vfViewer::AddFile", "/none.stl"); });
        EXPECT_TRUE(viewer.waitFor([&] { return find<QListWidget>(viewer, "messages").count() == 1; }));
        viewer.ui([&] {
            EXPECT_EQ(QLatin1String("none.stl: No such file or directory"),
                      find<QListWidget>(viewer, "messages").item(0)->text());
        });
    });
}
