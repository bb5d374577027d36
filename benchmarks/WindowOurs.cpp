// SPDX-License-Identifier: MIT
// A program on the framework, from its start to the first painted frame of its window.
#include "WindowParts.h"

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationCallback.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/VfVariant.h>
#include <velaforge/commands/CommandItem.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtApplicationProducer.h>
#include <velaforge/qt/QtDockWindowContents.h>

#include <QMainWindow>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace vfApplication;

struct Nothing : CommandPrivate
{};

/// A command for each item.
struct Commands
{
    Commands()
    {
        for (int i = 0; i < menuCount; ++i) {
            for (int j = 0; j < itemCount; ++j)
                names.push_back("bench::Item" + std::to_string(j) + "Of" + std::to_string(i));
        }
        for (const std::string& name : names)
            records.push_back(std::make_unique<vfBase::ClassInfo>(
                "bench", name.c_str(), name.c_str(), &CommandPrivate::s_classInfo, nullptr,
                int(sizeof(Nothing)), []() -> vfBase::VfObject* { return new Nothing; }));
    }
    std::vector<std::string> names;
    std::vector<std::unique_ptr<vfBase::ClassInfo>> records;
};

const Commands& commands()
{
    static const Commands made;
    return made;
}

struct Ui : MinimalUiSetup
{
    void setupMenus(CommandItem* root) override
    {
        for (int i = 0; i < menuCount; ++i) {
            CommandItem menu(root);
            menu.setCommand(("Menu " + std::to_string(i)).c_str(), nullptr);
            for (int j = 0; j < itemCount; ++j) {
                CommandItem item(&menu);
                item.setCommand(commands().names[std::size_t(i) * itemCount + std::size_t(j)].c_str(),
                                nullptr);
                item.setProperty("toolTip", vfBase::VfVariant("What it does"), nullptr);
            }
        }
    }
    void setupToolbars(CommandItem* root) override
    {
        CommandItem bar(root);
        bar.setCommand("Bar", nullptr);
        for (int i = 0; i < toolbarItemCount; ++i)
            bar << commands().names[std::size_t(i)].c_str();
    }
};

struct Setup : ApplicationSetup
{
    const UiSetup& getUiSetup() const override
    {
        static const Ui ui;
        return ui;
    }
};

struct Callback : ApplicationCallback
{
    int onApplicationInitialized(Application*) override
    {
        QtApplication::instance()->getMainWindow().resize(1200, 800);
        new EndWhenPainted(*QtApplication::instance()->getMainWindow().centralWidget());
        return 0;
    }
    void onClosingDocument(Document*) override {}
    void onDocumentCreated(Document*) override {}
    void callbackExtension() override {}
};

} // namespace

int main(int argc, char** argv)
{
    vfBase::ApplicationInfo::instance().setApplicationName("bench");
    QtApplicationProducer::install();
    Application application(argc, argv, Setup());
    Callback callback;
    application.registerCallback(&callback);
    constexpr DockWindow::DockArea areas[] = {DockWindow::LeftDockArea, DockWindow::RightDockArea,
                                              DockWindow::BottomDockArea, DockWindow::LeftDockArea};
    for (int i = 0; i < dockCount; ++i) {
        const std::string id = "bench::Dock" + std::to_string(i);
        QtDockWindowContents::setContents(
            id.c_str(), [](QWidget& parent) { return new QLabel(QStringLiteral("contents"), &parent); });
        application.getDockWindowManager()
            .addNewOrGetExistingDockWindow(id.c_str(), areas[i], true, false, 0, nullptr)
            .setTitle(("Dock " + std::to_string(i)).c_str(), nullptr);
    }
    return application.run();
}
