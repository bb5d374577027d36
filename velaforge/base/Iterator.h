// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/KeptForProcess.h>
#include <velaforge/base/Referenced.h>

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

    /// Without a container.
    RefBidirectionalSequentialIterator() = default;

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
/// Copies share the cursor and move together; assignment rebinds to the other's cursor. The elements live as long
/// as a cursor stands on them, but a cursor on an element that was removed must not be used.
template <class C>
class VFBASE_TEMPLATE_EXPORT Iterator : public Referenced
{
public:
    using Body = RefBidirectionalSequentialIterator<typename C::Body>;
    using Reference = typename std::iterator_traits<typename Body::Position>::reference;
    using Value = typename std::iterator_traits<typename Body::Position>::value_type;

    /// Without a body, and so invalid.
    Iterator() : d(nullptr) {}

    /// Before the first element of @p container.
    explicit Iterator(const C& container) : Iterator(atFront(container)) {}

    /// A handle on @p body; null gives an invalid one.
    explicit Iterator(Body* body) : Referenced(body, true), d(body) {}

    Iterator(const Iterator& other) = default;
    Iterator& operator=(const Iterator& other)
    {
        Body* body = other.d; // read first: letting go of our own body may end other
        Referenced::operator=(other);
        d = body;
        return *this;
    }

    void setImp(const Referenced& other) override
    {
        const osg::ref_ptr<Body> body(dynamic_cast<Body*>(other.getImp()));
        Referenced::setImp(Referenced(body.get(), true));
        d = body.get();
    }

    /// @return true when there is a container to move in
    bool isValid() const override { return d && d->container.valid(); }

    bool hasNext() const { return d->container.valid() && d->position != d->container->container->end(); }
    bool hasPrevious() const
    {
        return d->container.valid() && d->position != d->container->container->begin();
    }

    /// Move by one and return the element passed; only where there is one.
    Reference next() { return *d->position++; }
    Reference previous() { return *--d->position; }

    /// Return the element that next or previous would; only where there is one.
    Reference peekNext() const { return *d->position; }
    Reference peekPrevious() const { return *std::prev(d->position); }

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

    void toFront() { d->position = d->container->container->begin(); }
    void toBack() { d->position = d->container->container->end(); }

    /// Starts anew at the front of @p container. The former cursor is never released: other parties may still
    /// hold it uncounted.
    void set(const C& container)
    {
        keepForProcess(d);
        *this = Iterator(container);
    }

    Body* getImp() const { return d; }

private:
    static Body* atFront(const C& container)
    {
        C handle(container);
        return new Body(handle.getImp(), handle.getImp()->container->begin());
    }

    Body* d;
};

} // namespace vfBase
