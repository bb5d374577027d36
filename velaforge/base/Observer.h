// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Referenced.h>

#include <osg/Observer>

namespace vfBase {

/// Names an osg::Observer that is to hear of the end of a handle's body.
///
/// Holds the pointer without owning it: the osg::Observer must live until it is removed or told.
class VFBASE_EXPORT Observer
{
public:
    explicit Observer(osg::Observer* observer = nullptr) : m_observer(observer) {}

    /// @return the observer, null when none was given
    osg::Observer* get() const { return m_observer; }

private:
    osg::Observer* m_observer;
};

/// Handle on the set of observers of one body; it stays usable after that body is gone.
class VFBASE_EXPORT ObserverSet : public Referenced
{
public:
    ObserverSet() = default;
    explicit ObserverSet(osg::ObserverSet* set) : Referenced(set, true) {}

    /// @return the observed body, null once it is gone or for a handle without a set
    osg::Referenced* getObserved() const
    {
        auto* set = static_cast<osg::ObserverSet*>(Referenced::getImp());
        return set ? set->getObserverdObject() : nullptr;
    }
};

} // namespace vfBase
