// SPDX-License-Identifier: MIT
#include <velaforge/commands/CommandItem.h>

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Require.h>
#include <velaforge/commands/CommandItemPrivate.h>

#include <algorithm>
#include <string>
#include <utility>

namespace vfApplication {

namespace {

vfBase::VfObject* createItem()
{
    return new CommandItem;
}

/// Returns the first child with the name @p name, null if there is none.
const CommandItem* firstChild(const CommandItemPrivate& item, const std::string& name)
{
    const auto found = std::find_if(item.items.begin(), item.items.end(), [&name](const CommandItem& child) {
        return child.getImp()->command == name;
    });
    return found == item.items.end() ? nullptr : &*found;
}

} // namespace

CommandItemPrivate::~CommandItemPrivate() = default;

const vfBase::ClassInfo CommandItem::s_classInfo("vfApplication", "CommandItem", CommandItem::classId(),
                                                 &vfBase::Referenced::s_classInfo, nullptr,
                                                 static_cast<int>(sizeof(CommandItem)), &createItem);

CommandItem::CommandItem() : CommandItem(new CommandItemPrivate) {}

CommandItem::CommandItem(CommandItem* parent) : CommandItem()
{
    if (parent)
        parent->append(*this);
}

CommandItem::CommandItem(CommandItemPrivate* body) : vfBase::Referenced(body, true), d(body) {}

CommandItem& CommandItem::operator=(const CommandItem& other)
{
    // Read first: releasing our own body may destroy other.
    CommandItemPrivate* body = other.d;
    vfBase::Referenced::operator=(other);
    d = body;
    return *this;
}

const vfBase::ClassInfo* CommandItem::getClassInfo() const
{
    return &s_classInfo;
}

CommandItem& CommandItem::operator<<(const CommandItem& item)
{
    append(item);
    return *this;
}

CommandItem& CommandItem::operator<<(const char* name)
{
    CommandItem item;
    item.setCommand(name, nullptr);
    append(item);
    return *this;
}

void CommandItem::append(const CommandItem& item)
{
    VF_REQUIRE(d, "CommandItem::append", "the handle has no body");
    if (item.isValid())
        d->items.append(item);
}

bool CommandItem::insert(const CommandItem& item, const CommandItem& before)
{
    VF_REQUIRE(d, "CommandItem::insert", "the handle has no body");
    if (!item.isValid() || !before.isValid() || !firstChild(*d, before.d->command))
        return false;
    // At the end, by contract: a child with the name of before is only a condition.
    d->items.append(item);
    return true;
}

CommandItem CommandItem::find(const char* name) const
{
    if (!name)
        return CommandItem(static_cast<CommandItemPrivate*>(nullptr));
    VF_REQUIRE(d, "CommandItem::find", "the handle has no body");
    if (d->command == name)
        return *this;
    const CommandItem* child = firstChild(*d, name);
    return child ? *child : CommandItem(static_cast<CommandItemPrivate*>(nullptr));
}

void CommandItem::remove(const CommandItem& item)
{
    VF_REQUIRE(d, "CommandItem::remove", "the handle has no body");
    // A copy: item may be the list's own entry.
    const CommandItem removed(item); // NOLINT(performance-unnecessary-copy-initialization)
    if (removed.isValid())
        d->items.removeOne(removed);
}

void CommandItem::remove(const char* name)
{
    VF_REQUIRE(d, "CommandItem::remove", "the handle has no body");
    if (!name)
        return;
    // A copy: name may be the text of a child.
    const std::string removed(name);
    d->items.asStdList().remove_if(
        [&removed](const CommandItem& child) { return child.d->command == removed; });
}

void CommandItem::setCommand(const char* command, const char* context)
{
    VF_REQUIRE(d, "CommandItem::setCommand", "the handle has no body");
    if (!command)
        return;
    // A copy: command and context may be texts of this item.
    std::string newCommand(command);
    if (context)
        d->context = std::string(context);
    d->command = std::move(newCommand);
}

const char* CommandItem::getCommand() const
{
    VF_REQUIRE(d, "CommandItem::getCommand", "the handle has no body");
    return d->command.c_str();
}

const char* CommandItem::getContext() const
{
    VF_REQUIRE(d, "CommandItem::getContext", "the handle has no body");
    return d->context.c_str();
}

const vfBase::List<CommandItem>& CommandItem::getList() const
{
    VF_REQUIRE(d, "CommandItem::getList", "the handle has no body");
    return d->items;
}

unsigned int CommandItem::getNumItems() const
{
    VF_REQUIRE(d, "CommandItem::getNumItems", "the handle has no body");
    return d->items.size();
}

bool CommandItem::isEmpty() const
{
    VF_REQUIRE(d, "CommandItem::isEmpty", "the handle has no body");
    return d->items.isEmpty();
}

void CommandItem::setProperty(const char* key, vfBase::VfVariant value, const char* context)
{
    VF_REQUIRE(d && key, "CommandItem::setProperty", "the handle has no body, or a text is null");
    CommandItemProperty& property = d->properties[key];
    property.value = value;
    property.context = context ? context : "";
}

vfBase::VfVariant CommandItem::getProperty(const char* key) const
{
    VF_REQUIRE(d && key, "CommandItem::getProperty", "the handle has no body, or a text is null");
    const auto found = d->properties.find(key);
    return found == d->properties.end() ? vfBase::VfVariant() : found->second.value;
}

vfBase::Map<vfBase::VfString, vfBase::VfVariant> CommandItem::getProperties() const
{
    VF_REQUIRE(d, "CommandItem::getProperties", "the handle has no body");
    vfBase::Map<vfBase::VfString, vfBase::VfVariant> values;
    for (const auto& [key, property] : d->properties)
        values[key] = property.value;
    return values;
}

CommandItem::ToolbarHint CommandItem::getToolbarHint() const
{
    VF_REQUIRE(d, "CommandItem::getToolbarHint", "the handle has no body");
    return d->toolbarHint;
}

void CommandItem::setToolbarHint(ToolbarHint hint)
{
    VF_REQUIRE(d, "CommandItem::setToolbarHint", "the handle has no body");
    d->toolbarHint = hint;
}

const char* CommandItem::classId()
{
    return "vfApplication::CommandItem";
}

} // namespace vfApplication
