// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/ProcessSingleton.h>
#include <velaforge/base/SettingsObjectPrivate.h>

#include <osg/CopyOp>
#include <osg/ref_ptr>

namespace vfBase {

/// The base class of settings classes. A derived class declares only its fields, its names and its
/// properties.
///
///     class Zoom : public vfBase::SettingsBase<Zoom>
///     {
///     public:
///         Zoom(const Zoom& other, const osg::CopyOp& copyop) : SettingsBase(other, copyop), m_steps(other.m_steps) {}
///         static Zoom* instance(bool erase) { return singleton(erase); }   // in the source file of a shared library
///         int getSteps() const { return m_steps; }
///         void setSteps(int steps) { m_steps = steps; }
///
///     private:
///         friend vfBase::SettingsBase<Zoom>;
///         static constexpr const char* settingsLibrary = "solar";  // libraryName()
///         static constexpr const char* settingsName = "Zoom";      // className()
///         Zoom() = default;
///         int m_steps = 8;
///     };
template <class Self>
class SettingsBase : public SettingsObjectPrivate
{
public:
    /// Returns a new object with the defaults.
    osg::Object* cloneType() const override { return new Self; }

    /// Returns a new object with the present values.
    osg::Object* clone(const osg::CopyOp& copyop) const override
    {
        return new Self(static_cast<const Self&>(*this), copyop);
    }

    /// Returns whether @p object is of this class.
    bool isSameKindAs(const osg::Object* object) const override
    {
        return dynamic_cast<const Self*>(object) != nullptr;
    }

    /// Returns the first part of the name of the entry in the settings file.
    const char* libraryName() const override { return Self::settingsLibrary; }

    /// Returns the second part of the name of the entry in the settings file.
    const char* className() const override { return Self::settingsName; }

protected:
    SettingsBase() = default;

    /// Copies what osg::Object has; a derived class copies its fields.
    SettingsBase(const SettingsBase& other, const osg::CopyOp& copyop) : SettingsObjectPrivate(other, copyop)
    {}
    ~SettingsBase() override = default;

    /// Implements `instance(bool)`, see processSingleton. Call it in one place, in a source file.
    static Self* singleton(bool erase)
    {
        return processSingleton(erase, [] { return osg::ref_ptr<Self>(new Self); });
    }
};

} // namespace vfBase
