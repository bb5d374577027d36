// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/ContainerHandle.h>
#include <velaforge/base/Iterator.h>
#include <velaforge/base/List.h>

#include <algorithm>
#include <iterator>
#include <set>

namespace vfBase {

/// Body of Set.
template <class T>
class VFBASE_TEMPLATE_EXPORT RefSetPrivate : public ContainerBody<std::set<T>>
{
public:
    using ContainerBody<std::set<T>>::ContainerBody;

protected:
    ~RefSetPrivate() override = default;
};

/// A shared ordered set: a handle on one std::set.
///
///     vfBase::Set<int> a;
///     a << 1 << 2;
///     a - other;  // changes a, as every operator here does
///
/// See ContainerHandle for what copies share. The operators that return a set return a further handle on this
/// one. That includes the binary operators, which change their left operand.
template <class T>
class VFBASE_TEMPLATE_EXPORT Set : public ContainerHandle<Set<T>, RefSetPrivate<T>>
{
    using Base = ContainerHandle<Set<T>, RefSetPrivate<T>>;
    friend Base;

public:
    using Base::begin;
    using Base::end;
    using typename Base::Body;
    using typename Base::Container;

    /// An empty set.
    Set() : Base(new Body) {}

    /// A handle on @p body; null gives a handle without one.
    Set(Body* body) : Base(body) {}

    /// A handle on the other's body if that is one of the same kind, otherwise one without a body.
    explicit Set(const Referenced& other) : Base(other) {}

    /// Shares the body.
    Set(const Set& other) = default;

    /// Copies the elements into this body. @return a further handle on it
    Set operator=(const Set& other)
    {
        Base::operator=(other);
        return *this;
    }

    /// Adds @p x unless an equal element is there. @return a new cursor on that element
    Iterator<Set> insert(const T& x) { return cursor(d->container->insert(x).first); }

    /// Removes the element equal to @p x. @return true if there was one
    bool remove(const T& x) { return d->container->erase(x) != 0; }

    /// @return true when there is an element equal to @p x
    bool contains(const T& x) const { return d->container->find(x) != end(); }

    /// @return true when every element of @p other is in this set; true for an empty @p other
    bool contains(const Set& other) const
    {
        return std::includes(begin(), end(), other.begin(), other.end(), d->container->key_comp());
    }

    /// @return a cursor on the element; an invalid one without a container when it is absent
    Iterator<Set> find(const T& x) const
    {
        const auto found = d->container->find(x);
        return found == end() ? Iterator<Set>(new typename Iterator<Set>::Body) : cursor(found);
    }

    /// Adds the elements of @p other.
    Set unite(const Set& other)
    {
        return merge(other, [](auto... range) { std::set_union(range...); });
    }

    /// Removes the elements that are not in @p other.
    Set intersect(const Set& other)
    {
        return merge(other, [](auto... range) { std::set_intersection(range...); });
    }

    /// Removes the elements of @p other.
    Set subtract(const Set& other)
    {
        return merge(other, [](auto... range) { std::set_difference(range...); });
    }

    /// Adds @p x.
    Set operator<<(const T& x)
    {
        d->container->insert(x);
        return *this;
    }
    Set operator+=(const T& x) { return *this << x; }
    Set operator|=(const T& x) { return *this << x; }

    /// Removes the element equal to @p x.
    Set operator-=(const T& x)
    {
        d->container->erase(x);
        return *this;
    }

    /// Removes every element but the one equal to @p x.
    Set operator&=(const T& x)
    {
        Container left;
        const auto found = d->container->find(x);
        if (found != end())
            left.insert(*found);
        d->container->swap(left);
        return *this;
    }

    /// Adds the elements of @p other; the same as |=.
    Set operator+=(const Set& other)
    {
        if (other.d->container != d->container)
            d->container->insert(other.begin(), other.end());
        return *this;
    }
    Set operator|=(const Set& other) { return unite(other); }

    /// Removes the elements of @p other.
    Set operator-=(const Set& other) { return subtract(other); }

    /// Removes the elements that are not in @p other.
    Set operator&=(const Set& other) { return intersect(other); }

    // Each changes the left operand like the operator with "=", although it is const, and returns a handle on
    // it.

    Set operator+(const Set& other) const { return Set(*this) += other; }
    Set operator-(const Set& other) const { return Set(*this) -= other; }
    Set operator&(const Set& other) const { return Set(*this) &= other; }
    Set operator|(const Set& other) const { return Set(*this) |= other; }

    /// @return true when both have equal elements
    bool operator==(const Set& other) const { return *d->container == *other.d->container; }
    bool operator!=(const Set& other) const { return !(*this == other); }

    /// @return a new cursor before the first element
    Iterator<Set> getIterator() const { return Iterator<Set>(*this); }

    /// @return a new list of the elements, in sorted order
    List<T> toList() const;

    /// @return a new set with the elements of @p list
    static Set fromList(const List<T>& list);

private:
    using Base::d;

    Iterator<Set> cursor(typename Container::iterator position) const
    {
        return Iterator<Set>(new typename Iterator<Set>::Body(d, position));
    }

    template <class Merge>
    Set merge(const Set& other, Merge mergeRanges)
    {
        Container merged;
        mergeRanges(begin(), end(), other.begin(), other.end(), std::inserter(merged, merged.end()),
                    d->container->key_comp());
        d->container->swap(merged);
        return *this;
    }
};

template <class T>
List<T> Set<T>::toList() const
{
    List<T> list;
    list.asStdList().assign(begin(), end());
    return list;
}

template <class T>
Set<T> Set<T>::fromList(const List<T>& list)
{
    const auto& elements = list.asStdList();
    return Base::adopt(Container(elements.begin(), elements.end()));
}

template <class T>
Set<T> List<T>::toSet() const
{
    return Set<T>::fromList(*this);
}

template <class T>
List<T> List<T>::fromSet(const Set<T>& set)
{
    return set.toList();
}

} // namespace vfBase
