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

    /// The type of the keys.
    using Key = K;

    /// The type of the values.
    using Value = V;

    /// The cursor of the map.
    using Cursor = AssociativeIterator<Map>;

    /// Makes an empty map.
    Map() : Base(new Body) {}

    /// Makes a handle on @p body; null gives a handle without one.
    Map(Body* body) : Base(body) {}

    /// Makes a handle on the body of @p other; one without a body if that is no map of this kind.
    explicit Map(const Referenced& other) : Base(other) {}

    /// Shares the body of @p other.
    Map(const Map& other) = default;

    /// Copies the entries of @p other into this body.
    /// @return a further handle on it
    Map operator=(const Map& other)
    {
        Base::operator=(other);
        return *this;
    }

    /// Returns the value of @p key; makes an entry with a default value for an absent key.
    V& operator[](const K& key) { return (*d->container)[key]; }

    /// Returns a copy of the value of @p key; makes an entry with a default value for an absent key.
    V operator[](const K& key) const { return (*d->container)[key]; }

    /// Returns a copy of the value of @p key; @p def for an absent key.
    V value(const K& key, const V& def = V()) const
    {
        const auto found = d->container->find(key);
        return found == end() ? def : found->second;
    }

    /// Returns the first key with the value @p value; @p def if there is none.
    K key(const V& value, const K& def = K()) const
    {
        const auto found =
            std::find_if(begin(), end(), [&](const auto& entry) { return entry.second == value; });
        return found == end() ? def : found->first;
    }

    /// Returns a new list of all keys, in order.
    List<K> keys() const
    {
        List<K> list;
        for (const auto& entry : *d->container)
            list.append(entry.first);
        return list;
    }

    /// Returns a new list of all values, in order of the keys.
    List<V> values() const
    {
        List<V> list;
        for (const auto& entry : *d->container)
            list.append(entry.second);
        return list;
    }

    /// Returns a new list of all keys with the value @p value, in order.
    List<K> keys(const V& value) const
    {
        List<K> list;
        for (const auto& entry : *d->container) {
            if (entry.second == value)
                list.append(entry.first);
        }
        return list;
    }

    /// Returns whether there is an entry for @p key.
    bool contains(const K& key) const { return d->container->find(key) != end(); }

    /// Returns the number of entries for @p key: 0 or 1.
    unsigned int count(const K& key) const { return static_cast<unsigned int>(d->container->count(key)); }

    /// Makes an entry. If the key exists, its value stays.
    /// @return a cursor on the entry
    Cursor insert(const K& key, const V& value) { return cursor(d->container->emplace(key, value).first); }

    /// Does the same, with a cursor near the position as a hint. A cursor of another map has no effect.
    Cursor insert(const Cursor& it, const K& key, const V& value)
    {
        if (!it.isValid() || it.getImp()->container.get() != d)
            return insert(key, value);
        return cursor(d->container->emplace_hint(it.getImp()->position, key, value));
    }

    /// Removes the entry of @p key.
    /// @return false if there is none
    bool remove(const K& key) { return d->container->erase(key) != 0; }

    /// Removes the entry of @p key.
    /// @return its value; a default one for an absent key
    V take(const K& key)
    {
        const auto found = d->container->find(key);
        if (found == end())
            return V();
        V taken(std::move(found->second));
        d->container->erase(found);
        return taken;
    }

    /// Returns a cursor on the entry of @p key; an invalid one if there is none.
    Cursor find(const K& key) const { return cursor(d->container->find(key)); }

    /// Returns a cursor on the first entry whose key is not below @p key; an invalid one if there is none.
    Cursor lowerBound(const K& key) const { return cursor(d->container->lower_bound(key)); }

    /// Returns a cursor on the first entry whose key is above @p key; an invalid one if there is none.
    Cursor upperBound(const K& key) const { return cursor(d->container->upper_bound(key)); }

    /// Returns the value of the first entry. The map must not be empty.
    V& first() { return checkedFilled().begin()->second; }

    /// Returns the value of the first entry. The map must not be empty.
    const V& first() const { return checkedFilled().begin()->second; }

    /// Returns the value of the last entry. The map must not be empty.
    V& last() { return checkedFilled().rbegin()->second; }

    /// Returns the value of the last entry. The map must not be empty.
    const V& last() const { return checkedFilled().rbegin()->second; }

    /// Returns the first key. The map must not be empty.
    const K& firstKey() const { return checkedFilled().begin()->first; }

    /// Returns the last key. The map must not be empty.
    const K& lastKey() const { return checkedFilled().rbegin()->first; }

    /// Adds the entries of @p other. Of two values for one key the smaller one stays.
    /// @return a further handle on this map
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

    /// Returns whether both maps have equal entries.
    bool operator==(const Map& other) const { return *d->container == *other.d->container; }

    /// Returns whether the maps have different entries.
    bool operator!=(const Map& other) const { return !(*this == other); }

    /// Returns a new cursor on the first entry.
    Cursor getIterator() const { return Cursor(*this); }

    /// Returns the standard container itself: changes of it change the map.
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
