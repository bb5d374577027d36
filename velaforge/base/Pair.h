// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/VfObject.h>

#include <type_traits>
#include <utility>

namespace vfBase {

/// A key and a value. Unlike a container, a copy shares nothing with its source.
template <class K, class V>
class VFBASE_TEMPLATE_EXPORT Pair : public VfObject
{
public:
    /// Makes a pair of a default key and a default value.
    Pair() : key(), value() {}

    /// Makes a pair of copies of @p aKey and @p aValue.
    Pair(const K& aKey, const V& aValue) : key(aKey), value(aValue) {}

    /// Copies key and value.
    Pair(const Pair& other) : VfObject(), key(other.key), value(other.value) {}

    /// Moves key and value.
    Pair(Pair&& other) noexcept(
        std::is_nothrow_move_constructible_v<K>&& std::is_nothrow_move_constructible_v<V>)
        : VfObject(), key(std::move(other.key)), value(std::move(other.value))
    {}

    /// Copies key and value.
    Pair& operator=(const Pair& other)
    {
        key = other.key;
        value = other.value;
        return *this;
    }

    /// Moves key and value.
    Pair& operator=(Pair&& other) noexcept(
        std::is_nothrow_move_assignable_v<K>&& std::is_nothrow_move_assignable_v<V>)
    {
        key = std::move(other.key);
        value = std::move(other.value);
        return *this;
    }

    /// Returns whether keys and values are equal.
    bool operator==(const Pair& other) const { return key == other.key && value == other.value; }

    /// Returns whether keys or values differ.
    bool operator!=(const Pair& other) const { return !(*this == other); }

    /// The key.
    K key;

    /// The value.
    V value;
};

} // namespace vfBase
