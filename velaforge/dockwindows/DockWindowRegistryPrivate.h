// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/Registry.h>
#include <velaforge/base/RegistryObjectProducerInterface.h>

namespace vfApplication {

class DockWindow;

/// Body of DockWindowRegistry: the table of the producers that plug-ins register.
///
///     static const vfApplication::DockWindowRegistryPrivate::Proxy proxy(new LayersProducer);
///
/// Keys are compared as pointers, never as texts: a window is made for the very pointer that getKey() returned, which a
/// plug-in therefore keeps in one constant.
class VFAPPLICATION_EXPORT DockWindowRegistryPrivate
    : public vfBase::Registry<
          DockWindowRegistryPrivate,
          vfBase::RegistryObjectProducerInterface<DockWindow, const char*, vfBase::NilType>, const char*>
{
public:
    using Producer = vfBase::RegistryObjectProducerInterface<DockWindow, const char*, vfBase::NilType>;
    using Base = vfBase::Registry<DockWindowRegistryPrivate, Producer, const char*>;

    /// What a plug-in makes a static object of.
    class VFAPPLICATION_EXPORT Proxy : public Base::Proxy
    {
    public:
        /// See Registry::Proxy. What counts the holders of the producer is this library's, so that the entry stays sound
        /// when the plug-in is closed.
        explicit Proxy(Producer* producer);
    };

    DockWindowRegistryPrivate();
    ~DockWindowRegistryPrivate() override;

    void registryHook() override {}

private:
    friend class DockWindowRegistry;
    friend Base;

    /// @param erase  lets go of the object for good
    /// @return the one object; null once it was erased
    static DockWindowRegistryPrivate* instance(bool erase);
};

} // namespace vfApplication
