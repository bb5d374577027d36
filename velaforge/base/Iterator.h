// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/CursorHandle.h>
#include <velaforge/base/Export.h>
#include <velaforge/base/Require.h>

#include <osg/Referenced>
#include <osg/ref_ptr>

#include <iterator>

namespace vfBase {

/// Body of Iterator. It keeps the container body, and so the elements, alive.
template <class B>
class VFBASE_TEMPLATE_EXPORT RefBidirectionalSequentialIterator : public osg::Referenced
{
public:
    using Position = typename B::Container::iterator;

    /// A body without a container, of an invalid cursor.
    RefBidirectionalSequentialIterator() = default;

    /// A body on the container body @p body, which it counts.
    RefBidirectionalSequentialIterator(B* body, Position at) : container(body), position(at) {}

    osg::ref_ptr<B> container;
    Position position{};

protected:
    ~RefBidirectionalSequentialIterator() override = default;
};

/// A cursor between the elements of a Vector, List or Set, moved explicitly.
///
///     for (auto it = list.getIterator(); it.hasNext();)
///         use(it.next());
///
/// Copies share the cursor and move together; assignment rebinds to the other's cursor. The elements live as
/// long as a cursor stands on them, but a cursor on an element that was removed must not be used.
template <class C>
class VFBASE_TEMPLATE_EXPORT Iterator
    : public CursorHandle<RefBidirectionalSequentialIterator<typename C::Body>, C>
{
    using Base = CursorHandle<RefBidirectionalSequentialIterator<typename C::Body>, C>;

public:
    using typename Base::Body;
    using Reference = typename std::iterator_traits<typename Body::Position>::reference;
    using Value = typename std::iterator_traits<typename Body::Position>::value_type;

    using Base::Base;

    /// @return true when there is an element behind the cursor; false without a container
    bool hasNext() const { return d->container.valid() && d->position != d->container->container->end(); }

    /// @return true when there is an element before the cursor; false without a container
    bool hasPrevious() const
    {
        return d->container.valid() && d->position != d->container->container->begin();
    }

    /// Moves behind the next element. Ends the process with one line where there is none. @return that element
    Reference next()
    {
        requireNext();
        return *d->position++;
    }

    /// Moves in front of the previous element. Ends the process with one line where there is none. @return that element
    Reference previous()
    {
        requirePrevious();
        return *--d->position;
    }

    /// @return the next element; does not move. Ends the process with one line where there is none
    Reference peekNext() const
    {
        requireNext();
        return *d->position;
    }

    /// @return the previous element; does not move. Ends the process with one line where there is none
    Reference peekPrevious() const
    {
        requirePrevious();
        return *std::prev(d->position);
    }

    /// Moves behind the next element equal to @p x, or to the end. @return true if there was one
    bool findNext(const Value& x)
    {
        const auto end = d->container->container->end();
        while (d->position != end) {
            if (*d->position++ == x)
                return true;
        }
        return false;
    }

    /// Moves back onto the previous element equal to @p x, or to the front. @return true if there was one
    bool findPrevious(const Value& x)
    {
        const auto begin = d->container->container->begin();
        while (d->position != begin) {
            if (*--d->position == x)
                return true;
        }
        return false;
    }

    /// Moves in front of the first element.
    void toFront() { d->position = d->container->container->begin(); }

    /// Moves behind the last element.
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
