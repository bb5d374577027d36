// SPDX-License-Identifier: MIT
#include <velaforge/base/SettingsObject.h>

#include <velaforge/base/RegisterSettingsObjectProxy.h>
#include <velaforge/base/Settings.h>

namespace vfBase {

SettingsObjectPrivate::SettingsObjectPrivate() = default;

SettingsObjectPrivate::SettingsObjectPrivate(const SettingsObjectPrivate& other, const osg::CopyOp& copyop)
    : osg::Object(other, copyop)
{}

SettingsObjectPrivate::~SettingsObjectPrivate() = default;

const char* SettingsObjectPrivate::tagName() const
{
    return className();
}

SettingsObject::SettingsObject(const Referenced& other)
    : SettingsObject(dynamic_cast<SettingsObjectPrivate*>(other.getImp()))
{}

SettingsObject& SettingsObject::operator=(const SettingsObject& other)
{
    // Read first: releasing our own body may destroy other.
    SettingsObjectPrivate* body = other.d;
    Referenced::operator=(other);
    d = body;
    return *this;
}

void SettingsObject::setImp(const Referenced& other)
{
    *this = SettingsObject(other);
}

RegisterSettingsObjectProxy::RegisterSettingsObjectProxy(const SettingsObject& object, Settings& settings)
{
    settings.add(object);
}

} // namespace vfBase
