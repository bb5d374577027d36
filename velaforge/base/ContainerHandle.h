// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/Referenced.h>

#include <osg/Referenced>

#include <memory>
#include <utility>

namespace vfBase {

/// Body of a container: wraps one standard container.
template <class StdContainer>
class VFBASE_TEMPLATE_EXPORT ContainerBody : public osg::Referenced
{
public:
    /// The standard container.
    using Container = StdContainer;

    /// Wraps a new, empty container.
    ContainerBody() : ContainerBody(new Container, true) {}

    /// Wraps @p wrapped; the destructor deletes it if @p owns is true.
    ContainerBody(Container* wrapped, bool owns) : data(wrapped), ownsData(owns), container(wrapped) {}

    ContainerBody(const ContainerBody&) = delete;
    ContainerBody& operator=(const ContainerBody&) = delete;

    void* data;           ///< the container, untyped
    bool ownsData;        ///< whether the destructor deletes the container
    Container* container; ///< the container

protected:
    ~ContainerBody() override
    {
        if (ownsData)
            delete container;
    }
};

/// The base class of the four containers: handles on a shared body, without copy-on-write.
///
/// Copies of a handle share its body: every handle sees every change. Assignment copies the elements of the
/// right side into the body of the left side; to share a body, copy the handle or call setImp. A handle made
/// without a body must get one by setImp or assignment before any other use.
template <class Self, class BodyType>
class VFBASE_TEMPLATE_EXPORT ContainerHandle : public Referenced
{
public:
    /// The body of the container.
    using Body = BodyType;

    /// The standard container in the body.
    using Container = typename Body::Container;

    /// Returns the body; null only for a handle made without one.
    Body* getImp() { return d; }

    /// Returns the body; null only for a handle made without one.
    const Body* getImp() const { return d; }

    /// Shares the body of @p other; has no body afterwards if that is another kind of container.
    void setImp(const Referenced& other) override
    {
        const osg::ref_ptr<Body> body(dynamic_cast<Body*>(other.getImp()));
        Referenced::setImp(Referenced(body.get(), true));
        d = body.get();
    }

    /// Returns the number of elements.
    unsigned int size() const { return static_cast<unsigned int>(d->container->size()); }

    /// Returns whether there are no elements.
    bool isEmpty() const { return d->container->empty(); }

    /// Returns the position of the first element, an iterator of the standard container, so that range-based
    /// for works. Whatever invalidates the iterators of that container invalidates it.
    typename Container::iterator begin() const { return d->container->begin(); }

    /// Returns the position behind the last element.
    typename Container::iterator end() const { return d->container->end(); }

    /// Removes all elements; the body stays.
    void clear() { d->container->clear(); }

    /// Exchanges the elements with those of @p other. Each handle keeps its body.
    void swap(const Self& other)
    {
        if (other.d->container != d->container)
            d->container->swap(*other.d->container);
    }

protected:
    /// Makes a handle on @p body, which may be null.
    explicit ContainerHandle(Body* body) : Referenced(body, true), d(body) {}

    /// Makes a handle on the body of @p other; one without a body if that is another kind of container.
    explicit ContainerHandle(const Referenced& other) : ContainerHandle(dynamic_cast<Body*>(other.getImp()))
    {}

    /// Shares the body of the other handle.
    ContainerHandle(const ContainerHandle&) = default;

    /// Copies the elements of @p other into this body: all handles on it see the change.
    ContainerHandle& operator=(const ContainerHandle& other)
    {
        if (d == other.d)
            return *this;
        std::unique_ptr<Container> copy =
            other.d ? std::make_unique<Container>(*other.d->container) : std::make_unique<Container>();
        if (d) {
            d->container->swap(*copy);
        } else {
            d = new Body(copy.release(), true);
            Referenced::setImp(Referenced(d, true));
        }
        return *this;
    }

    /// Returns this handle in its own type.
    Self& self() { return static_cast<Self&>(*this); }

    /// Returns this handle in its own type.
    const Self& self() const { return static_cast<const Self&>(*this); }

    /// Returns a new container that takes over @p contents.
    static Self adopt(Container&& contents)
    {
        return Self(new Body(new Container(std::move(contents)), true));
    }

    /// The body; null only for a handle made without one.
    Body* d;
};

} // namespace vfBase
