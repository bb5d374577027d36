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

/// Writes items and what is below them. Nothing keeps a declaration from containing itself, so it stops where an item
/// stands below itself.
class ItemLister
{
public:
    explicit ItemLister(std::ostream& out) : m_out(out) {}

    void list(const CommandItem& item)
    {
        indent(m_out, static_cast<int>(m_above.size()) + 1);
        if (item.isEmpty()) {
            m_out << leaf(item) << '\n';
            return;
        }
        const bool isBelowItself = std::find(m_above.begin(), m_above.end(), item.getImp()) != m_above.end();
        m_out << label(item.getCommand()) << (isBelowItself ? " ..." : "") << '\n';
        if (isBelowItself)
            return;
        m_above.push_back(item.getImp());
        for (const CommandItem& child : item.getList())
            list(child);
        m_above.pop_back();
    }

private:
    static std::string leaf(const CommandItem& item)
    {
        const std::string name = item.getCommand();
        if (name.empty())
            return "-";
        const bool isKnown = Command::getCommandByName(name).isValid();
        return vfBase::printable(name).str() + (isKnown ? "" : " (not registered here)");
    }

    std::ostream& m_out;
    std::vector<const CommandItemPrivate*> m_above;
};

void listItems(std::ostream& out, const char* title, const CommandItem& root)
{
    out << title << '\n';
    ItemLister lister(out);
    for (const CommandItem& item : root.getList())
        lister.list(item);
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
