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

    /// An empty map.
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

    /// Adds an entry with a default value for an absent key. @return the value
    V& operator[](const K& key) { return (*d->container)[key]; }

    /// Adds an entry for an absent key as well, although the handle is const. @return a copy of the value
    V operator[](const K& key) const { return (*d->container)[key]; }

    /// @return a copy of the value, or @p def for an absent key; never adds an entry
    V value(const K& key, const V& def = V()) const
    {
        const auto found = d->container->find(key);
        return found == end() ? def : found->second;
    }

    /// @return the first key, in their order, whose value equals @p value, or @p def; linear
    K key(const V& value, const K& def = K()) const
    {
        const auto found =
            std::find_if(begin(), end(), [&](const auto& entry) { return entry.second == value; });
        return found == end() ? def : found->first;
    }

    /// @return a new list of the keys, in their order
    List<K> keys() const
    {
        List<K> list;
        for (const auto& entry : *d->container)
            list.append(entry.first);
        return list;
    }

    /// @return a new list of the values, in the order of their keys
    List<V> values() const
    {
        List<V> list;
        for (const auto& entry : *d->container)
            list.append(entry.second);
        return list;
    }

    /// @return a new list of all keys whose value equals @p value
    List<K> keys(const V& value) const
    {
        List<K> list;
        for (const auto& entry : *d->container) {
            if (entry.second == value)
                list.append(entry.first);
        }
        return list;
    }

    /// @return true when there is an entry for @p key
    bool contains(const K& key) const { return d->container->find(key) != end(); }

    /// @return the number of entries for @p key: 0 or 1
    unsigned int count(const K& key) const { return static_cast<unsigned int>(d->container->count(key)); }

    /// Adds an entry. An entry with that key keeps its old value. @return a new cursor on the entry
    Cursor insert(const K& key, const V& value) { return cursor(d->container->emplace(key, value).first); }

    /// The same, with a cursor near the new entry as a hint. An invalid cursor is no hint, nor is one in another map.
    Cursor insert(const Cursor& it, const K& key, const V& value)
    {
        if (!it.isValid() || it.getImp()->container.get() != d)
            return insert(key, value);
        return cursor(d->container->emplace_hint(it.getImp()->position, key, value));
    }

    /// Removes the entry for @p key. @return true if there was one
    bool remove(const K& key) { return d->container->erase(key) != 0; }

    /// Removes the entry for @p key. @return its value; a default one for an absent key
    V take(const K& key)
    {
        const auto found = d->container->find(key);
        if (found == end())
            return V();
        V taken(std::move(found->second));
        d->container->erase(found);
        return taken;
    }

    /// @return a new cursor on the entry for @p key; an invalid one when there is none
    Cursor find(const K& key) const { return cursor(d->container->find(key)); }

    /// @return a new cursor on the first entry whose key is not less than @p key; an invalid one when there
    ///         is none
    Cursor lowerBound(const K& key) const { return cursor(d->container->lower_bound(key)); }

    /// @return a new cursor on the first entry whose key is greater than @p key; an invalid one when there is
    ///         none
    Cursor upperBound(const K& key) const { return cursor(d->container->upper_bound(key)); }

    /// @return the value with the smallest key; the map must not be empty
    V& first() { return checkedFilled().begin()->second; }
    const V& first() const { return checkedFilled().begin()->second; }

    /// @return the value with the largest key; the map must not be empty
    V& last() { return checkedFilled().rbegin()->second; }
    const V& last() const { return checkedFilled().rbegin()->second; }

    /// @return the smallest key; the map must not be empty
    const K& firstKey() const { return checkedFilled().begin()->first; }

    /// @return the largest key; the map must not be empty
    const K& lastKey() const { return checkedFilled().rbegin()->first; }

    /// Adds the entries of @p other. Of two values for one key the smaller one is kept.
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

    /// @return true when both have equal keys with equal values
    bool operator==(const Map& other) const { return *d->container == *other.d->container; }
    bool operator!=(const Map& other) const { return !(*this == other); }

    /// @return a new cursor on the first entry
    Cursor getIterator() const { return Cursor(*this); }

    /// @return the standard container itself, which all handles on this body share
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
