// SPDX-License-Identifier: MIT
// A debug build ends where another thread calls what belongs to the thread of the application.
#include "support/RecordingApplication.h"

#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/documents/FileHistory.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#ifndef NDEBUG

using vfBase::Options;

TEST(ThreadChecks, NameTheOperationThatAnotherThreadCalls)
{
    GTEST_FLAG_SET(death_test_style, "fast");
    vfTest::RecordingApplication bench;
    makeTemplate(bench.manager);
    vfTest::RecordingDocument& document = *bench.open("a.obj");
    vfApplication::View& view = *document.getFirstView();
    vfApplication::CommandProcessor& history = *document.getCommandProcessor();
    vfApplication::FileHistory files(4);
    vfApplication::DockWindowManager windows;
    vfApplication::DockWindow window("id");
    const vfApplication::Command command(new vfApplication::CommandPrivate);

    const std::vector<std::pair<std::string, std::function<void()>>> operations{
        {"Application::setDocManager", [&] { bench.application.setDocManager(nullptr); }},
        {"CommandProcessor::submit", [&] { history.submit(command, true); }},
        {"CommandProcessor::store", [&] { history.store(command); }},
        {"CommandProcessor::undo", [&] { history.undo(); }},
        {"CommandProcessor::redo", [&] { history.redo(); }},
        {"DocManager::createDocument", [&] { bench.manager.createDocument("b.obj", Options()); }},
        {"DocManager::updateDocument", [&] { bench.manager.updateDocument(&document, "b.obj", Options()); }},
        {"DocManager::createView", [&] { bench.manager.createView(&document, Options()); }},
        {"DocManager::closeDocument", [&] { bench.manager.closeDocument(&document, true); }},
        {"Document::close", [&] { document.Document::close(); }},
        {"Document::deleteAllViews", [&] { document.Document::deleteAllViews(); }},
        {"Document::modify", [&] { document.modify(true); }},
        {"Document::revert", [&] { document.revert(); }},
        {"Document::updateAllViews", [&] { document.updateAllViews(nullptr); }},
        {"Document::deselectAllViews", [&] { document.deselectAllViews(nullptr); }},
        {"Document::onOpenDocument", [&] { document.Document::onOpenDocument("b.obj", Options()); }},
        {"Document::onSaveDocument", [&] { document.Document::onSaveDocument("b.obj", Options()); }},
        {"View::activate", [&] { view.activate(true); }},
        {"FileHistory::addFileToHistory", [&] { files.addFileToHistory("a.obj"); }},
        {"DockWindowManager::addDockWindow", [&] { windows.addDockWindow(&window); }},
        {"DockWindowManager::addNewDockWindow", [&] { windows.addNewDockWindow(); }},
        {"DockWindowManager::addNewOrGetExistingDockWindow",
         [&] {
             windows.addNewOrGetExistingDockWindow("new", vfApplication::DockWindow::LeftDockArea, true,
                                                   false, 0, nullptr);
         }},
        {"DockWindowManager::removeDockWindow", [&] { windows.removeDockWindow(&window); }},
        {"DockWindowManager::removeDockWindow", [&] { windows.removeDockWindow("id"); }},
        {"DockWindowManager::onLanguageChange", [&] { windows.onLanguageChange(); }},
        {"DockWindowManager::saveDockWindowsState", [&] { windows.saveDockWindowsState(); }},
    };
    for (const auto& [name, call] : operations) {
        EXPECT_DEATH(std::thread(call).join(),
                     "velaFORGE: " + name + ": called on another thread than Application::run\n")
            << name;
    }
}

#endif
