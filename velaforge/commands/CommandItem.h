// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/List.h>
#include <velaforge/base/Map.h>
#include <velaforge/base/Referenced.h>
#include <velaforge/base/VfString.h>
#include <velaforge/base/VfVariant.h>

#include <cstdint>

namespace vfApplication {

struct CommandItemPrivate;

/// A node of the tree that declares menus and toolbars without a widget.
///
///     vfApplication::CommandItem menus;
///     vfApplication::CommandItem file(&menus);
///     file.setCommand("&File", nullptr);
///     file << "vfViewer::Open" << "vfViewer::Save";  // names of command classes
///
/// An inner node is named as the user sees it; a leaf names the class of a command, see Command::getCommandByName. A
/// node has child items, properties and a hint for the toolbar.
///
/// A handle: copies share the node, and one node may stand under several parents. There is no way from a child to
/// its parent, and nothing prevents a cycle. Apart from isValid, find and assignment, nothing may be asked of a handle
/// without a body. A tree is built and read on one thread.
class VFAPPLICATION_EXPORT CommandItem : public vfBase::Referenced
{
public:
    /// How a toolbar shows the item. This library keeps the hint, a toolkit side follows it.
    enum ToolbarHint : std::uint32_t
    {
        DefaultHint = 0, ///< as all others
        IconOnly = 1,
        TextOnly = 2,
        TextBesideIcon = 3,
        TextUnderIcon = 4
    };

    static const vfBase::ClassInfo s_classInfo;

    /// A new node.
    CommandItem();

    /// A new node, appended to the children of @p parent unless that is null.
    explicit CommandItem(CommandItem* parent);

    /// A handle on @p body; null gives one without a body.
    explicit CommandItem(CommandItemPrivate* body);

    /// Shares the node.
    CommandItem(const CommandItem& other) = default;
    CommandItem& operator=(const CommandItem& other);

    const vfBase::ClassInfo* getClassInfo() const override;

    /// Appends a handle on @p item, or nothing if it has no body. @return this item
    CommandItem& operator<<(const CommandItem& item);

    /// Appends a new item of that name; of no name for null. @return this item, not the new one
    CommandItem& operator<<(const char* name);

    /// As operator<<.
    void append(const CommandItem& item);

    /// Appends @p item behind all children, provided that a child has the name of @p before: its place does not count.
    /// @return false, with nothing changed, when none has, or one of the two has no body
    bool insert(const CommandItem& item, const CommandItem& before);

    /// @return this item if it has that name, or else the first of its children that has; a handle without a body when
    ///         there is none, and for null. Grandchildren are not looked at.
    CommandItem find(const char* name) const;

    /// Takes the first child out that is the same node; nothing for an item without a body.
    void remove(const CommandItem& item);

    /// Takes all children of that name out; nothing for null.
    void remove(const char* name);

    /// Sets the name and a context that is free for use. Null for the context leaves the old one; null for the name
    /// changes nothing at all.
    void setCommand(const char* command, const char* context);

    /// @return the text, valid until it is set anew
    const char* getCommand() const;
    const char* getContext() const;

    /// @return the children, in order; to be read only
    const vfBase::List<CommandItem>& getList() const;
    unsigned int getNumItems() const;

    /// @return true without children, whatever else the item holds
    bool isEmpty() const;

    /// Sets the one property of that key, with a context that nobody here reads.
    /// @param key      must not be null
    /// @param context  null counts as the empty text
    void setProperty(const char* key, vfBase::VfVariant value, const char* context);

    /// @return the value, an empty one for an unknown key. @param key  must not be null
    vfBase::VfVariant getProperty(const char* key) const;

    /// @return a new map of all values: what is written to it, the item does not see
    vfBase::Map<vfBase::VfString, vfBase::VfVariant> getProperties() const;

    ToolbarHint getToolbarHint() const;
    void setToolbarHint(ToolbarHint hint);

    CommandItemPrivate* getImp() const { return d; }

    /// @return "vfApplication::CommandItem"
    static const char* classId();

private:
    CommandItemPrivate* d;
};

} // namespace vfApplication
