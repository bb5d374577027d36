// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/CursorHandle.h>
#include <velaforge/base/Export.h>
#include <velaforge/base/Pair.h>
#include <velaforge/base/Require.h>

#include <osg/Referenced>
#include <osg/ref_ptr>

#include <iterator>

namespace vfBase {

/// Body of AssociativeIterator. Holds a reference on the container's body, and thus keeps the entries alive.
template <class B>
class VFBASE_TEMPLATE_EXPORT RefBidirectionalAssociativeIterator : public osg::Referenced
{
public:
    /// A position in the standard container.
    using Position = typename B::Container::iterator;

    /// Makes a cursor without a container.
    RefBidirectionalAssociativeIterator() = default;

    /// Makes a cursor before the entry at @p at of the container of @p body.
    RefBidirectionalAssociativeIterator(B* body, Position at) : container(body), position(at), current(at) {}

    /// The container, null without one.
    osg::ref_ptr<B> container;
    Position position{}; ///< the entry that next would return
    Position current{};  ///< the entry returned last

protected:
    ~RefBidirectionalAssociativeIterator() override = default;
};

/// A cursor between the entries of a Map, moved explicitly.
///
///     for (auto it = map.getIterator(); it.hasNext();) {
///         it.next();
///         use(it.key(), it.value());
///     }
///
/// Of an invalid cursor call only isValid. Copies share the cursor and move together; assignment makes a
/// handle share the other's cursor. A cursor keeps the container alive. Do not use a cursor on an entry that
/// was removed.
template <class M>
class VFBASE_TEMPLATE_EXPORT AssociativeIterator
    : public CursorHandle<RefBidirectionalAssociativeIterator<typename M::Body>, M>
{
    using Base = CursorHandle<RefBidirectionalAssociativeIterator<typename M::Body>, M>;

public:
    /// The body of the cursor.
    using typename Base::Body;

    /// The type of the keys.
    using Key = typename M::Key;

    /// The type of the values.
    using Value = typename M::Value;

    /// A copy of an entry.
    using Entry = Pair<Key, Value>;

    using Base::Base;

    /// Returns whether there is an entry behind the cursor.
    bool hasNext() const { return d->position != end(); }

    /// Returns whether there is an entry before the cursor.
    bool hasPrevious() const { return d->position != begin(); }

    /// Moves behind the next entry, which becomes the current one.
    /// @return a copy of it; a default pair at the end
    Entry next()
    {
        if (d->position == end())
            return Entry();
        d->current = d->position++;
        return entry(d->current);
    }

    /// Moves before the previous entry, which becomes the current one; only if there is one.
    /// @return a copy of it
    Entry previous()
    {
        VF_REQUIRE(hasPrevious(), "vfBase::AssociativeIterator", "there is no entry before the cursor");
        d->current = --d->position;
        return entry(d->current);
    }

    /// Returns the entry that next would; only if there is one.
    Entry peekNext() const
    {
        VF_REQUIRE(hasNext(), "vfBase::AssociativeIterator", "there is no entry behind the cursor");
        return entry(d->position);
    }

    /// Returns the entry that previous would; only if there is one.
    Entry peekPrevious() const
    {
        VF_REQUIRE(hasPrevious(), "vfBase::AssociativeIterator", "there is no entry before the cursor");
        return entry(std::prev(d->position));
    }

    /// Moves behind the next entry with the value @p x, which becomes the current one. If there is none,
    /// moves to the end, without a current entry.
    /// @return false if there is none
    bool findNext(const Value& x)
    {
        while ((d->current = d->position) != end()) {
            if ((d->position++)->second == x)
                return true;
        }
        return false;
    }

    /// Moves before the previous entry with the value @p x, which becomes the current one. If there is none,
    /// moves to the front, without a current entry.
    /// @return false if there is none
    bool findPrevious(const Value& x)
    {
        while (d->position != begin()) {
            d->current = --d->position;
            if (d->current->second == x)
                return true;
        }
        d->current = end();
        return false;
    }

    /// Moves the cursor before the first entry, which becomes the current one.
    void toFront() { d->position = d->current = begin(); }

    /// Moves the cursor behind the last entry; there is no current entry then.
    void toBack() { d->position = d->current = end(); }

    /// Returns a copy of the key of the current entry; only if there is one.
    Key key() const
    {
        VF_REQUIRE(d->current != end(), "vfBase::AssociativeIterator", "there is no current entry");
        return d->current->first;
    }

    /// Returns a copy of the value of the current entry; only if there is one.
    Value value() const
    {
        VF_REQUIRE(d->current != end(), "vfBase::AssociativeIterator", "there is no current entry");
        return d->current->second;
    }

private:
    using Base::d;
    using Position = typename Body::Position;

    static Entry entry(Position at) { return Entry(at->first, at->second); }
    Position begin() const { return d->container->container->begin(); }
    Position end() const { return d->container->container->end(); }
};

} // namespace vfBase
