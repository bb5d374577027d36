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
/// Keys are compared as pointers, not as texts: the caller passes the pointer that getKey() of the producer
/// returned. A plug-in therefore defines its key as one constant.
class VFAPPLICATION_EXPORT DockWindowRegistryPrivate
    : public vfBase::Registry<
          DockWindowRegistryPrivate,
          vfBase::RegistryObjectProducerInterface<DockWindow, const char*, vfBase::NilType>, const char*>
{
public:
    /// The interface of a producer of dock windows.
    using Producer = vfBase::RegistryObjectProducerInterface<DockWindow, const char*, vfBase::NilType>;

    /// The table of producers.
    using Base = vfBase::Registry<DockWindowRegistryPrivate, Producer, const char*>;

    /// Registers a producer when it is constructed. A plug-in defines a static object of this class.
    class VFAPPLICATION_EXPORT Proxy : public Base::Proxy
    {
    public:
        /// Registers @p producer, see Registry::Proxy. The code that counts references on the producer is in
        /// this library, so that the entry stays valid when the plug-in is closed.
        explicit Proxy(Producer* producer);
    };

    /// Makes an empty table.
    DockWindowRegistryPrivate();
    ~DockWindowRegistryPrivate() override;

    /// Does nothing.
    void registryHook() override {}

private:
    friend class DockWindowRegistry;
    friend Base;

    /// Returns the only object of this class. If @p erase is true, releases it instead, for the rest of the
    /// process.
    /// @return null after it was released
    static DockWindowRegistryPrivate* instance(bool erase);
};

} // namespace vfApplication
