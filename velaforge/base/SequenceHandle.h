// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/ContainerHandle.h>
#include <velaforge/base/Iterator.h>
#include <velaforge/base/Require.h>

#include <algorithm>
#include <iterator>

namespace vfBase {

/// The base class of Vector and List. Indexes count from 0. Unless stated otherwise an index must be less
/// than size(), and a container whose first or last element is taken must not be empty; a violation ends the process with
/// one line on standard error.
///
/// Operators that return a container return a further handle on this one. So does operator+, which appends to
/// its left operand.
template <class Self, class BodyType, class T>
class VFBASE_TEMPLATE_EXPORT SequenceHandle : public ContainerHandle<Self, BodyType>
{
    using Base = ContainerHandle<Self, BodyType>;

public:
    using typename Base::Body;
    using typename Base::Container;

    /// As an index: none. As a length: to the end.
    static constexpr unsigned int npos = 0xFFFFFFFFu;

    using Base::begin;
    using Base::end;
    using Base::size;

    /// Returns the element at @p index.
    T& operator[](unsigned int index) { return *place(index); }

    /// Returns the element at @p index.
    const T& operator[](unsigned int index) const { return *place(index); }

    /// Returns the element at @p index.
    T& at(unsigned int index) { return *place(index); }

    /// Returns the element at @p index.
    const T& at(unsigned int index) const { return *place(index); }

    /// Returns the first element. There must be one.
    T& first() { return checkedFilled().front(); }

    /// Returns the first element. There must be one.
    const T& first() const { return checkedFilled().front(); }

    /// Returns the last element. There must be one.
    T& last() { return checkedFilled().back(); }

    /// Returns the last element. There must be one.
    const T& last() const { return checkedFilled().back(); }

    /// Returns a copy of the element at @p index; a default one for an index out of range.
    T value(unsigned int index) const { return index < size() ? *place(index) : T(); }

    /// Returns a copy of the element at @p index; @p def for an index out of range.
    T value(unsigned int index, const T& def) const { return index < size() ? *place(index) : def; }

    /// Returns whether an element equals @p x.
    bool contains(const T& x) const { return std::find(begin(), end(), x) != end(); }

    /// Returns the number of elements equal to @p x.
    unsigned int count(const T& x) const { return static_cast<unsigned int>(std::count(begin(), end(), x)); }

    /// Returns the first index at or behind @p from of an element equal to @p x; npos if there is none or @p
    /// from is out of range.
    unsigned int indexOf(const T& x, unsigned int from = 0) const
    {
        if (from >= size())
            return npos;
        const auto found = std::find(place(from), end(), x);
        return found == end() ? npos : from + static_cast<unsigned int>(std::distance(place(from), found));
    }

    /// Returns the last index at or before @p from of an element equal to @p x; npos if there is none. A @p
    /// from out of range means the last index.
    unsigned int lastIndexOf(const T& x, unsigned int from = npos) const
    {
        if (size() == 0)
            return npos;
        unsigned int index = from >= size() ? size() - 1 : from;
        for (auto it = place(index);; --it, --index) {
            if (*it == x)
                return index;
            if (index == 0)
                return npos;
        }
    }

    /// Adds @p x at the end.
    void append(const T& x) { d->container->push_back(x); }

    /// Adds @p x at the front.
    void prepend(const T& x) { d->container->insert(begin(), x); }

    /// Adds @p x at the end.
    /// @return a further handle on this container
    Self operator<<(const T& x)
    {
        append(x);
        return this->self();
    }

    /// Adds @p x at the end.
    /// @return a further handle on this container
    Self operator+=(const T& x) { return *this << x; }

    /// Adds all elements of @p other, which may be this container, at the end.
    /// @return a further handle on this container
    Self operator<<(const Self& other)
    {
        if (other.d->container == d->container) {
            const Container copy(*d->container);
            d->container->insert(end(), copy.begin(), copy.end());
        } else {
            d->container->insert(end(), other.begin(), other.end());
        }
        return this->self();
    }

    /// Adds all elements of @p other at the end.
    /// @return a further handle on this container
    Self operator+=(const Self& other) { return *this << other; }

    /// Adds all elements of @p other at the end of the left operand, const though it is.
    /// @return a further handle on it
    Self operator+(const Self& other) const
    {
        Self left(this->self());
        return left << other;
    }

    /// Inserts @p x before @p index. An index equal to size() appends.
    void insert(unsigned int index, const T& x) { d->container->insert(placeOrEnd(index), x); }

    /// Assigns @p x to the element at @p index.
    void replace(unsigned int index, const T& x) { *place(index) = x; }

    /// Removes the element at @p index.
    void remove(unsigned int index) { d->container->erase(place(index)); }

    /// Removes the first element. There must be one.
    void removeFirst() { d->container->erase(place(0)); }

    /// Removes the last element. There must be one.
    void removeLast()
    {
        checkedFilled();
        d->container->pop_back();
    }

    /// Removes the element at @p index and returns it.
    T takeAt(unsigned int index)
    {
        const auto it = place(index);
        T taken(std::move(*it));
        d->container->erase(it);
        return taken;
    }

    /// Removes the first element, which must exist, and returns it.
    T takeFirst() { return takeAt(0); }

    /// Removes the last element, which must exist, and returns it.
    T takeLast()
    {
        T taken(std::move(checkedFilled().back()));
        d->container->pop_back();
        return taken;
    }

    /// Returns a new container with @p len elements from @p pos on; with fewer if there are no more.
    Self mid(unsigned int pos, unsigned int len = npos) const
    {
        const unsigned int all = size();
        if (len == npos || pos + len > all)
            len = all - pos; // wraps if pos is behind the end; the test below catches that
        if (pos == 0 && len == all)
            return Base::adopt(Container(*d->container));
        if (len > all || len == 0 || pos >= all)
            return Self();
        const auto from = place(pos);
        return Base::adopt(Container(from, std::next(from, static_cast<std::ptrdiff_t>(len))));
    }

    /// Returns whether both containers have equal elements in the same order.
    bool operator==(const Self& other) const { return *d->container == *other.d->container; }

    /// Returns whether the elements or their order differ.
    bool operator!=(const Self& other) const { return !(*this == other); }

    /// Returns a new cursor before the first element.
    Iterator<Self> getIterator() const { return Iterator<Self>(this->self()); }

protected:
    using Base::Base;
    using Base::d;

    /// Shares the body of the other handle.
    SequenceHandle(const SequenceHandle&) = default;

    /// Copies the elements of the other container into this body.
    SequenceHandle& operator=(const SequenceHandle&) = default;

    /// Returns the position of the element at @p index, which must be in range.
    auto place(unsigned int index) const
    {
        VF_REQUIRE(index < size(), "vfBase container", "the index is out of range");
        return std::next(begin(), static_cast<std::ptrdiff_t>(index));
    }

    /// Returns the position of the element at @p index, or the end for size().
    auto placeOrEnd(unsigned int index) const
    {
        VF_REQUIRE(index <= size(), "vfBase container", "the index is out of range");
        return std::next(begin(), static_cast<std::ptrdiff_t>(index));
    }

    /// Returns the standard container, which must not be empty.
    Container& checkedFilled() const
    {
        VF_REQUIRE(!d->container->empty(), "vfBase container", "asked for an element of an empty one");
        return *d->container;
    }
};

} // namespace vfBase
