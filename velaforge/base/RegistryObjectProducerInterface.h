// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// The argument type of producers that need no argument to make an object.
struct NilType
{};

/// The interface of a factory that a plug-in registers with a Registry under a key.
template <class Product, class Key, class Argument>
class RegistryObjectProducerInterface;

/// The interface of a factory that makes objects without an argument.
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

    /// An operation that the plug-in defines. This library does not call it.
    virtual void producerExtension() {}

    /// Returns the key under which the producer is registered. Called once. A registry that compares keys by
    /// pointer requires the key to live as long as the registry.
    virtual Key getKey() = 0;

    /// Makes an object.
    /// @return the object, owned by the caller
    virtual Product* create() = 0;
};

} // namespace vfBase
