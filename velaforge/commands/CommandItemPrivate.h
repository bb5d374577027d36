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
    vfBase::VfVariant value; ///< what getProperty returns
    std::string context;     ///< stored only: no operation returns it
};

/// Body of CommandItem: the node itself.
struct VFAPPLICATION_EXPORT CommandItemPrivate : osg::Referenced
{
    std::string command;                                             ///< the name
    std::string context;                                             ///< set together with the name
    vfBase::List<CommandItem> items;                                 ///< the children, in order
    std::map<std::string, CommandItemProperty> properties;           ///< by key
    CommandItem::ToolbarHint toolbarHint = CommandItem::DefaultHint; ///< how a toolbar shows the item

protected:
    ~CommandItemPrivate() override;
};

} // namespace vfApplication
