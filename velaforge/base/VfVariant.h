// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Referenced.h>
#include <velaforge/base/StringList.h>
#include <velaforge/base/VfString.h>

#include <any>
#include <cfloat>
#include <climits>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>

namespace vfBase {

/// Body of VfVariant: one value, which never changes.
class VFBASE_EXPORT VfVariantPrivate : public osg::Referenced
{
public:
    /// Makes a body that holds @p contents.
    explicit VfVariantPrivate(std::any contents) : value(std::move(contents)) {}

    /// The value.
    const std::any value;

protected:
    ~VfVariantPrivate() override;
};

/// A value of any copyable type, or none.
///
///     vfBase::VfVariant count(300);
///     count.get<unsigned>();        // 300: any integer type in which the value fits
///     count.is<std::int8_t>();      // false
///     count.get<double>();          // 0: nothing else is converted
///     vfBase::VfVariant(osg::Vec3(0, 0, 1)).get<osg::Vec3>();
///
/// An integer converts to every integer type except bool that can hold its value, character types included,
/// whatever type it was made from. A floating value converts to float, double and long double, rounded if
/// necessary; a finite value outside the range of a type does not convert to it. Texts convert to VfString.
/// Every other value, and bool, converts to its own type only.
///
/// A handle on an immutable body: copies are cheap and cannot change one another.
class VFBASE_EXPORT VfVariant : public Referenced
{
public:
    /// Makes the empty value.
    VfVariant() = default;

    /// Shares the body of @p other.
    VfVariant(const VfVariant& other) = default;

    /// Copies @p other. The flag has no effect; callers pass true.
    VfVariant(const VfVariant& other, bool) : VfVariant(other) {}

    /// Makes a handle on the body of @p other; the empty value if that is no value.
    explicit VfVariant(const Referenced& other);

    /// Makes a VfString; null counts as the empty text.
    VfVariant(const char* text) : VfVariant(VfString(text)) {}

    /// Makes a VfString.
    VfVariant(const std::string& text) : VfVariant(VfString(text)) {}

    /// Makes a value of any copyable type.
    template <class T,
              class = std::enable_if_t<!std::is_base_of_v<VfVariant, T> && !std::is_same_v<Referenced, T> &&
                                       std::is_copy_constructible_v<T>>>
    VfVariant(const T& value) : Referenced(new VfVariantPrivate(stored(value)), true)
    {}

    /// Shares the body of @p other.
    VfVariant& operator=(const VfVariant& other) = default;

    void setImp(const Referenced& other) override;

    /// Returns whether this is the empty value.
    bool isEmpty() const { return !getImp(); }

    /// Returns whether the value converts to T, see above.
    template <class T>
    bool is() const
    {
        return bool(find<T>());
    }

    /// Returns the value as T; T() if it does not convert to T.
    template <class T>
    T get() const
    {
        const auto found = find<T>();
        return found ? static_cast<T>(*found) : T();
    }

    /// Returns the truth value; false if the value is none.
    bool toBool() const { return get<bool>(); }

    /// Returns the integer; 0 if the value is none, or is outside the range of long long.
    long long toInteger() const { return get<long long>(); }

    /// Returns the floating value; 0 if the value is none, also for an integer.
    double toDouble() const { return get<double>(); }

    /// Returns the text; the empty text if the value is none.
    VfString toString() const { return get<VfString>(); }

    /// Returns the list, which shares the entries of the list that the value was made from; an empty list if
    /// the value is none.
    StringList toStringList() const { return get<StringList>(); }

    /// Returns the body; null for the empty value.
    VfVariantPrivate* getImp() const { return static_cast<VfVariantPrivate*>(Referenced::getImp()); }

private:
    template <class T>
    static constexpr bool isInteger = std::is_integral_v<T> && !std::is_same_v<T, bool>;

    /// Returns the form in which a value is stored: integers as long long if that can hold them, otherwise as
    /// unsigned long long; floating values as double if that holds them exactly, otherwise as long double.
    template <class T>
    static std::any stored(const T& value)
    {
        if constexpr (isInteger<T>) {
            if (value > 0 && static_cast<unsigned long long>(value) > LLONG_MAX)
                return static_cast<unsigned long long>(value);
            return static_cast<long long>(value);
        } else if constexpr (std::is_same_v<T, long double>) {
            const bool fits = !(value > DBL_MAX || value < -DBL_MAX);
            if (value - value != 0 || (fits && static_cast<long double>(static_cast<double>(value)) == value))
                return static_cast<double>(value);
            return value;
        } else if constexpr (std::is_floating_point_v<T>) {
            return static_cast<double>(value);
        } else {
            return value;
        }
    }

    template <class T>
    const T* held() const
    {
        const VfVariantPrivate* body = getImp();
        return body ? std::any_cast<T>(&body->value) : nullptr;
    }

    /// Returns a pointer or optional that can be cast to T; null or nothing if the value does not convert to
    /// T.
    template <class T>
    auto find() const
    {
        if constexpr (isInteger<T>)
            return findInteger<T>();
        else if constexpr (std::is_floating_point_v<T>)
            return findReal<T>();
        else
            return held<T>();
    }

    template <class T>
    std::optional<T> findInteger() const
    {
        constexpr auto most = static_cast<unsigned long long>(std::numeric_limits<T>::max());
        if (const auto* large = held<unsigned long long>())
            return *large <= most ? std::optional<T>(static_cast<T>(*large)) : std::nullopt;
        const auto* value = held<long long>();
        if (!value || (*value < 0 ? !std::is_signed_v<T> || *value < least<T>()
                                  : static_cast<unsigned long long>(*value) > most))
            return std::nullopt;
        return static_cast<T>(*value);
    }

    template <class T>
    static constexpr long long least()
    {
        return std::is_signed_v<T> ? static_cast<long long>(std::numeric_limits<T>::min()) : 0;
    }

    template <class T>
    std::optional<T> findReal() const
    {
        const auto* real = held<double>();
        const auto* precise = held<long double>();
        if (!real && !precise)
            return std::nullopt;
        const long double value = real ? static_cast<long double>(*real) : *precise;
        const bool isFinite = value - value == 0;
        constexpr auto most = static_cast<long double>(std::numeric_limits<T>::max());
        if (isFinite && (value > most || value < -most))
            return std::nullopt;
        return static_cast<T>(value);
    }
};

} // namespace vfBase
