// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class ModuleInterface;
class ModulePrivate;
class UiSetup;

/// The base class of modules: units of behaviour with an id, a name and a declaration of their user
/// interface.
///
///     class Measuring : public vfApplication::Module
///     {
///     public:
///         explicit Measuring(const vfApplication::UiSetup& setup) : Module(setup) {}
///         const char* getId() const override { return "solar::Measuring"; }
///         const char* getModuleName() const override { return "Measuring"; }
///     };
///
/// ModuleRegistry::addModule makes a module active. Handle and body own each other and either may be
/// destroyed first: releasing the last reference on the body deletes the handle.
class VFAPPLICATION_EXPORT Module
{
public:
    /// Makes a module without a declaration: do not call getUiSetup().
    Module();

    /// Makes a module that shares the body of @p uiSetup. Do not call getUiSetup() after @p uiSetup was
    /// destroyed.
    explicit Module(const UiSetup& uiSetup);

    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    // In the order of their slots, which is part of the binary interface.

    /// Returns the id, which no other active module may have. An override may call the body here, which
    /// returns "vfApplication::Module".
    virtual const char* getId() const = 0;

    /// Returns the name that the user sees. An override may call the body here, which returns getId().
    virtual const char* getModuleName() const = 0;

    /// Returns the description that the user sees; getId() here.
    virtual const char* getModuleDescription() const;

    virtual ~Module();

    /// Returns null for every module, see ModulePrivate::moduleInterface.
    ModuleInterface* getModuleInterface();

    /// Returns whether the declaration passed to the constructor still exists, so that getUiSetup() may be
    /// called.
    bool hasUiSetup() const;

    /// Returns the declaration passed to the constructor, which must still exist.
    const UiSetup& getUiSetup() const;

    /// Calls ModuleInterface::languageChanged of getModuleInterface(): never, because that is null.
    void onLanguageChange();

    /// Returns the body, which this module owns.
    ModulePrivate* getModulePrivate() { return d; }

    /// Returns the body, which this module owns.
    const ModulePrivate* getModulePrivate() const { return d; }

protected:
    /// Makes a handle on @p body, which may be null. Does not change the body's owner.
    explicit Module(ModulePrivate* body);

private:
    friend class ModulePrivate;

    void fillBody(const UiSetup& uiSetup);

    ModulePrivate* d;
};

} // namespace vfApplication
