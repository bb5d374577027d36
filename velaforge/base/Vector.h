// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/List.h>
#include <velaforge/base/SequenceHandle.h>

#include <type_traits>
#include <vector>

namespace vfBase {

/// Body of Vector.
template <class T>
class VFBASE_TEMPLATE_EXPORT RefVectorPrivate : public ContainerBody<std::vector<T>>
{
public:
    using ContainerBody<std::vector<T>>::ContainerBody;

protected:
    ~RefVectorPrivate() override = default;
};

/// A shared array: a handle on one std::vector.
///
///     vfBase::Vector<int> a;
///     a << 1 << 2;
///     vfBase::Vector<int> b(a);  // the same elements: a change of either is seen through both
///     vfBase::Vector<int> c;
///     c = a;                     // elements of its own
///
/// See ContainerHandle for what copies share, and SequenceHandle for the operations that List has too.
template <class T>
class VFBASE_TEMPLATE_EXPORT Vector : public SequenceHandle<Vector<T>, RefVectorPrivate<T>, T>
{
    using Base = SequenceHandle<Vector<T>, RefVectorPrivate<T>, T>;
    friend Base;
    friend ContainerHandle<Vector<T>, RefVectorPrivate<T>>;

public:
    using Base::insert;
    using Base::npos;
    using Base::remove;
    using typename Base::Body;
    using typename Base::Container;

    /// Makes an empty vector.
    Vector() : Base(new Body) {}

    /// Makes a handle on @p body; null gives a handle without one.
    Vector(Body* body) : Base(body) {}

    /// Makes a handle on the body of @p other; one without a body if that is no vector of this kind.
    explicit Vector(const Referenced& other) : Base(other) {}

    /// Makes a vector of @p n default elements.
    template <class N, class = std::enable_if_t<std::is_integral_v<N>>>
    explicit Vector(N n) : Base(new Body(new Container(static_cast<std::size_t>(n)), true))
    {}

    /// Makes a vector of @p n copies of @p x.
    template <class N, class = std::enable_if_t<std::is_integral_v<N>>>
    Vector(N n, const T& x) : Base(new Body(new Container(static_cast<std::size_t>(n), x), true))
    {}

    /// Shares the body of @p other.
    Vector(const Vector& other) = default;

    /// Copies the elements of @p other into this body.
    /// @return a further handle on it
    Vector operator=(const Vector& other)
    {
        Base::operator=(other);
        return *this;
    }

    /// Returns the number of elements that fit without allocating.
    unsigned int capacity() const { return static_cast<unsigned int>(d->container->capacity()); }

    /// Allocates storage for @p n elements. Never shrinks the storage.
    void reserve(unsigned int n) { d->container->reserve(n); }

    /// Removes elements at the end, or appends default ones, until there are @p n.
    void resize(unsigned int n) { d->container->resize(n); }

    /// Releases storage beyond the size; all of it if there is no element.
    void squeeze() { Container(*d->container).swap(*d->container); }

    /// Assigns @p x to every element, from the last to the first.
    /// @param x  the value
    /// @param n  the size to resize to first; npos keeps the size
    /// @return a further handle on this vector
    Vector fill(const T& x, unsigned int n = npos)
    {
        const T value(x); // a copy: x may be an element
        if (n != npos)
            resize(n);
        for (auto it = d->container->rbegin(); it != d->container->rend(); ++it)
            *it = value;
        return *this;
    }

    /// Inserts @p n copies of @p x before @p index, which may equal size().
    void insert(unsigned int index, unsigned int n, const T& x)
    {
        d->container->insert(this->placeOrEnd(index), n, x);
    }

    /// Removes @p n elements from @p index on.
    void remove(unsigned int index, unsigned int n)
    {
        const auto from = this->placeOrEnd(index);
        VF_REQUIRE(n <= this->size() - index, "vfBase::Vector::remove", "the number is out of range");
        d->container->erase(from, from + static_cast<std::ptrdiff_t>(n));
    }

    /// Returns a pointer to the first element; not to be read if there is none.
    T* data() { return d->container->data(); }

    /// Returns a pointer to the first element; not to be read if there is none.
    const T* data() const { return d->container->data(); }

    /// Returns a pointer to the first element; not to be read if there is none.
    const T* constData() const { return d->container->data(); }

    /// Returns a new list with the same elements.
    List<T> toList() const;

    /// Returns a new vector with the elements of @p list.
    static Vector fromList(const List<T>& list);

    /// Returns the standard container itself: changes of it change the vector.
    Container& asStdVector() const { return *d->container; }

private:
    using Base::d;
};

template <class T>
List<T> Vector<T>::toList() const
{
    return List<T>::fromVector(*this);
}

template <class T>
Vector<T> Vector<T>::fromList(const List<T>& list)
{
    const auto& elements = list.asStdList();
    return Base::adopt(Container(elements.begin(), elements.end()));
}

template <class T>
Vector<T> List<T>::toVector() const
{
    return Vector<T>::fromList(*this);
}

template <class T>
List<T> List<T>::fromVector(const Vector<T>& vector)
{
    const auto& elements = vector.asStdVector();
    return Base::adopt(Container(elements.begin(), elements.end()));
}

} // namespace vfBase
