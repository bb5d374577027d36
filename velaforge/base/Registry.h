// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <map>
#include <memory>

namespace vfBase {

/// A table of producers by key, which plug-ins fill while they are loaded.
///
/// @tparam Private   the class that derives from this one; its static instance(bool erase), a friend, returns
/// the only registry
/// @tparam Producer  a RegistryObjectProducerInterface
/// @tparam Key       type of the keys, made from getKey(); the table has the order of this type
///
/// There is no lock: load plug-ins one after another.
template <class Private, class Producer, class Key>
class VFBASE_TEMPLATE_EXPORT Registry
{
public:
    /// Registers a producer when it is constructed. A plug-in defines a static object of a derived class.
    class VFBASE_TEMPLATE_EXPORT Proxy
    {
    public:
        /// Registers @p producer, which must not be null; the registry owns it. Releases the producer that
        /// had the same key.
        explicit Proxy(Producer* producer)
        {
            // Owns the new producer first, in case getKey throws, and at the end the replaced one, whose
            // destructor may use the registry.
            std::shared_ptr<Producer> replaced(producer);
            // The key before the registry: getKey must not see a half-changed table.
            const Key key = producer->getKey();
            Private* registry = Private::instance(false);
            if (!registry)
                return; // the process ends: the producer is destroyed
            registry->producers[key].swap(replaced);
        }

        /// Makes an object that registers nothing.
        Proxy(const Proxy&) {}

        /// Makes an object that registers nothing.
        Proxy(Proxy&&) noexcept {}

        /// Changes nothing.
        Proxy& operator=(const Proxy&) { return *this; }

        /// Changes nothing.
        Proxy& operator=(Proxy&&) noexcept { return *this; }

        /// Does not unregister the producer: the registry owns it until it is destroyed.
        virtual ~Proxy() = default;
    };

    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    // In the order of their slots, which is part of the binary interface.

    /// Releases the producers, in the order of their keys.
    virtual ~Registry()
    {
        while (!producers.empty())
            producers.erase(producers.begin());
    }

    /// An operation that the derived registry defines. This library does not call it.
    virtual void registryHook() = 0;

    /// The producers by key.
    std::map<Key, std::shared_ptr<Producer>> producers;

protected:
    Registry() = default;
};

} // namespace vfBase
