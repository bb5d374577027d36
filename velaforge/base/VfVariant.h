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
    /// Holds @p contents for its whole life.
    explicit VfVariantPrivate(std::any contents) : value(std::move(contents)) {}

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
/// An integer answers to every integer type but bool in which its value fits, character types included; which
/// type it was given as does not matter. A floating value answers to float, double and long double, rounded
/// where necessary; a finite value beyond the range of a type does not answer to it. Texts answer to
/// VfString. Any other value answers to its own type, and bool to bool.
///
/// A handle on a body that never changes, so copies are cheap and cannot change one another.
class VFBASE_EXPORT VfVariant : public Referenced
{
public:
    /// The empty value.
    VfVariant() = default;

    /// Shares the other's body.
    VfVariant(const VfVariant& other) = default;

    /// Shares the other's body. The flag has no effect; true by custom.
    VfVariant(const VfVariant& other, bool) : VfVariant(other) {}

    /// A handle on the other's body if that is a value, otherwise the empty value.
    explicit VfVariant(const Referenced& other);

    /// A text; null counts as the empty text.
    VfVariant(const char* text) : VfVariant(VfString(text)) {}

    /// A text.
    VfVariant(const std::string& text) : VfVariant(VfString(text)) {}

    /// A copy of any value that can be copied.
    template <class T,
              class = std::enable_if_t<!std::is_base_of_v<VfVariant, T> && !std::is_same_v<Referenced, T> &&
                                       std::is_copy_constructible_v<T>>>
    VfVariant(const T& value) : Referenced(new VfVariantPrivate(stored(value)), true)
    {}

    /// Shares the other's body instead of the former one.
    VfVariant& operator=(const VfVariant& other) = default;

    /// Shares the other's body if it holds a value; otherwise this becomes the empty value.
    void setImp(const Referenced& other) override;

    /// @return true for the empty value
    bool isEmpty() const { return !getImp(); }

    /// @return true when the value answers to T, as the class comment says
    template <class T>
    bool is() const
    {
        return bool(find<T>());
    }

    /// @return the value as T, or T() when it does not answer to T
    template <class T>
    T get() const
    {
        const auto found = find<T>();
        return found ? static_cast<T>(*found) : T();
    }

    /// @return the truth value; false when none is held
    bool toBool() const { return get<bool>(); }

    /// @return the integer; 0 when none is held, and for one beyond the range of long long
    long long toInteger() const { return get<long long>(); }

    /// @return the floating value; 0 when none is held, also for an integer
    double toDouble() const { return get<double>(); }

    /// @return the text; the empty text when none is held
    VfString toString() const { return get<VfString>(); }

    /// @return the list, which shares the entries of the list that was given; an empty list when none is held
    StringList toStringList() const { return get<StringList>(); }

    /// @return the body; null for the empty value
    VfVariantPrivate* getImp() const { return static_cast<VfVariantPrivate*>(Referenced::getImp()); }

private:
    template <class T>
    static constexpr bool isInteger = std::is_integral_v<T> && !std::is_same_v<T, bool>;

    /// Each number has one form only: long long where that holds it, else unsigned long long; double where
    /// that holds it exactly, else long double.
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

    /// @return what can be dereferenced and cast to T; null or nothing when the value does not answer to T
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
