// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Referenced>

#include <type_traits>

/// The pair of a handle and a body that own each other, of which either may be destroyed first.
///
///     class Gauge                          class GaugePrivate : public osg::Referenced
///     {                                    {
///         ~Gauge()                             ~GaugePrivate()
///         {                                    {
///             endHandle(d, &GaugePrivate::owner);  endBody(owner, &Gauge::d);
///         }                                    }
///         GaugePrivate* d;                     Gauge* owner;
///     };                                   };
///
/// Each side clears the other's pointer before it goes on, so that nothing is destroyed twice. A table that
/// holds only the body thereby owns the handle. While the body destroys the handle, the handle has no body:
/// in the destructor of a class derived from it, its accessors answer as for an empty object.
namespace vfBase::crosswise {

/// The destructor of the handle: takes the handle from the body and releases the body.
/// @param body   the handle's pointer; null when the body was destroyed first
/// @param owner  the body's pointer to its handle
template <class Handle, class Body>
void endHandle(Body*& body, Handle* Body::*owner)
{
    if (!body)
        return;
    body->*owner = nullptr;
    if constexpr (std::is_base_of_v<osg::Referenced, Body>)
        body->unref();
    else
        delete body;
    body = nullptr;
}

/// The destructor of the body: takes the body from the handle and destroys the handle.
/// @param owner  the body's pointer; null when the handle was destroyed first
/// @param body   the handle's pointer to its body
template <class Handle, class Body>
void endBody(Handle*& owner, Body* Handle::*body)
{
    if (!owner)
        return;
    owner->*body = nullptr;
    delete owner;
    owner = nullptr;
}

/// Gives the body a handle. A handle that it had before is destroyed.
template <class Handle>
void setOwner(Handle*& owner, Handle* handle)
{
    if (owner != handle)
        delete owner;
    owner = handle;
}

} // namespace vfBase::crosswise
