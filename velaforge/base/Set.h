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
/// See ContainerHandle for what copies share. Operators that return a set return a further handle on this
/// one. The binary operators change their left operand.
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

    /// Makes an empty set.
    Set() : Base(new Body) {}

    /// Makes a handle on @p body; null gives a handle without one.
    Set(Body* body) : Base(body) {}

    /// Makes a handle on the body of @p other; one without a body if that is no set of this kind.
    explicit Set(const Referenced& other) : Base(other) {}

    /// Shares the body of @p other.
    Set(const Set& other) = default;

    /// Copies the elements of @p other into this body.
    /// @return a further handle on it
    Set operator=(const Set& other)
    {
        Base::operator=(other);
        return *this;
    }

    /// Adds @p x unless the set has it.
    /// @return a new cursor on the element
    Iterator<Set> insert(const T& x) { return cursor(d->container->insert(x).first); }

    /// Removes @p x.
    /// @return false if the set does not have it
    bool remove(const T& x) { return d->container->erase(x) != 0; }

    /// Returns whether the set has @p x.
    bool contains(const T& x) const { return d->container->find(x) != end(); }

    /// Returns whether the set has every element of @p other; true if that is empty.
    bool contains(const Set& other) const
    {
        return std::includes(begin(), end(), other.begin(), other.end(), d->container->key_comp());
    }

    /// Returns a cursor on @p x; an invalid one if the set does not have it.
    Iterator<Set> find(const T& x) const
    {
        const auto found = d->container->find(x);
        return found == end() ? Iterator<Set>(new typename Iterator<Set>::Body) : cursor(found);
    }

    /// Adds the elements of @p other.
    /// @return a further handle on this set
    Set unite(const Set& other)
    {
        return merge(other, [](auto... range) { std::set_union(range...); });
    }

    /// Keeps only the elements that @p other has too.
    /// @return a further handle on this set
    Set intersect(const Set& other)
    {
        return merge(other, [](auto... range) { std::set_intersection(range...); });
    }

    /// Removes the elements of @p other.
    /// @return a further handle on this set
    Set subtract(const Set& other)
    {
        return merge(other, [](auto... range) { std::set_difference(range...); });
    }

    /// Adds @p x.
    /// @return a further handle on this set
    Set operator<<(const T& x)
    {
        d->container->insert(x);
        return *this;
    }

    /// Adds @p x.
    /// @return a further handle on this set
    Set operator+=(const T& x) { return *this << x; }

    /// Adds @p x.
    /// @return a further handle on this set
    Set operator|=(const T& x) { return *this << x; }

    /// Removes @p x.
    /// @return a further handle on this set
    Set operator-=(const T& x)
    {
        d->container->erase(x);
        return *this;
    }

    /// Removes all elements except @p x.
    /// @return a further handle on this set
    Set operator&=(const T& x)
    {
        Container left;
        const auto found = d->container->find(x);
        if (found != end())
            left.insert(*found);
        d->container->swap(left);
        return *this;
    }

    /// Adds the elements of @p other.
    /// @return a further handle on this set
    Set operator+=(const Set& other)
    {
        if (other.d->container != d->container)
            d->container->insert(other.begin(), other.end());
        return *this;
    }

    /// Adds the elements of @p other.
    /// @return a further handle on this set
    Set operator|=(const Set& other) { return unite(other); }

    /// Removes the elements of @p other.
    /// @return a further handle on this set
    Set operator-=(const Set& other) { return subtract(other); }

    /// Keeps only the elements that @p other has too.
    /// @return a further handle on this set
    Set operator&=(const Set& other) { return intersect(other); }

    /// Adds the elements of @p other to the left operand, const though it is.
    /// @return a further handle on it
    Set operator+(const Set& other) const { return Set(*this) += other; }

    /// Removes the elements of @p other from the left operand, const though it is.
    /// @return a further handle on it
    Set operator-(const Set& other) const { return Set(*this) -= other; }

    /// Keeps only the elements of the left operand that @p other has too, const though it is.
    /// @return a further handle on it
    Set operator&(const Set& other) const { return Set(*this) &= other; }

    /// Adds the elements of @p other to the left operand, const though it is.
    /// @return a further handle on it
    Set operator|(const Set& other) const { return Set(*this) |= other; }

    /// Returns whether both sets have equal elements.
    bool operator==(const Set& other) const { return *d->container == *other.d->container; }

    /// Returns whether the sets have different elements.
    bool operator!=(const Set& other) const { return !(*this == other); }

    /// Returns a new cursor before the first element.
    Iterator<Set> getIterator() const { return Iterator<Set>(*this); }

    /// Returns a new list of the elements, in sorted order.
    List<T> toList() const;

    /// Returns a new set with the elements of @p list.
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
