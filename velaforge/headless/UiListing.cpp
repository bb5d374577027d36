// SPDX-License-Identifier: MIT
#include <velaforge/headless/UiListing.h>

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Printable.h>
#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandItem.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/headless/HeadlessDockWindowProducer.h>
#include <velaforge/shell/UiOptionsPage.h>
#include <velaforge/toolkit/Declarations.h>

#include <algorithm>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace vfApplication {

namespace {

vfBase::VfString printableLabel(const char* label)
{
    return vfBase::printable(plainLabel(label));
}

void indent(std::ostream& out, int depth)
{
    out << std::string(static_cast<std::size_t>(depth) * 2, ' ');
}

/// Writes items and their children. A declaration may contain itself, so it stops at an item that is its own
/// ancestor.
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
        m_out << printableLabel(item.getCommand()) << (isBelowItself ? " ..." : "") << '\n';
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
            out << " \"" << printableLabel(window->getTitle()) << '"';
        out << ", " << areaName(window->getArea()) << (window->getVisible() ? "" : ", hidden")
            << (window->getAutoHide() ? ", auto-hide" : "") << '\n';
    }
}

void listOptionsPages(std::ostream& out)
{
    out << "options pages\n";
    std::string group;
    bool isFirst = true;
    for (const std::unique_ptr<UiOptionsPage>& page : orderedOptionsPages()) {
        if (isFirst || group != page->getGroupName()) {
            group = page->getGroupName();
            indent(out, 1);
            out << printableLabel(group.c_str()) << '\n';
        }
        isFirst = false;
        indent(out, 2);
        out << page->getClassInfo()->getClassId() << '\n';
    }
}

} // namespace

void listUi(std::ostream& out)
{
    listItems(out, "menus", declaredMenus());
    listItems(out, "toolbars", declaredToolbars());
    listDockWindows(out);
    listOptionsPages(out);
    out.flush();
}

} // namespace vfApplication
