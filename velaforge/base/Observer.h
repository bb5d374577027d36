// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Referenced.h>

#include <osg/Observer>

namespace vfBase {

/// Names an osg::Observer that is notified when the body of a handle is destroyed.
///
/// Does not own the osg::Observer, which must live until it is removed or notified.
class VFBASE_EXPORT Observer
{
public:
    /// Names @p observer, which may be null.
    explicit Observer(osg::Observer* observer = nullptr) : m_observer(observer) {}

    /// Returns the observer, null if there is none.
    osg::Observer* get() const { return m_observer; }

private:
    osg::Observer* m_observer;
};

/// A handle on the set of observers of a body. Stays usable after that body was destroyed.
class VFBASE_EXPORT ObserverSet : public Referenced
{
public:
    ObserverSet() = default;

    /// Makes a handle on @p set, which may be null.
    explicit ObserverSet(osg::ObserverSet* set) : Referenced(set, true) {}

    /// Returns the observed body; null after its destruction and for a handle without a set.
    osg::Referenced* getObserved() const
    {
        auto* set = static_cast<osg::ObserverSet*>(Referenced::getImp());
        return set ? set->getObserverdObject() : nullptr;
    }
};

} // namespace vfBase
