// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/SequenceHandle.h>

#include <list>

namespace vfBase {

template <class T>
class Set;
template <class T>
class Vector;

/// Body of List.
template <class T>
class VFBASE_TEMPLATE_EXPORT RefListPrivate : public ContainerBody<std::list<T>>
{
public:
    using ContainerBody<std::list<T>>::ContainerBody;

protected:
    ~RefListPrivate() override = default;
};

/// A shared list: a handle on one std::list. Operations with an index walk from the front.
///
///     vfBase::List<vfBase::VfString> names;
///     names << "hull" << "mast";
///     names.move(0, 2);  // "mast", "hull"
///
/// See ContainerHandle for what copies share, and SequenceHandle for the operations that Vector has too.
template <class T>
class VFBASE_TEMPLATE_EXPORT List : public SequenceHandle<List<T>, RefListPrivate<T>, T>
{
    using Base = SequenceHandle<List<T>, RefListPrivate<T>, T>;
    friend Base;
    friend ContainerHandle<List<T>, RefListPrivate<T>>;

public:
    using Base::insert;
    using Base::remove;
    using Base::swap;
    using typename Base::Body;
    using typename Base::Container;

    /// Makes an empty list.
    List() : Base(new Body) {}

    /// Makes a handle on @p body; null gives a handle without one.
    List(Body* body) : Base(body) {}

    /// Makes a handle on the body of @p other; one without a body if that is no list of this kind.
    explicit List(const Referenced& other) : Base(other) {}

    /// Shares the body of @p other.
    List(const List& other) = default;

    /// Copies the elements of @p other into this body.
    /// @return a further handle on it
    List operator=(const List& other)
    {
        Base::operator=(other);
        return *this;
    }

    /// Removes the first element equal to @p x.
    /// @return false if there is none
    bool removeOne(const T& x)
    {
        const auto found = std::find(this->begin(), this->end(), x);
        if (found == this->end())
            return false;
        d->container->erase(found);
        return true;
    }

    /// Removes all elements equal to @p x.
    /// @return the number of elements removed
    unsigned int removeAll(const T& x)
    {
        const T value(x); // a copy: x may be an element
        const unsigned int before = this->size();
        d->container->remove(value);
        return before - this->size();
    }

    /// Exchanges the elements at @p i and @p j.
    void swap(unsigned int i, unsigned int j) { std::iter_swap(this->place(i), this->place(j)); }

    /// Moves the element at @p from before the one at @p to; to the end if @p to is size(). The new index is
    /// thus to - 1 if @p to is behind @p from. Does nothing if @p from is size().
    void move(unsigned int from, unsigned int to)
    {
        if (from == this->size())
            return;
        d->container->splice(this->placeOrEnd(to), *d->container, this->place(from));
    }

    /// Inserts @p x before the cursor @p it.
    /// @return a new cursor on the new element
    Iterator<List> insert(const Iterator<List>& it, const T& x)
    {
        return cursor(d->container->insert(place(it), x));
    }

    /// Removes the element at the cursor @p it.
    /// @return a new cursor on the next element
    Iterator<List> remove(const Iterator<List>& it)
    {
        VF_REQUIRE(place(it) != this->end(), "vfBase::List::remove", "the cursor stands at the end");
        return cursor(d->container->erase(place(it)));
    }

    /// Removes the elements from @p first up to, not including, @p last.
    /// @return a new cursor on @p last
    Iterator<List> remove(const Iterator<List>& first, const Iterator<List>& last)
    {
        const auto end = place(last);
        auto at = place(first);
        while (at != end && at != this->end())
            ++at;
        VF_REQUIRE(at == end, "vfBase::List::remove", "the second cursor stands before the first");
        return cursor(d->container->erase(place(first), end));
    }

    /// Returns a new vector with the same elements.
    Vector<T> toVector() const;

    /// Returns a new set with the same elements.
    Set<T> toSet() const;

    /// Returns a new list with the elements of @p vector.
    static List fromVector(const Vector<T>& vector);

    /// Returns a new list with the elements of @p set, in sorted order.
    static List fromSet(const Set<T>& set);

    /// Returns the standard container itself: changes of it change the list.
    Container& asStdList() const { return *d->container; }

private:
    using Base::d;
    using Base::place;

    typename Container::iterator place(const Iterator<List>& it) const
    {
        VF_REQUIRE(it.isValid() && it.getImp()->container.get() == d, "vfBase::List",
                   "the cursor stands in another container");
        return it.getImp()->position;
    }

    Iterator<List> cursor(typename Container::iterator position)
    {
        return Iterator<List>(new typename Iterator<List>::Body(d, position));
    }
};

} // namespace vfBase
