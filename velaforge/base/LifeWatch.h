// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// The untyped base class of LifeWatch and RunningCall: an entry in a list of the current thread.
class VFBASE_EXPORT ObjectWatch
{
public:
    ObjectWatch(const ObjectWatch&) = delete;
    ObjectWatch& operator=(const ObjectWatch&) = delete;

protected:
    /// Adds an entry to the list of this thread.
    /// @param object  the watched object
    /// @param call    the operation that runs on the object; null for a watch that marks none
    ObjectWatch(const void* object, const void* call) noexcept;
    ~ObjectWatch();

    /// Returns whether the object was destroyed meanwhile.
    bool isGone() const noexcept { return m_isGone; }

    /// Marks the watches of this thread on @p object as gone. Called when the object is destroyed.
    static void end(const void* object) noexcept;

    /// Returns whether an entry of this thread marks @p call as running on @p object.
    static bool isMarked(const void* object, const void* call) noexcept;

private:
    const void* m_object;
    const void* m_call;
    ObjectWatch* m_previous;
    ObjectWatch* m_next;
    bool m_isGone = false;
};

/// Tells after a call into foreign code whether an object without a reference count still exists.
///
///     const vfBase::LifeWatch<Document> watch(this);
///     view->onUpdate(sender);  // may close this document, and so delete it
///     if (watch.isGone())
///         return;
///
/// The watched class calls end() in its destructor. Costs a few nanoseconds and no allocation, and adds
/// nothing to the watched object. The watch and the destruction of the object belong to one thread.
template <class T>
class LifeWatch : private ObjectWatch
{
public:
    /// Watches @p object, which may be null: a watch on null never reports an end.
    explicit LifeWatch(const T* object) noexcept : ObjectWatch(object, nullptr), m_object(object) {}

    /// Returns whether the object was destroyed.
    bool isGone() const noexcept { return ObjectWatch::isGone(); }

    /// Returns the object, null after its destruction.
    T* get() const noexcept { return isGone() ? nullptr : const_cast<T*>(m_object); }

    /// Reports the end of @p object to every watch on it. Call it first in the destructor of T.
    static void end(const T* object) noexcept { ObjectWatch::end(object); }

private:
    const T* m_object;
};

/// Names an operation that must not be entered again while it runs on an object. Make it a constant with
/// static storage.
struct Call
{
    const char* name; ///< such as "Document::close", for debugging
};

/// Marks an operation as running on an object, so that a nested call on the same object can be refused.
///
///     const vfBase::Call closing{"Document::close"};
///
///     if (vfBase::RunningCall<Document>::isRunning(this, closing))
///         return false;
///     const vfBase::RunningCall<Document> running(this, closing);
///
/// The mark ends with its scope, and with the object. Each thread has marks of its own.
template <class T>
class RunningCall : private ObjectWatch
{
public:
    /// Marks @p call as running on @p object until this mark is destroyed.
    RunningCall(const T* object, const Call& call) noexcept : ObjectWatch(object, &call) {}

    /// Returns whether a RunningCall of @p call exists for @p object on this thread.
    static bool isRunning(const T* object, const Call& call) noexcept
    {
        return ObjectWatch::isMarked(object, &call);
    }

    /// Returns whether the object was destroyed.
    bool isGone() const noexcept { return ObjectWatch::isGone(); }
};

} // namespace vfBase
