// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// The argument type of a producer that needs no argument to create an object.
struct NilType
{};

/// A factory that a plug-in hands to a Registry: it names its key and makes objects.
template <class Product, class Key, class Argument>
class RegistryObjectProducerInterface;

/// A factory whose objects need no argument.
///
///     class LayersProducer
///         : public vfBase::RegistryObjectProducerInterface<DockWindow, const char*, vfBase::NilType>
///     {
///     public:
///         const char* getKey() override { return layersId; }
///         DockWindow* create() override { return new Layers; }
///     };
template <class Product, class Key>
class VFBASE_TEMPLATE_EXPORT RegistryObjectProducerInterface<Product, Key, NilType>
{
public:
    // In the order of their slots, which is part of the binary interface.
    virtual ~RegistryObjectProducerInterface() = default;

    /// Reserved for plug-ins; the libraries do not call it.
    virtual void producerExtension() {}

    /// Called once, when the producer is registered.
    /// @return the key of the producer. A registry whose keys are pointers does not copy the text, which must
    ///         then live as long as the registry
    virtual Key getKey() = 0;

    /// @return a new object, owned by the caller
    virtual Product* create() = 0;
};

} // namespace vfBase
