// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/VfObject.h>

#include <osg/Referenced>
#include <osg/ref_ptr>

#include <functional>

namespace vfBase {

class Observer;
class ObserverSet;

/// A handle on a reference counted body: the base class of classes whose state is in an osg::Referenced.
///
///     vfBase::Referenced a(body, true);
///     vfBase::Referenced b = a;       // shares the body
///     a == b;                         // true: the same body, whatever it holds
///     vfBase::Referenced::invalid();  // returned by an operation without a result
///
/// Copies share the body, which is destroyed with the last reference on it. A derived handle also stores a
/// typed pointer to the body and sets it in setImp and in each constructor that gets a body. Handles may be
/// copied and destroyed on several threads; one handle may be used by one thread at a time.
class VFBASE_EXPORT Referenced : public virtual VfObject
{
public:
    /// The class record, without a creator.
    static const ClassInfo s_classInfo;

    /// Makes a handle without a body.
    Referenced() = default;

    /// Makes a handle on @p imp, which may be null. The flag has no effect; callers pass true.
    Referenced(osg::Referenced* imp, bool) : m_imp(imp) {}

    /// Shares the body of @p other.
    Referenced(const Referenced& other) : VfObject(), m_imp(other.m_imp) {}
    ~Referenced() override = default;

    /// Shares the body of @p other. Releases the former body last, because it may own @p other.
    Referenced& operator=(const Referenced& other)
    {
        if (m_imp != other.m_imp) {
            osg::ref_ptr<osg::Referenced> former(other.m_imp);
            m_imp.swap(former);
        }
        return *this;
    }

    /// Returns whether both handles have the same body, or both have none.
    bool operator==(const Referenced& other) const { return m_imp == other.m_imp; }

    /// Returns whether the handles have different bodies.
    bool operator!=(const Referenced& other) const { return m_imp != other.m_imp; }

    /// Orders handles by the address of the body, for sorted containers.
    bool operator<(const Referenced& other) const
    {
        return std::less<const osg::Referenced*>()(m_imp.get(), other.m_imp.get());
    }

    /// Returns the body, null if there is none. The handle keeps its reference.
    osg::Referenced* getImp() const { return m_imp.get(); }

    const ClassInfo* getClassInfo() const override;

    /// Returns the identity of the body, equal for all handles on it; 0 without a body.
    std::uint64_t getUniqueId() const override;

    /// Shares the body of @p other.
    virtual void setImp(const Referenced& other);

    /// Calls the operation of the same name of the body. Bodies are always counted atomically. Does nothing
    /// without a body.
    virtual void setThreadSafeRefUnref(bool threadSafe);

    /// Increments the reference count of the body.
    /// @return the new count, 0 without a body
    virtual int ref() const;

    /// Decrements the reference count of the body. At 0 the body is destroyed, and every handle on it
    /// dangles.
    /// @return the new count, 0 without a body
    virtual int unref() const;

    /// Decrements the reference count of the body without destroying it at 0.
    /// @return the new count, 0 without a body
    virtual int unref_nodelete() const;

    /// Returns whether there is a body.
    virtual bool isValid() const;

    /// Adds an observer that is notified when the body is destroyed. Does nothing without a body or an
    /// observer.
    virtual void addObserver(const Observer& observer) const;

    /// Removes an observer that addObserver added. Does nothing without a body or an observer.
    virtual void removeObserver(const Observer& observer) const;

    /// Returns the observer set of the body, which is made if needed; a handle without a set if there is no
    /// body.
    virtual ObserverSet getOrCreateObserverSet() const;

    /// Returns the shared handle without a body. Callers copy it and must not change it.
    static Referenced& invalid();

    /// Returns "vfBase::Referenced".
    static const char* classId();

protected:
    // For derived classes that move handles: this class does not know their typed pointers.

    /// Takes over the reference @p imp.
    explicit Referenced(osg::ref_ptr<osg::Referenced>&& imp) noexcept { m_imp.swap(imp); }

    /// Returns the body with this handle's reference; the handle has no body afterwards. A derived handle
    /// clears its typed pointer.
    osg::ref_ptr<osg::Referenced> takeImp()
    {
        osg::ref_ptr<osg::Referenced> taken;
        taken.swap(m_imp);
        return taken;
    }

private:
    osg::ref_ptr<osg::Referenced> m_imp;
};

} // namespace vfBase
