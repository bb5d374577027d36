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
/// The name of an inner node is the title of a menu or toolbar; the name of a leaf is the class of a command,
/// see Command::getCommandByName. A node has child items, properties and a hint for the toolbar.
///
/// CommandItem is a handle: copies share the node, and one node may have several parents. A node does not
/// know its parents, and nothing prevents a cycle. On a handle without a body, call only isValid and
/// assignment: every other operation ends the process with a message. A tree is built and read on one thread.
class VFAPPLICATION_EXPORT CommandItem : public vfBase::Referenced
{
public:
    /// How a toolbar shows the item. This library only stores the hint; the toolkit side follows it.
    enum ToolbarHint : std::uint32_t
    {
        DefaultHint = 0,    ///< as the other items of the toolbar
        IconOnly = 1,       ///< the icon alone
        TextOnly = 2,       ///< the text alone
        TextBesideIcon = 3, ///< the text to the right of the icon
        TextUnderIcon = 4   ///< the text below the icon
    };

    /// The class record, with a creator.
    static const vfBase::ClassInfo s_classInfo;

    /// Makes a new node.
    CommandItem();

    /// Makes a new node and appends it to the children of @p parent, unless that is null.
    explicit CommandItem(CommandItem* parent);

    /// Makes a handle on @p body; null gives a handle without a body.
    explicit CommandItem(CommandItemPrivate* body);

    /// Shares the node of @p other.
    CommandItem(const CommandItem& other) = default;

    /// Shares the node of @p other.
    CommandItem& operator=(const CommandItem& other);

    const vfBase::ClassInfo* getClassInfo() const override;

    /// Appends a handle on the node of @p item to the children. Does nothing if @p item has no body.
    /// @return this item
    CommandItem& operator<<(const CommandItem& item);

    /// Appends a new item with the name @p name; null gives it the empty name.
    /// @return this item, not the new one
    CommandItem& operator<<(const char* name);

    /// Appends a handle on the node of @p item to the children. Does nothing if @p item has no body.
    void append(const CommandItem& item);

    /// Appends @p item behind all children if one of them has the name of @p before. The position of that
    /// child does not matter.
    /// @return false, with nothing changed, if no child has that name or one of the two handles has no body
    bool insert(const CommandItem& item, const CommandItem& before);

    /// Returns this item if its name is @p name, otherwise the first child with that name. Does not search
    /// grandchildren.
    /// @return a handle without a body if none has the name or @p name is null
    CommandItem find(const char* name) const;

    /// Removes the first child that is the same node as @p item. Does nothing if @p item has no body.
    void remove(const CommandItem& item);

    /// Removes all children with the name @p name. Does nothing for null.
    void remove(const char* name);

    /// Sets the name to @p command and the context to @p context. A null context leaves the old one; a null
    /// name changes nothing at all. This library does not read the context.
    void setCommand(const char* command, const char* context);

    /// Returns the name. The pointer is valid until the name is set again.
    const char* getCommand() const;

    /// Returns the context. The pointer is valid until the context is set again.
    const char* getContext() const;

    /// Returns the children, in order.
    const vfBase::List<CommandItem>& getList() const;

    /// Returns the number of children.
    unsigned int getNumItems() const;

    /// Returns true if the item has no children; name, context and properties do not count.
    bool isEmpty() const;

    /// Sets the property @p key, which must not be null, to @p value. Replaces the former value and context
    /// of that key. This library does not read @p context; null counts as the empty text.
    void setProperty(const char* key, vfBase::VfVariant value, const char* context);

    /// Returns the value of the property @p key, which must not be null; an empty value if there is none.
    vfBase::VfVariant getProperty(const char* key) const;

    /// Returns a new map of all property values: changes of the map do not change the item.
    vfBase::Map<vfBase::VfString, vfBase::VfVariant> getProperties() const;

    /// Returns how a toolbar shows the item; DefaultHint unless set.
    ToolbarHint getToolbarHint() const;

    /// Sets how a toolbar shows the item.
    void setToolbarHint(ToolbarHint hint);

    /// Returns the body, null if there is none. The handle keeps its reference.
    CommandItemPrivate* getImp() const { return d; }

    /// Returns "vfApplication::CommandItem".
    static const char* classId();

private:
    CommandItemPrivate* d;
};

} // namespace vfApplication
