// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <osg/CopyOp>
#include <osg/Object>

namespace vfBase {

/// The class to derive settings classes from; SettingsBase, derived from it, implements the pattern.
/// SettingsObject is the handle on it.
///
/// A settings class is a singleton with getters and setters. It declares the properties to save in a
/// SettingsProperties in its source file, and registers its only object with a static
/// RegisterSettingsObjectProxy.
class VFBASE_EXPORT SettingsObjectPrivate : public osg::Object
{
public:
    /// Makes an object.
    SettingsObjectPrivate();

    /// Copies what osg::Object has.
    SettingsObjectPrivate(const SettingsObjectPrivate& other, const osg::CopyOp& copyop);

    /// Returns the name of the object's entry within its library; the class name here.
    virtual const char* tagName() const;

protected:
    ~SettingsObjectPrivate() override;
};

} // namespace vfBase
