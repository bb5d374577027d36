// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Referenced.h>

#include <osg/Observer>

namespace vfBase {

/// Refers to an osg::Observer, which is notified when a handle's body is destroyed.
///
/// Does not own the osg::Observer, which must live until it is removed or notified.
class VFBASE_EXPORT Observer
{
public:
    /// Refers to @p observer, which may be null.
    explicit Observer(osg::Observer* observer = nullptr) : m_observer(observer) {}

    /// @return the observer, null when none was given
    osg::Observer* get() const { return m_observer; }

private:
    osg::Observer* m_observer;
};

/// A handle on the set of observers of one body. It stays usable when that body has been destroyed.
class VFBASE_EXPORT ObserverSet : public Referenced
{
public:
    /// A handle without a set.
    ObserverSet() = default;

    /// A handle on @p set, which may be null.
    explicit ObserverSet(osg::ObserverSet* set) : Referenced(set, true) {}

    /// @return the observed body, uncounted; null when it has been destroyed, and for a handle without a set
    osg::Referenced* getObserved() const
    {
        auto* set = static_cast<osg::ObserverSet*>(Referenced::getImp());
        return set ? set->getObserverdObject() : nullptr;
    }
};

} // namespace vfBase
