// SPDX-License-Identifier: MIT
#include "Note.h"
#include "OptionsPage.h"
#include "Outline.h"

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/headless/HeadlessApplication.h>
#include <velaforge/headless/HeadlessApplicationProducer.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/shell/OptionsPageManager.h>
#include <velaforge/shell/Registry.h>

using namespace vfApplication;

class NotebookSetup : public ApplicationSetup
{
public:
    const UiSetup& getUiSetup() const override
    {
        static const NotebookMenus menus; // lives as long as the modules, to the end of the process
        return menus;
    }

    void onRegisterDocumentType() const override
    {
        new DocTemplate(&Application::instance(false)->getDocManager(), "Notes", "note", "", "note", "", "",
                        &Note::s_classInfo, &Page::s_classInfo, DocTemplate::Visible, 0, vfBase::Options());
        Registry::instance().getOptionsPageManager().addOptionsPageId("notebook::NotebookPage");
    }
};

/// For a module that adds nothing to the menus.
class NoMenus : public MinimalUiSetup
{
public:
    void setupMenus(CommandItem*) override {}
    void setupToolbars(CommandItem*) override {}
};

int main(int argc, char** argv)
{
    vfBase::ApplicationInfo::instance().setApplicationName("notebook");
    HeadlessApplicationProducer::install(); // the toolkit side
    Application application(argc, argv, NotebookSetup());
    HeadlessApplication::declareOptions(application.getArgumentParser()); // for --help

    static const NoMenus noMenus;
    ModuleRegistry::instance(false)->addModule(new OutlineModule(noMenus));
    return application.run();
}
