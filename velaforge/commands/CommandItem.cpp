// SPDX-License-Identifier: MIT
#include <velaforge/commands/CommandItem.h>

#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/CommandItemPrivate.h>

#include <algorithm>
#include <cassert>
#include <string>
#include <utility>

namespace vfApplication {

namespace {

vfBase::VfObject* createItem()
{
    return new CommandItem;
}

/// @return the first child of that name, null when there is none
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
    CommandItemPrivate* body = other.d; // read first: letting go of our own body may end other
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
    assert(d);
    if (item.isValid())
        d->items.append(item);
}

bool CommandItem::insert(const CommandItem& item, const CommandItem& before)
{
    assert(d);
    if (!item.isValid() || !before.isValid() || !firstChild(*d, before.d->command))
        return false;
    d->items.append(item); // not before it: that it is there is all that counts
    return true;
}

CommandItem CommandItem::find(const char* name) const
{
    if (!name)
        return CommandItem(static_cast<CommandItemPrivate*>(nullptr));
    assert(d);
    if (d->command == name)
        return *this;
    const CommandItem* child = firstChild(*d, name);
    return child ? *child : CommandItem(static_cast<CommandItemPrivate*>(nullptr));
}

void CommandItem::remove(const CommandItem& item)
{
    assert(d);
    // May be the list's own entry.
    const CommandItem removed(item); // NOLINT(performance-unnecessary-copy-initialization)
    if (removed.isValid())
        d->items.removeOne(removed);
}

void CommandItem::remove(const char* name)
{
    assert(d);
    if (!name)
        return;
    const std::string removed(name); // may be the text of a child
    d->items.asStdList().remove_if(
        [&removed](const CommandItem& child) { return child.d->command == removed; });
}

void CommandItem::setCommand(const char* command, const char* context)
{
    assert(d);
    if (!command)
        return;
    std::string newCommand(command); // either may be a text of this very item
    if (context)
        d->context = std::string(context);
    d->command = std::move(newCommand);
}

const char* CommandItem::getCommand() const
{
    assert(d);
    return d->command.c_str();
}

const char* CommandItem::getContext() const
{
    assert(d);
    return d->context.c_str();
}

const vfBase::List<CommandItem>& CommandItem::getList() const
{
    assert(d);
    return d->items;
}

unsigned int CommandItem::getNumItems() const
{
    assert(d);
    return d->items.size();
}

bool CommandItem::isEmpty() const
{
    assert(d);
    return d->items.isEmpty();
}

void CommandItem::setProperty(const char* key, vfBase::VfVariant value, const char* context)
{
    assert(d && key);
    CommandItemProperty& property = d->properties[key];
    property.value = value;
    property.context = context ? context : "";
}

vfBase::VfVariant CommandItem::getProperty(const char* key) const
{
    assert(d && key);
    const auto found = d->properties.find(key);
    return found == d->properties.end() ? vfBase::VfVariant() : found->second.value;
}

vfBase::Map<vfBase::VfString, vfBase::VfVariant> CommandItem::getProperties() const
{
    assert(d);
    vfBase::Map<vfBase::VfString, vfBase::VfVariant> values;
    for (const auto& [key, property] : d->properties)
        values[key] = property.value;
    return values;
}

CommandItem::ToolbarHint CommandItem::getToolbarHint() const
{
    assert(d);
    return d->toolbarHint;
}

void CommandItem::setToolbarHint(ToolbarHint hint)
{
    assert(d);
    d->toolbarHint = hint;
}

const char* CommandItem::classId()
{
    return "vfApplication::CommandItem";
}

} // namespace vfApplication
