// SPDX-License-Identifier: MIT
#include <velaforge/toolkit/Declarations.h>

#include <velaforge/base/Vector.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/modules/UiSetup.h>
#include <velaforge/shell/OptionsPageManager.h>
#include <velaforge/shell/Registry.h>
#include <velaforge/shell/UiOptionsPage.h>

#include <algorithm>
#include <tuple>

namespace vfApplication {

namespace {

const char* const applicationId = "vfApplication::Application";

} // namespace

std::vector<UiSetup*> activeSetups()
{
    std::vector<UiSetup*> setups;
    for (auto it = ModuleRegistry::instance(false)->getActiveModuleMap(); it.hasNext();) {
        const auto entry = it.next();
        if (!entry.value->hasUiSetup())
            continue;
        // The setup operations are not const, although Module::getUiSetup returns a const reference.
        auto* setup = const_cast<UiSetup*>(&entry.value->getUiSetup());
        setups.insert(entry.key == applicationId ? setups.begin() : setups.end(), setup);
    }
    return setups;
}

UiSetup* applicationSetup()
{
    const Module* module = ModuleRegistry::instance(false)->getModule(applicationId);
    return module && module->hasUiSetup() ? const_cast<UiSetup*>(&module->getUiSetup()) : nullptr;
}

CommandItem declaredMenus()
{
    CommandItem root;
    for (UiSetup* setup : activeSetups())
        setup->setupMenus(&root);
    return root;
}

CommandItem declaredViewMenus(const std::string& viewName)
{
    CommandItem root;
    for (UiSetup* setup : activeSetups())
        setup->setupViewMenus(viewName.c_str(), &root);
    return root;
}

CommandItem declaredToolbars()
{
    CommandItem root;
    for (UiSetup* setup : activeSetups())
        setup->setupToolbars(&root);
    return root;
}

std::vector<std::unique_ptr<UiOptionsPage>> orderedOptionsPages()
{
    std::vector<std::unique_ptr<UiOptionsPage>> pages;
    for (UiOptionsPage* page : Registry::instance().getOptionsPageManager().createPages())
        pages.emplace_back(page);
    const auto place = [](const auto& page) {
        return std::make_tuple(page->getGroupOrder(), std::string(page->getGroupName()), page->getTabOrder());
    };
    std::stable_sort(pages.begin(), pages.end(),
                     [&place](const auto& a, const auto& b) { return place(a) < place(b); });
    return pages;
}

std::string plainLabel(const char* label)
{
    std::string text;
    for (const char* at = label; *at; ++at) {
        if (*at != '&')
            text += *at;
        else if (at[1] == '&')
            text += *at++;
    }
    return text;
}

} // namespace vfApplication
