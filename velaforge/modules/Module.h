// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class ModuleInterface;
class ModulePrivate;
class UiSetup;

/// A unit of behaviour with an identity and a declaration of its user interface.
///
///     class Measuring : public vfApplication::Module
///     {
///     public:
///         explicit Measuring(const vfApplication::UiSetup& setup) : Module(setup) {}
///         const char* getId() const override { return "solar::Measuring"; }
///         const char* getModuleName() const override { return "Measuring"; }
///     };
///
/// Give one to ModuleRegistry::addModule to make it active. Handle and body own each other and either may be destroyed
/// first; an outside release of the last count of the body destroys the handle with delete.
class VFAPPLICATION_EXPORT Module
{
public:
    /// With a declaration that is gone again when the constructor returns: getUiSetup() must not be asked.
    Module();

    /// Shares the body of @p uiSetup, which may be destroyed before the module; getUiSetup() must not be asked then.
    explicit Module(const UiSetup& uiSetup);

    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    // In the order of their slots, which is part of the binary interface.

    /// @return the identity, which no other active module has; the body here says "vfApplication::Module"
    virtual const char* getId() const = 0;

    /// @return the name for a person to read; the body here says what getId() of the most derived class says
    virtual const char* getModuleName() const = 0;

    /// @return what getId() says, here
    virtual const char* getModuleDescription() const;

    virtual ~Module();

    /// @return null, for every module: see ModulePrivate
    ModuleInterface* getModuleInterface();

    /// @return whether the declaration that the module was given is still there, so that getUiSetup() may be asked
    bool hasUiSetup() const;

    /// @return the declaration that owns the shared body at this moment
    const UiSetup& getUiSetup() const;

    /// Tells the module interface, where there is one, that the language changed.
    void onLanguageChange();

    ModulePrivate* getModulePrivate() { return d; }
    const ModulePrivate* getModulePrivate() const { return d; }

protected:
    /// A handle on @p body, which may be null and does not come to know of it.
    explicit Module(ModulePrivate* body);

private:
    friend class ModulePrivate;

    void fillBody(const UiSetup& uiSetup);

    ModulePrivate* d;
};

} // namespace vfApplication
