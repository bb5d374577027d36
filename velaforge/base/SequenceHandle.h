// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/ContainerHandle.h>
#include <velaforge/base/Iterator.h>
#include <velaforge/base/Require.h>

#include <algorithm>
#include <iterator>

namespace vfBase {

/// The operations that Vector and List share. Indexes count from 0. Where nothing else is said, an index must be less than
/// size(), and a container whose first or last element is taken must not be empty; otherwise the process ends with one
/// line.
///
/// The operators that return a container return a further handle on this one. That includes operator+, which
/// appends to its left operand.
template <class Self, class BodyType, class T>
class VFBASE_TEMPLATE_EXPORT SequenceHandle : public ContainerHandle<Self, BodyType>
{
    using Base = ContainerHandle<Self, BodyType>;

public:
    using typename Base::Body;
    using typename Base::Container;

    /// "No index", and "to the end" for a length.
    static constexpr unsigned int npos = 0xFFFFFFFFu;

    using Base::begin;
    using Base::end;
    using Base::size;

    /// @return the element at @p index
    T& operator[](unsigned int index) { return *place(index); }
    const T& operator[](unsigned int index) const { return *place(index); }

    /// @return the element at @p index; checks no more than operator[]
    T& at(unsigned int index) { return *place(index); }
    const T& at(unsigned int index) const { return *place(index); }

    /// @return the first element
    T& first() { return checkedFilled().front(); }
    const T& first() const { return checkedFilled().front(); }

    /// @return the last element
    T& last() { return checkedFilled().back(); }
    const T& last() const { return checkedFilled().back(); }

    /// @return a copy of the element, or a default one for an index out of range
    T value(unsigned int index) const { return index < size() ? *place(index) : T(); }

    /// @return a copy of the element, or @p def for an index out of range
    T value(unsigned int index, const T& def) const { return index < size() ? *place(index) : def; }

    /// @return true when an element equals @p x; linear
    bool contains(const T& x) const { return std::find(begin(), end(), x) != end(); }

    /// @return how many elements equal @p x; linear
    unsigned int count(const T& x) const { return static_cast<unsigned int>(std::count(begin(), end(), x)); }

    /// @return the first index at or behind @p from with that element, npos if there is none or @p from is
    ///         out of range
    unsigned int indexOf(const T& x, unsigned int from = 0) const
    {
        if (from >= size())
            return npos;
        const auto found = std::find(place(from), end(), x);
        return found == end() ? npos : from + static_cast<unsigned int>(std::distance(place(from), found));
    }

    /// @return the last index at or before @p from with that element, npos if there is none; a @p from out of
    ///         range means the last index
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

    /// Adds @p x behind the last element.
    void append(const T& x) { d->container->push_back(x); }

    /// Adds @p x in front of the first element.
    void prepend(const T& x) { d->container->insert(begin(), x); }

    /// Appends @p x.
    Self operator<<(const T& x)
    {
        append(x);
        return this->self();
    }

    /// Appends @p x.
    Self operator+=(const T& x) { return *this << x; }

    /// Appends all elements of @p other, which may be this very container.
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

    /// Appends all elements of @p other.
    Self operator+=(const Self& other) { return *this << other; }

    /// Appends to the left operand, const though it is, and returns a handle on it.
    Self operator+(const Self& other) const
    {
        Self left(this->self());
        return left << other;
    }

    /// Inserts before @p index; an index equal to size() appends.
    void insert(unsigned int index, const T& x) { d->container->insert(placeOrEnd(index), x); }

    /// Assigns @p x to the element at @p index.
    void replace(unsigned int index, const T& x) { *place(index) = x; }

    /// Removes the element at @p index.
    void remove(unsigned int index) { d->container->erase(place(index)); }

    /// Removes the first element.
    void removeFirst() { d->container->erase(place(0)); }

    /// Removes the last element.
    void removeLast()
    {
        checkedFilled();
        d->container->pop_back();
    }

    /// Removes the element at @p index. @return it
    T takeAt(unsigned int index)
    {
        const auto it = place(index);
        T taken(std::move(*it));
        d->container->erase(it);
        return taken;
    }

    /// Removes the first element. @return it
    T takeFirst() { return takeAt(0); }

    /// Removes the last element. @return it
    T takeLast()
    {
        T taken(std::move(checkedFilled().back()));
        d->container->pop_back();
        return taken;
    }

    /// @return a new container with @p len elements from @p pos on, fewer where there are no more
    Self mid(unsigned int pos, unsigned int len = npos) const
    {
        const unsigned int all = size();
        if (len == npos || pos + len > all)
            len = all - pos; // wraps for a pos behind the end, which is then caught as too long
        if (pos == 0 && len == all)
            return Base::adopt(Container(*d->container));
        if (len > all || len == 0 || pos >= all)
            return Self();
        const auto from = place(pos);
        return Base::adopt(Container(from, std::next(from, static_cast<std::ptrdiff_t>(len))));
    }

    /// @return true when both have the same number of elements, equal one by one
    bool operator==(const Self& other) const { return *d->container == *other.d->container; }
    bool operator!=(const Self& other) const { return !(*this == other); }

    /// @return a new cursor before the first element
    Iterator<Self> getIterator() const { return Iterator<Self>(this->self()); }

protected:
    using Base::Base;
    using Base::d;

    SequenceHandle(const SequenceHandle&) = default;
    SequenceHandle& operator=(const SequenceHandle&) = default;

    auto place(unsigned int index) const
    {
        VF_REQUIRE(index < size(), "vfBase container", "the index is out of range");
        return std::next(begin(), static_cast<std::ptrdiff_t>(index));
    }
    auto placeOrEnd(unsigned int index) const
    {
        VF_REQUIRE(index <= size(), "vfBase container", "the index is out of range");
        return std::next(begin(), static_cast<std::ptrdiff_t>(index));
    }
    Container& checkedFilled() const
    {
        VF_REQUIRE(!d->container->empty(), "vfBase container", "asked for an element of an empty one");
        return *d->container;
    }
};

} // namespace vfBase
