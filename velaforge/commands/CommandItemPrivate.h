// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/commands/CommandItem.h>

#include <osg/Referenced>

#include <map>
#include <string>

namespace vfApplication {

/// A property of an item.
struct CommandItemProperty
{
    vfBase::VfVariant value;
    std::string context;
};

/// Body of CommandItem.
struct VFAPPLICATION_EXPORT CommandItemPrivate : osg::Referenced
{
    std::string command;
    std::string context;
    vfBase::List<CommandItem> items;
    std::map<std::string, CommandItemProperty> properties;
    CommandItem::ToolbarHint toolbarHint = CommandItem::DefaultHint;

protected:
    ~CommandItemPrivate() override;
};

} // namespace vfApplication
