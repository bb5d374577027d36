// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <osg/CopyOp>
#include <osg/Object>

namespace vfBase {

/// Base of every persisted settings class.
///
/// A settings class is a singleton with getters and setters. It declares the properties to keep in a
/// SettingsProperties beside its source, and registers its one object with a static
/// RegisterSettingsObjectProxy.
class VFBASE_EXPORT SettingsObjectPrivate : public osg::Object
{
public:
    SettingsObjectPrivate();

    /// Copies the osg::Object as @p copyop says.
    SettingsObjectPrivate(const SettingsObjectPrivate& other, const osg::CopyOp& copyop);

    /// @return the name of the object's entry within its library; here the class name
    virtual const char* tagName() const;

protected:
    ~SettingsObjectPrivate() override;
};

} // namespace vfBase
