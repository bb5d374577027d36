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

/// A handle on a counted body: the public half of each class whose state lies in an osg::Referenced.
///
///     vfBase::Referenced a(body, true);
///     vfBase::Referenced b = a;       // shares the body
///     a == b;                         // true: the same body, whatever it holds
///     vfBase::Referenced::invalid();  // the answer of an operation that has nothing to give
///
/// Copies share the body, which is destroyed with its last holder. A derived handle keeps a second, typed
/// pointer to the body; it sets that pointer in each constructor that is given a body, and in setImp. Handles
/// may be copied and destroyed on several threads; one handle belongs to one thread at a time.
class VFBASE_EXPORT Referenced : public virtual VfObject
{
public:
    static const ClassInfo s_classInfo;

    /// A handle without a body.
    Referenced() = default;

    /// Holds @p imp, which may be null. The flag has no effect; true by custom.
    Referenced(osg::Referenced* imp, bool) : m_imp(imp) {}

    /// Shares the other's body.
    Referenced(const Referenced& other) : VfObject(), m_imp(other.m_imp) {}
    ~Referenced() override = default;

    /// Shares the other's body; the former one is let go last, so that it may own @p other.
    Referenced& operator=(const Referenced& other)
    {
        if (m_imp != other.m_imp) {
            osg::ref_ptr<osg::Referenced> former(other.m_imp);
            m_imp.swap(former);
        }
        return *this;
    }

    /// @return true for handles on the same body, and for two handles without one
    bool operator==(const Referenced& other) const { return m_imp == other.m_imp; }
    bool operator!=(const Referenced& other) const { return m_imp != other.m_imp; }

    /// Orders handles by the addresses of their bodies, for sorted containers.
    bool operator<(const Referenced& other) const
    {
        return std::less<const osg::Referenced*>()(m_imp.get(), other.m_imp.get());
    }

    /// @return the body, uncounted; null when there is none
    osg::Referenced* getImp() const { return m_imp.get(); }

    const ClassInfo* getClassInfo() const override;

    /// @return the identity of the body, so that two handles on one body agree; 0 without a body
    std::uint64_t getUniqueId() const override;

    /// Shares the other handle's body, or becomes a handle without one.
    virtual void setImp(const Referenced& other);

    /// Calls osg::Referenced::setThreadSafeRefUnref of the body; bodies are counted atomically whatever is
    /// passed. Does nothing without a body.
    virtual void setThreadSafeRefUnref(bool threadSafe);

    /// Adds a count to the body. @return the new count, 0 without a body
    virtual int ref() const;

    /// Removes a count from the body. At 0 the body is destroyed, and every handle on it dangles.
    /// @return the new count, 0 without a body
    virtual int unref() const;

    /// Removes a count from the body without destroying it at 0. @return the new count, 0 without a body
    virtual int unref_nodelete() const;

    /// @return true when there is a body
    virtual bool isValid() const;

    /// Notifies the observer when the body is destroyed. Does nothing without a body or an observer.
    virtual void addObserver(const Observer& observer) const;

    /// Ends that for the observer. Does nothing without a body or an observer.
    virtual void removeObserver(const Observer& observer) const;

    /// @return the observer set of the body, made if needed; a handle without one when there is no body
    virtual ObserverSet getOrCreateObserverSet() const;

    /// @return the shared handle without a body; callers copy it and never write to it
    static Referenced& invalid();

    /// @return "vfBase::Referenced"
    static const char* classId();

protected:
    // For derived classes that can be moved: this class does not know their typed pointers.

    /// Takes over a count of a body.
    explicit Referenced(osg::ref_ptr<osg::Referenced>&& imp) noexcept { m_imp.swap(imp); }

    /// @return the body with this handle's count of it, which the handle then no longer has. A derived handle
    ///         clears its typed pointer.
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
