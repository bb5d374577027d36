// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/Referenced.h>

#include <osg/Referenced>

#include <memory>
#include <utility>

namespace vfBase {

/// Body of a container: one standard container.
template <class StdContainer>
class VFBASE_TEMPLATE_EXPORT ContainerBody : public osg::Referenced
{
public:
    using Container = StdContainer;

    /// Wraps a new, empty container.
    ContainerBody() : ContainerBody(new Container, true) {}

    /// Wraps @p wrapped, and deletes it with this body if @p owns.
    ContainerBody(Container* wrapped, bool owns) : data(wrapped), ownsData(owns), container(wrapped) {}

    ContainerBody(const ContainerBody&) = delete;
    ContainerBody& operator=(const ContainerBody&) = delete;

    void* data;           ///< the container, untyped
    bool ownsData;        ///< whether the container is deleted with this body
    Container* container; ///< the container

protected:
    ~ContainerBody() override
    {
        if (ownsData)
            delete container;
    }
};

/// What the four containers share: handles on one body, without copy-on-write.
///
/// Copies of a handle share its body, and every change is made in it. Assignment does not rebind: it copies
/// the elements of the right side into the body of the left, which all handles on that body see. A handle
/// that was made without a body must be given one by setImp or assignment before use.
template <class Self, class BodyType>
class VFBASE_TEMPLATE_EXPORT ContainerHandle : public Referenced
{
public:
    using Body = BodyType;
    using Container = typename Body::Container;

    /// @return the body; null only for a handle made without one
    Body* getImp() { return d; }
    const Body* getImp() const { return d; }

    /// Takes over the body of @p other if it is one of this kind of container, otherwise is left without one.
    void setImp(const Referenced& other) override
    {
        const osg::ref_ptr<Body> body(dynamic_cast<Body*>(other.getImp()));
        Referenced::setImp(Referenced(body.get(), true));
        d = body.get();
    }

    /// @return the number of elements
    unsigned int size() const { return static_cast<unsigned int>(d->container->size()); }
    /// @return true when there is no element
    bool isEmpty() const { return d->container->empty(); }

    /// @return an iterator of the standard container, invalidated as that container does it; for range-based
    ///         for loops
    typename Container::iterator begin() const { return d->container->begin(); }

    /// @return the end iterator
    typename Container::iterator end() const { return d->container->end(); }

    /// Removes all elements; the body stays.
    void clear() { d->container->clear(); }

    /// Exchanges the contents with those of @p other; the bodies stay where they are.
    void swap(const Self& other)
    {
        if (other.d->container != d->container)
            d->container->swap(*other.d->container);
    }

protected:
    explicit ContainerHandle(Body* body) : Referenced(body, true), d(body) {}
    explicit ContainerHandle(const Referenced& other) : ContainerHandle(dynamic_cast<Body*>(other.getImp()))
    {}
    ContainerHandle(const ContainerHandle&) = default;

    /// Copies the elements of @p other into this body, which all its handles then see.
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

    Self& self() { return static_cast<Self&>(*this); }
    const Self& self() const { return static_cast<const Self&>(*this); }

    /// @return a new container on contents that it takes over
    static Self adopt(Container&& contents)
    {
        return Self(new Body(new Container(std::move(contents)), true));
    }

    Body* d;
};

} // namespace vfBase
