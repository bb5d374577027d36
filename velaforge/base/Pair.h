// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/VfObject.h>

#include <type_traits>
#include <utility>

namespace vfBase {

/// A key and a value, by value: a copy is a real copy, unlike that of the containers.
template <class K, class V>
class VFBASE_TEMPLATE_EXPORT Pair : public VfObject
{
public:
    /// A default key and a default value.
    Pair() : key(), value() {}

    /// Copies both.
    Pair(const K& aKey, const V& aValue) : key(aKey), value(aValue) {}
    Pair(const Pair& other) : VfObject(), key(other.key), value(other.value) {}
    Pair(Pair&& other) noexcept(
        std::is_nothrow_move_constructible_v<K>&& std::is_nothrow_move_constructible_v<V>)
        : VfObject(), key(std::move(other.key)), value(std::move(other.value))
    {}

    Pair& operator=(const Pair& other)
    {
        key = other.key;
        value = other.value;
        return *this;
    }
    Pair& operator=(Pair&& other) noexcept(
        std::is_nothrow_move_assignable_v<K>&& std::is_nothrow_move_assignable_v<V>)
    {
        key = std::move(other.key);
        value = std::move(other.value);
        return *this;
    }

    /// @return true when keys and values are equal
    bool operator==(const Pair& other) const { return key == other.key && value == other.value; }
    bool operator!=(const Pair& other) const { return !(*this == other); }

    K key;
    V value;
};

} // namespace vfBase
