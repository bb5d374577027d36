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

/// A shared list: a handle on one std::list. Operations with an index walk through the list from the front.
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

    /// An empty list.
    List() : Base(new Body) {}

    /// A handle on @p body; null gives a handle without one.
    List(Body* body) : Base(body) {}

    /// A handle on the other's body if that is one of the same kind, otherwise one without a body.
    explicit List(const Referenced& other) : Base(other) {}

    /// Shares the body.
    List(const List& other) = default;

    /// Copies the elements into this body. @return a further handle on it
    List operator=(const List& other)
    {
        Base::operator=(other);
        return *this;
    }

    /// Removes the first match. @return true if there was one
    bool removeOne(const T& x)
    {
        const auto found = std::find(this->begin(), this->end(), x);
        if (found == this->end())
            return false;
        d->container->erase(found);
        return true;
    }

    /// Removes all matches. @return how many
    unsigned int removeAll(const T& x)
    {
        const T value(x); // may be an element itself
        const unsigned int before = this->size();
        d->container->remove(value);
        return before - this->size();
    }

    /// Exchanges the elements at the two indexes.
    void swap(unsigned int i, unsigned int j) { std::iter_swap(this->place(i), this->place(j)); }

    /// Moves the element at @p from in front of the one that is at @p to before the call; size() moves it to
    /// the end. Moved towards the end, it has the index to - 1 afterwards. A @p from of size() does nothing.
    void move(unsigned int from, unsigned int to)
    {
        if (from == this->size())
            return;
        d->container->splice(this->placeOrEnd(to), *d->container, this->place(from));
    }

    /// Inserts before the cursor. @return a new cursor on the new element
    Iterator<List> insert(const Iterator<List>& it, const T& x)
    {
        return cursor(d->container->insert(place(it), x));
    }

    /// Removes the element at the cursor. @return a new cursor on the following one
    Iterator<List> remove(const Iterator<List>& it)
    {
        VF_REQUIRE(place(it) != this->end(), "vfBase::List::remove", "the cursor stands at the end");
        return cursor(d->container->erase(place(it)));
    }

    /// Removes the elements from @p first up to, not including, @p last. @return a new cursor on @p last
    Iterator<List> remove(const Iterator<List>& first, const Iterator<List>& last)
    {
        const auto end = place(last);
        auto at = place(first);
        while (at != end && at != this->end())
            ++at;
        VF_REQUIRE(at == end, "vfBase::List::remove", "the second cursor stands before the first");
        return cursor(d->container->erase(place(first), end));
    }

    /// @return a new vector with the same elements. Defined in <velaforge/base/Vector.h>
    Vector<T> toVector() const;

    /// @return a new set of the elements. Defined in <velaforge/base/Set.h>
    Set<T> toSet() const;

    /// @return a new list with the elements of @p vector. Defined in <velaforge/base/Vector.h>
    static List fromVector(const Vector<T>& vector);

    /// @return a new list with the elements of @p set, in its order. Defined in <velaforge/base/Set.h>
    static List fromSet(const Set<T>& set);

    /// @return the standard container itself, which all handles on this body share
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
