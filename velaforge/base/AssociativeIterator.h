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

/// Body of AssociativeIterator. It keeps the container body, and so the entries, alive.
template <class B>
class VFBASE_TEMPLATE_EXPORT RefBidirectionalAssociativeIterator : public osg::Referenced
{
public:
    using Position = typename B::Container::iterator;

    /// A body without a container, of an invalid cursor.
    RefBidirectionalAssociativeIterator() = default;

    /// A body on the container body @p body, which it counts; the current entry is that at @p at.
    RefBidirectionalAssociativeIterator(B* body, Position at) : container(body), position(at), current(at) {}

    osg::ref_ptr<B> container;
    Position position{}; ///< the entry that next() returns
    Position current{};  ///< the entry that was returned last

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
/// Only isValid may be asked of an invalid one. Copies share the cursor and move together; assignment rebinds
/// to the other's cursor. The entries live as long as a cursor stands on them, but a cursor on an entry that
/// was removed must not be used.
template <class M>
class VFBASE_TEMPLATE_EXPORT AssociativeIterator
    : public CursorHandle<RefBidirectionalAssociativeIterator<typename M::Body>, M>
{
    using Base = CursorHandle<RefBidirectionalAssociativeIterator<typename M::Body>, M>;

public:
    using typename Base::Body;
    using Key = typename M::Key;
    using Value = typename M::Value;
    using Entry = Pair<Key, Value>;

    using Base::Base;

    /// @return true when there is an entry behind the cursor
    bool hasNext() const { return d->position != end(); }

    /// @return true when there is an entry before the cursor
    bool hasPrevious() const { return d->position != begin(); }

    /// Moves behind the next entry, which becomes the current one.
    /// @return a copy of that entry; at the end, where the cursor stays, a default pair
    Entry next()
    {
        if (d->position == end())
            return Entry();
        d->current = d->position++;
        return entry(d->current);
    }

    /// Moves in front of the previous entry, which must exist and becomes the current one. @return a copy of
    /// that entry
    Entry previous()
    {
        VF_REQUIRE(hasPrevious(), "vfBase::AssociativeIterator", "there is no entry before the cursor");
        d->current = --d->position;
        return entry(d->current);
    }

    /// @return a copy of the next entry, which must exist; does not move
    Entry peekNext() const
    {
        VF_REQUIRE(hasNext(), "vfBase::AssociativeIterator", "there is no entry behind the cursor");
        return entry(d->position);
    }

    /// @return a copy of the previous entry, which must exist; does not move
    Entry peekPrevious() const
    {
        VF_REQUIRE(hasPrevious(), "vfBase::AssociativeIterator", "there is no entry before the cursor");
        return entry(std::prev(d->position));
    }

    /// Moves behind the next entry with that value, which becomes the current one; without one, both move to
    /// the end.
    /// @return true if there was one
    bool findNext(const Value& x)
    {
        while ((d->current = d->position) != end()) {
            if ((d->position++)->second == x)
                return true;
        }
        return false;
    }

    /// Moves back onto the previous entry with that value, which becomes the current one; without one, the
    /// cursor moves to the front and the current entry to the end. @return true if there was one
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

    /// Moves in front of the first entry, which becomes the current one.
    void toFront() { d->position = d->current = begin(); }

    /// Moves behind the last entry; there is no current one then.
    void toBack() { d->position = d->current = end(); }

    /// @return a copy of the key of the current entry, which must exist
    Key key() const
    {
        VF_REQUIRE(d->current != end(), "vfBase::AssociativeIterator", "there is no current entry");
        return d->current->first;
    }

    /// @return a copy of the value of the current entry, which must exist
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
