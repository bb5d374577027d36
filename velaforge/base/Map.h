// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/AssociativeIterator.h>
#include <velaforge/base/ContainerHandle.h>
#include <velaforge/base/List.h>
#include <velaforge/base/Require.h>

#include <algorithm>
#include <iterator>
#include <map>

namespace vfBase {

/// Body of Map.
template <class K, class V>
class VFBASE_TEMPLATE_EXPORT RefMapPrivate : public ContainerBody<std::map<K, V>>
{
public:
    using ContainerBody<std::map<K, V>>::ContainerBody;

protected:
    ~RefMapPrivate() override = default;
};

/// A shared map, ordered by key: a handle on one std::map.
///
///     vfBase::Map<vfBase::VfString, int> widths;
///     widths.insert("mast", 3);
///     widths.insert("mast", 5);          // leaves the 3
///     widths["mast"] = 5;                // replaces it
///     widths.value("boom", 1);           // 1, and no entry is made
///
/// See ContainerHandle for what copies share.
template <class K, class V>
class VFBASE_TEMPLATE_EXPORT Map : public ContainerHandle<Map<K, V>, RefMapPrivate<K, V>>
{
    using Base = ContainerHandle<Map<K, V>, RefMapPrivate<K, V>>;
    friend Base;

public:
    using Base::begin;
    using Base::end;
    using typename Base::Body;
    using typename Base::Container;
    using Key = K;
    using Value = V;
    using Cursor = AssociativeIterator<Map>;

    Map() : Base(new Body) {}

    /// A handle on @p body; null gives a handle without one.
    Map(Body* body) : Base(body) {}

    /// A handle on the other's body if that is one of the same kind, otherwise one without a body.
    explicit Map(const Referenced& other) : Base(other) {}

    /// Shares the body.
    Map(const Map& other) = default;

    /// Copies the entries into this body. @return a further handle on it
    Map operator=(const Map& other)
    {
        Base::operator=(other);
        return *this;
    }

    /// Makes an entry with a default value for an absent key, also through a const handle.
    V& operator[](const K& key) { return (*d->container)[key]; }
    V operator[](const K& key) const { return (*d->container)[key]; }

    /// @return the value, or @p def for an absent key
    V value(const K& key, const V& def = V()) const
    {
        const auto found = d->container->find(key);
        return found == end() ? def : found->second;
    }

    /// @return the first key with that value, or @p def
    K key(const V& value, const K& def = K()) const
    {
        const auto found =
            std::find_if(begin(), end(), [&](const auto& entry) { return entry.second == value; });
        return found == end() ? def : found->first;
    }

    /// @return a new list, in order of the keys
    List<K> keys() const
    {
        List<K> list;
        for (const auto& entry : *d->container)
            list.append(entry.first);
        return list;
    }
    List<V> values() const
    {
        List<V> list;
        for (const auto& entry : *d->container)
            list.append(entry.second);
        return list;
    }

    /// @return a new list of all keys with that value
    List<K> keys(const V& value) const
    {
        List<K> list;
        for (const auto& entry : *d->container) {
            if (entry.second == value)
                list.append(entry.first);
        }
        return list;
    }

    bool contains(const K& key) const { return d->container->find(key) != end(); }

    /// @return 0 or 1
    unsigned int count(const K& key) const { return static_cast<unsigned int>(d->container->count(key)); }

    /// Makes an entry, unless the key is there: then the old value stays. @return a cursor on the entry
    Cursor insert(const K& key, const V& value) { return cursor(d->container->emplace(key, value).first); }

    /// The same, with a cursor near the place as a hint; a cursor in another map is none.
    Cursor insert(const Cursor& it, const K& key, const V& value)
    {
        if (!it.isValid() || it.getImp()->container.get() != d)
            return insert(key, value);
        return cursor(d->container->emplace_hint(it.getImp()->position, key, value));
    }

    /// @return true if an entry was removed
    bool remove(const K& key) { return d->container->erase(key) != 0; }

    /// Removes the entry. @return its value, a default one for an absent key
    V take(const K& key)
    {
        const auto found = d->container->find(key);
        if (found == end())
            return V();
        V taken(std::move(found->second));
        d->container->erase(found);
        return taken;
    }

    /// @return a cursor on the entry; an invalid one without a container when there is none
    Cursor find(const K& key) const { return cursor(d->container->find(key)); }

    /// @return a cursor on the first entry whose key is not below, or is above, @p key; invalid at the end
    Cursor lowerBound(const K& key) const { return cursor(d->container->lower_bound(key)); }
    Cursor upperBound(const K& key) const { return cursor(d->container->upper_bound(key)); }

    /// References into the map, which must not be empty.
    V& first() { return checkedFilled().begin()->second; }
    const V& first() const { return checkedFilled().begin()->second; }
    V& last() { return checkedFilled().rbegin()->second; }
    const V& last() const { return checkedFilled().rbegin()->second; }
    const K& firstKey() const { return checkedFilled().begin()->first; }
    const K& lastKey() const { return checkedFilled().rbegin()->first; }

    /// Adds the entries of @p other. Of two values for one key the smaller one stays.
    Map unite(const Map& other)
    {
        // By key and then by value, and the first for a key wins.
        const auto before = [](const auto& a, const auto& b) {
            if (a.first < b.first)
                return true;
            if (b.first < a.first)
                return false;
            return a.second < b.second;
        };
        Container merged;
        std::merge(begin(), end(), other.begin(), other.end(), std::inserter(merged, merged.end()), before);
        d->container->swap(merged);
        return *this;
    }

    bool operator==(const Map& other) const { return *d->container == *other.d->container; }
    bool operator!=(const Map& other) const { return !(*this == other); }

    /// @return a new cursor on the first entry
    Cursor getIterator() const { return Cursor(*this); }

    /// @return the standard container itself, not const: a view on the shared entries
    Container& asStdMap() const { return *d->container; }

private:
    using Base::d;

    Cursor cursor(typename Container::iterator at) const
    {
        if (at == end())
            return Cursor(new typename Cursor::Body);
        return Cursor(new typename Cursor::Body(d, at));
    }

    Container& checkedFilled() const
    {
        VF_REQUIRE(!d->container->empty(), "vfBase::Map", "asked for an entry of an empty one");
        return *d->container;
    }
};

} // namespace vfBase
