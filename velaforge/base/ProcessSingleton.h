// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

namespace vfBase {

/// Makes the one object of a class at the first call and keeps it until the process ends; the body of
/// `instance(bool)`:
///
///     Bookmarks* Bookmarks::instance(bool erase)
///     {
///         return vfBase::processSingleton(erase, [] { return osg::ref_ptr<Bookmarks>(new Bookmarks); });
///     }
///
/// Each place that calls this has an object of its own. The first call is safe on several threads. An exit
/// handler releases the object, as does @p erase. From then on, and while the object is destroyed, the result
/// is null, so that destructors that run at exit may call this.
/// @param erase  releases the object for good
/// @param make   returns the owner of a new object: a ref_ptr, shared_ptr or unique_ptr
/// @return the object, null once it was released
template <class Make>
auto processSingleton(bool erase, Make make)
{
    using Owner = decltype(make());

    // The owner itself is never destroyed: a call after the exit handler finds a null one.
    static Owner& owner = *new Owner(make());
    struct Exit
    {
        static void release() { const Owner released = std::exchange(owner, Owner()); }
        ~Exit() { release(); }
    };
    static const Exit exit;
    if (erase)
        Exit::release();
    return owner.get();
}

} // namespace vfBase
