// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/CursorHandle.h>
#include <velaforge/base/Export.h>
#include <velaforge/base/Require.h>

#include <osg/Referenced>
#include <osg/ref_ptr>

#include <iterator>

namespace vfBase {

/// Body of Iterator. Holds a reference on the container's body, and thus keeps the elements alive.
template <class B>
class VFBASE_TEMPLATE_EXPORT RefBidirectionalSequentialIterator : public osg::Referenced
{
public:
    /// A position in the standard container.
    using Position = typename B::Container::iterator;

    /// Makes a cursor without a container.
    RefBidirectionalSequentialIterator() = default;

    /// Makes a cursor before the element at @p at of the container of @p body.
    RefBidirectionalSequentialIterator(B* body, Position at) : container(body), position(at) {}

    /// The container, null without one.
    osg::ref_ptr<B> container;

    /// The element that next would return.
    Position position{};

protected:
    ~RefBidirectionalSequentialIterator() override = default;
};

/// A cursor between the elements of a Vector, List or Set, moved explicitly.
///
///     for (auto it = list.getIterator(); it.hasNext();)
///         use(it.next());
///
/// Copies share the cursor and move together; assignment makes a handle share the other's cursor. A cursor
/// keeps the container alive. Do not use a cursor on an element that was removed.
template <class C>
class VFBASE_TEMPLATE_EXPORT Iterator
    : public CursorHandle<RefBidirectionalSequentialIterator<typename C::Body>, C>
{
    using Base = CursorHandle<RefBidirectionalSequentialIterator<typename C::Body>, C>;

public:
    /// The body of the cursor.
    using typename Base::Body;

    /// A reference to an element.
    using Reference = typename std::iterator_traits<typename Body::Position>::reference;

    /// The type of the elements.
    using Value = typename std::iterator_traits<typename Body::Position>::value_type;

    using Base::Base;

    /// Returns whether there is an element behind the cursor.
    bool hasNext() const { return d->container.valid() && d->position != d->container->container->end(); }

    /// Returns whether there is an element before the cursor.
    bool hasPrevious() const
    {
        return d->container.valid() && d->position != d->container->container->begin();
    }

    /// Moves forward by one and returns the element passed. Ends the process with a message if there is none.
    Reference next()
    {
        requireNext();
        return *d->position++;
    }

    /// Moves back by one and returns the element passed. Ends the process with a message if there is none.
    Reference previous()
    {
        requirePrevious();
        return *--d->position;
    }

    /// Returns the element that next would. Ends the process with a message if there is none.
    Reference peekNext() const
    {
        requireNext();
        return *d->position;
    }

    /// Returns the element that previous would. Ends the process with a message if there is none.
    Reference peekPrevious() const
    {
        requirePrevious();
        return *std::prev(d->position);
    }

    /// Moves behind the next element equal to @p x; to the end if there is none.
    /// @return false if there is none
    bool findNext(const Value& x)
    {
        const auto end = d->container->container->end();
        while (d->position != end) {
            if (*d->position++ == x)
                return true;
        }
        return false;
    }

    /// Moves before the previous element equal to @p x; to the front if there is none.
    /// @return false if there is none
    bool findPrevious(const Value& x)
    {
        const auto begin = d->container->container->begin();
        while (d->position != begin) {
            if (*--d->position == x)
                return true;
        }
        return false;
    }

    /// Moves the cursor before the first element.
    void toFront() { d->position = d->container->container->begin(); }

    /// Moves the cursor behind the last element.
    void toBack() { d->position = d->container->container->end(); }

private:
    using Base::d;

    void requireNext() const
    {
        VF_REQUIRE(hasNext(), "vfBase::Iterator", "there is no element behind the cursor");
    }
    void requirePrevious() const
    {
        VF_REQUIRE(hasPrevious(), "vfBase::Iterator", "there is no element before the cursor");
    }
};

} // namespace vfBase
