// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <map>
#include <memory>

namespace vfBase {

/// A table of producers by key, which plug-ins fill while they are loaded.
///
/// @tparam Private   the class that derives from this one. Its static instance(bool erase), to which this
///         class is a friend, gives the one registry.
/// @tparam Producer  a RegistryObjectProducerInterface
/// @tparam Key       what getKey() is turned into; its own order is that of the table
///
/// There is no lock: plug-ins are loaded one after the other.
template <class Private, class Producer, class Key>
class VFBASE_TEMPLATE_EXPORT Registry
{
public:
    /// Registers a producer when it is constructed, as a static object of a plug-in.
    class VFBASE_TEMPLATE_EXPORT Proxy
    {
    public:
        /// Registers @p producer, which must not be null; the registry owns it from then on. A producer that
        /// was registered under the same key is destroyed.
        explicit Proxy(Producer* producer)
        {
            // Owned first, in case the key cannot be asked for; and in the end the owner of the producer that loses its
            // place, which may use the registry while it is destroyed.
            std::shared_ptr<Producer> replaced(producer);
            // The key before the registry: asking for it must not find a table that is half way through taking the producer.
            const Key key = producer->getKey();
            Private* registry = Private::instance(false);
            if (!registry)
                return; // the process ends, and so does the producer
            registry->producers[key].swap(replaced);
        }

        // A copy is an object of this class and no more: it registers nothing.
        Proxy(const Proxy&) {}
        Proxy(Proxy&&) noexcept {}
        Proxy& operator=(const Proxy&) { return *this; }
        Proxy& operator=(Proxy&&) noexcept { return *this; }

        /// The producer stays registered until the registry is destroyed.
        virtual ~Proxy() = default;
    };

    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    // In the order of their slots, which is part of the binary interface.

    /// Destroys the producers in the order of their keys.
    virtual ~Registry()
    {
        while (!producers.empty())
            producers.erase(producers.begin());
    }

    /// Reserved for the derived registry; this class does not call it.
    virtual void registryHook() = 0;

    /// The producers by key.
    std::map<Key, std::shared_ptr<Producer>> producers;

protected:
    Registry() = default;
};

} // namespace vfBase
