// SPDX-License-Identifier: MIT
#include <velaforge/headless/UiListing.h>

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Printable.h>
#include <velaforge/base/Vector.h>
#include <velaforge/commands/Command.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/headless/HeadlessDockWindowProducer.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/modules/UiSetup.h>
#include <velaforge/shell/OptionsPageManager.h>
#include <velaforge/shell/Registry.h>
#include <velaforge/shell/UiOptionsPage.h>

#include <algorithm>
#include <memory>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

namespace vfApplication {

namespace {

const char* const applicationId = "vfApplication::Application";

/// The declarations of the active modules, that of the application first.
std::vector<UiSetup*> activeSetups()
{
    std::vector<UiSetup*> setups;
    for (auto it = ModuleRegistry::instance(false)->getActiveModuleMap(); it.hasNext();) {
        const auto entry = it.next();
        if (!entry.value->hasUiSetup())
            continue;
        // Declaring is no constant operation, though a module gives its declaration away as constant.
        auto* setup = const_cast<UiSetup*>(&entry.value->getUiSetup());
        setups.insert(entry.key == applicationId ? setups.begin() : setups.end(), setup);
    }
    return setups;
}

/// A label as a person reads it: without the marks of shortcut letters.
std::string label(const char* name)
{
    std::string text;
    for (const char* at = name; *at; ++at) {
        if (*at != '&')
            text += *at;
        else if (at[1] == '&')
            text += *at++;
    }
    return vfBase::printable(text);
}

void indent(std::ostream& out, int depth)
{
    out << std::string(static_cast<std::size_t>(depth) * 2, ' ');
}

/// Stops at a depth that no menu has, since nothing keeps a declaration from containing itself.
void listItem(std::ostream& out, const CommandItem& item, int depth)
{
    constexpr int deepest = 32;
    indent(out, depth);
    if (item.isEmpty()) {
        const std::string name = item.getCommand();
        out << (name.empty() ? "-" : vfBase::printable(name).str());
        if (!name.empty() && !Command::getCommandByName(name).isValid())
            out << " (not registered here)";
        out << '\n';
        return;
    }
    out << label(item.getCommand()) << '\n';
    if (depth >= deepest) {
        indent(out, depth + 1);
        out << "...\n";
        return;
    }
    for (const CommandItem& child : item.getList())
        listItem(out, child, depth + 1);
}

void listItems(std::ostream& out, const char* title, const CommandItem& root)
{
    out << title << '\n';
    for (const CommandItem& item : root.getList())
        listItem(out, item, 1);
}

std::string areaName(DockWindow::DockArea area)
{
    switch (area) {
    case DockWindow::NoDockArea:
        return "floating";
    case DockWindow::LeftDockArea:
        return "left";
    case DockWindow::RightDockArea:
        return "right";
    case DockWindow::TopDockArea:
        return "top";
    case DockWindow::BottomDockArea:
        return "bottom";
    default:
        return "area " + std::to_string(static_cast<int>(area));
    }
}

void listDockWindows(std::ostream& out)
{
    out << "dock windows\n";
    for (const DockWindow* window : HeadlessDockWindowProducer::windows()) {
        indent(out, 1);
        out << vfBase::printable(vfBase::VfString(window->getId()));
        if (*window->getTitle())
            out << " \"" << label(window->getTitle()) << '"';
        out << ", " << areaName(window->getArea()) << (window->getVisible() ? "" : ", hidden")
            << (window->getAutoHide() ? ", hides itself" : "") << '\n';
    }
}

void listOptionsPages(std::ostream& out)
{
    std::vector<std::unique_ptr<UiOptionsPage>> pages;
    for (UiOptionsPage* page : Registry::instance().getOptionsPageManager().createPages())
        pages.emplace_back(page);
    const auto place = [](const auto& page) {
        return std::make_tuple(page->getGroupOrder(), std::string(page->getGroupName()), page->getTabOrder());
    };
    std::stable_sort(pages.begin(), pages.end(),
                     [&place](const auto& a, const auto& b) { return place(a) < place(b); });
    out << "options pages\n";
    std::string group;
    bool isFirst = true;
    for (const auto& page : pages) {
        if (isFirst || group != page->getGroupName()) {
            group = page->getGroupName();
            indent(out, 1);
            out << label(group.c_str()) << '\n';
        }
        isFirst = false;
        indent(out, 2);
        out << page->getClassInfo()->getClassId() << '\n';
    }
}

} // namespace

CommandItem declaredMenus()
{
    CommandItem root;
    for (UiSetup* setup : activeSetups())
        setup->setupMenus(&root);
    return root;
}

CommandItem declaredToolbars()
{
    CommandItem root;
    for (UiSetup* setup : activeSetups())
        setup->setupToolbars(&root);
    return root;
}

void listUi(std::ostream& out)
{
    listItems(out, "menus", declaredMenus());
    listItems(out, "toolbars", declaredToolbars());
    listDockWindows(out);
    listOptionsPages(out);
    out.flush();
}

} // namespace vfApplication
