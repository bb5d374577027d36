// SPDX-License-Identifier: MIT
// The window while a model is read.
#include "Viewer.h"

#include "support/LargeModels.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/FileHistory.h>
#include <velaforge/qt/internal/MainWindow.h>

#include <gmock/gmock.h>

#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

using vfTest::Program;
using vfTest::TemporaryDirectory;
using vfTest::Viewer;

namespace {

using Clock = std::chrono::steady_clock;

using vfTest::sailboat;

#if defined(__SANITIZE_ADDRESS__)
constexpr std::uint32_t manyTriangles = 500000; // everything takes several times as long
#else
constexpr std::uint32_t manyTriangles = 5000000;
#endif

/// The longest time between two beats.
class Gaps
{
public:
    void beat()
    {
        const auto now = Clock::now();
        m_longest = std::max(m_longest, now - m_last);
        m_last = now;
        ++m_count;
    }

    Clock::duration longest() const { return m_longest; }
    int count() const { return m_count; }

private:
    Clock::time_point m_last = Clock::now();
    Clock::duration m_longest{0};
    int m_count = 0;
};

/// Beats on the thread of the window.
class Heart : public Gaps
{
public:
    Heart()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { beat(); });
        m_timer.start(2);
    }

private:
    QTimer m_timer;
};

/// Beats on a thread that has nothing else to do: what delays it is the rest of the machine.
class Control
{
public:
    Control()
        : m_thread([this] {
              while (!m_ends) {
                  std::this_thread::sleep_for(std::chrono::milliseconds(2));
                  m_gaps.beat();
              }
          })
    {}
    ~Control() { end(); }

    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    Clock::duration end()
    {
        m_ends = true;
        if (m_thread.joinable())
            m_thread.join();
        return m_gaps.longest();
    }

private:
    Gaps m_gaps;
    std::atomic<bool> m_ends{false};
    std::thread m_thread;
};

class Loading : public vfTest::OnDisplay
{
protected:
    static std::vector<std::string> recentFiles(Viewer& viewer)
    {
        std::vector<std::string> files;
        const auto* history = viewer.program().application().getDocManager().getFileHistory();
        for (int i = 0; i < history->getCount(); ++i)
            files.push_back(history->getHistoryFile(i).str());
        return files;
    }

    /// Begins to open the slow model, and waits until the dialog is there.
    void beginSlowly(Viewer& viewer)
    {
        const std::string path = directory.write("slow.obj", vfTest::slowModel());
        viewer.program().start([this, &viewer, path] {
            isOpened = viewer.program().application().openDocument(path.c_str(), vfBase::Options());
        });
        ASSERT_TRUE(viewer.program().waitForDialog("loading"));
        EXPECT_TRUE(viewer.waitFor([] { return Program::dialog()->isActiveWindow(); }));
        EXPECT_TRUE(viewer.waitFor([] {
            return Program::dialog()->findChild<QProgressBar*>()->maximum() > 0;
        })) << "how far it has come is known";
    }

    bool isOpened = false; ///< what beginSlowly() began
    TemporaryDirectory directory;
};

} // namespace

TEST_F(Loading, OfALargeModelNeverHoldsTheWindowUp)
{
    const std::string path = directory.file("hills.stl");
    vfTest::writeHills(path, manyTriangles);
    Viewer viewer({sailboat}); // so that the driver of OpenGL is at work already
    viewer.run([&] {
        viewer.ui([&] {
            Control control;
            Heart heart;
            vfViewer::ModelDocument* before = viewer.model();
            const auto begin = Clock::now();
            EXPECT_TRUE(viewer.program().application().openDocument(path.c_str(), vfBase::Options()));
            heart.beat();
            const auto took = Clock::now() - begin;
            EXPECT_GT(heart.count(), 20);
            EXPECT_NE(before, viewer.model());
            // The window may stand still while the model moves in, which is a part of reading it, and as long as the
            // machine makes any thread stand still. One that waited for the reader would stand still all the time.
            EXPECT_LT(heart.longest().count(), (took / 2 + 2 * control.end()).count());
            viewer.program().application().closeDocument(viewer.model());
        });
    });
}

TEST_F(Loading, CanBeCancelledAndLeavesEverythingAsItWas)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        const auto recentBefore = viewer.ui([&] { return recentFiles(viewer); });
        const auto viewBefore = viewer.ui([&] { return viewer.viewport(); });
        beginSlowly(viewer);
        const QPoint place =
            viewer.ui([] { return Viewer::onScreen(*Program::dialog()->findChild<QPushButton*>()); });
        viewer.hand.moveTo(place);
        Program::pause(50);
        viewer.hand.click(place);
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        viewer.ui([&] {
            EXPECT_EQ(1u, viewer.program().application().getNumDocuments());
            EXPECT_EQ(viewBefore, viewer.viewport());
            EXPECT_EQ(recentBefore, recentFiles(viewer));
            EXPECT_EQ(nullptr, QGuiApplication::overrideCursor());
        });
        Program::pause(300);
        EXPECT_EQ(nullptr, viewer.ui([] { return Program::dialog(); })) << "no message about it";
    });
}

TEST_F(Loading, CanBeCancelledByKey)
{
    Viewer viewer;
    viewer.run([&] {
        beginSlowly(viewer);
        viewer.hand.key("Escape");
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        EXPECT_EQ(0u, viewer.ui([&] { return viewer.program().application().getNumDocuments(); }));
    });
}

TEST_F(Loading, EndsWhenTheProgramIsEnded)
{
    Viewer viewer;
    viewer.run([&] { beginSlowly(viewer); }); // and the script ends the program then
    EXPECT_FALSE(isOpened) << "it waited for the reader";
}

TEST_F(Loading, OfAChangedFileCanBeCancelledAndTheModelStays)
{
    const std::string path = directory.write("model.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    Viewer viewer({path});
    viewer.run([&] {
        const auto before = viewer.ui([&] { return viewer.model()->scene().getChild(0); });
        directory.write("model.obj", vfTest::slowModel());
        ASSERT_TRUE(viewer.program().answer("reloadQuestion", "Read again"));
        ASSERT_TRUE(viewer.program().waitForDialog("loading"));
        viewer.waitFor([] { return Program::dialog()->isActiveWindow(); });
        viewer.hand.key("Escape");
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        viewer.ui([&] {
            ASSERT_TRUE(viewer.model());
            ASSERT_EQ(1u, viewer.model()->scene().getNumChildren());
            EXPECT_EQ(before, viewer.model()->scene().getChild(0));
        });
    });
}

TEST_F(Loading, SavingALargeModelNeverHoldsTheWindowUp)
{
    const std::string path = directory.file("hills.stl");
    vfTest::writeHills(path, 300000);
    Viewer viewer({path});
    viewer.run([&] {
        viewer.ui([&] {
            viewer.viewport()
                ->hide(); // without a graphics card each picture takes long, which is another matter
            viewer.model()->modify(true);
            Control control;
            Heart heart;
            const auto begin = Clock::now();
            EXPECT_TRUE(
                viewer.model()->onSaveDocument(directory.file("saved.obj"), vfBase::Options()).success());
            heart.beat();
            const auto took = Clock::now() - begin;
            EXPECT_GT(heart.count(), 20);
            EXPECT_LT(heart.longest().count(), (took / 2 + 2 * control.end()).count());
            EXPECT_FALSE(viewer.model()->isModified());
        });
    });
}

TEST_F(Loading, SavingCanBeCancelledAndLeavesTheFileAsItWas)
{
    const std::string path = directory.file("hills.stl");
    vfTest::writeHills(path, 300000);
    const std::string target = directory.write("saved.osgt", "before");
    Viewer viewer({path});
    viewer.run([&] {
        bool isSaved = true;
        viewer.ui([&] { viewer.model()->modify(true); });
        viewer.program().start(
            [&] { isSaved = viewer.model()->onSaveDocument(target, vfBase::Options()).success(); });
        ASSERT_TRUE(viewer.program().waitForDialog("loading"));
        viewer.waitFor([] { return Program::dialog()->isActiveWindow(); });
        viewer.hand.key("Escape");
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        viewer.ui([&] {
            EXPECT_FALSE(isSaved);
            EXPECT_TRUE(viewer.model()->isModified());
            EXPECT_EQ(path, viewer.model()->getFilename().str());
        });
    });
    EXPECT_EQ("before", vfTest::readFile(target));
}

class Opening : public vfTest::OnDisplay
{};

TEST_F(Opening, TheFirstModelLeavesTheWindowAsItIs)
{
    Viewer viewer;
    viewer.run([&] {
        const auto before = viewer.ui([&] { return viewer.program().window().winId(); });
        viewer.ui([&] { viewer.program().open(sailboat); });
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.viewport() && viewer.viewport()->isValid(); }));
        EXPECT_EQ(before, viewer.ui([&] { return viewer.program().window().winId(); }));
    });
}

TEST_F(Opening, TheViewHasTheKeyboardAfterwards)
{
    Viewer viewer;
    viewer.run([&] {
        viewer.hand.key("Ctrl+O");
        viewer.typeFileName(sailboat);
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.viewport() != nullptr; }));
        viewer.focus();
        viewer.ui([&] { EXPECT_EQ(viewer.viewport(), viewer.program().window().focusWidget()); });
        viewer.hand.key("w");
        EXPECT_TRUE(
            viewer.waitFor([&] { return viewer.program().action("vfViewer::Wireframe")->isChecked(); }));
    });
}

TEST_F(Opening, TheViewHasTheKeyboardWhenTheCommandLineNamedTheFile)
{
    Viewer viewer({sailboat});
    viewer.run(
        [&] { viewer.ui([&] { EXPECT_EQ(viewer.viewport(), viewer.program().window().focusWidget()); }); });
}

TEST_F(Opening, ASearchThatFindsNothingSaysSo)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        viewer.ui([&] {
            auto* search = viewer.program().window().findChild<QLineEdit*>(QStringLiteral("sceneSearch"));
            const auto* tree = viewer.program().window().findChild<QTreeWidget*>(QStringLiteral("sceneTree"));
            ASSERT_TRUE(search && tree);
            search->setText(QStringLiteral("zeppelin"));
            ASSERT_EQ(1, tree->topLevelItemCount());
            EXPECT_EQ(QStringLiteral("No part is called “zeppelin”"), tree->topLevelItem(0)->text(0));
            EXPECT_EQ(Qt::NoItemFlags, tree->topLevelItem(0)->flags());
        });
    });
}
