// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Referenced.h>
#include <velaforge/base/StringList.h>
#include <velaforge/base/VfString.h>

#include <any>
#include <type_traits>
#include <utility>

namespace vfBase {

/// Body of VfVariant: one value, which never changes.
class VFBASE_EXPORT VfVariantPrivate : public osg::Referenced
{
public:
    explicit VfVariantPrivate(std::any contents) : value(std::move(contents)) {}

    const std::any value;

protected:
    ~VfVariantPrivate() override;
};

/// A value of any copyable type, or none.
///
///     vfBase::VfVariant angle(90.0);
///     angle.toDouble();             // 90
///     angle.is<int>();              // false
///     angle.get<vfBase::VfString>() // the empty text: no conversion between types
///     vfBase::VfVariant(osg::Vec3(0, 0, 1)).get<osg::Vec3>();
///
/// A handle on a body that never changes, so that copies are cheap and none of them can change another.
/// Integers of every kind are kept as long long, float as double, texts as VfString.
class VFBASE_EXPORT VfVariant : public Referenced
{
public:
    /// The empty value.
    VfVariant() = default;

    VfVariant(const VfVariant& other) = default;

    /// A copy. The flag has no effect; true by custom.
    VfVariant(const VfVariant& other, bool) : VfVariant(other) {}

    /// A handle on the other's body if that is a value, otherwise the empty value.
    explicit VfVariant(const Referenced& other);

    VfVariant(const char* text) : VfVariant(VfString(text)) {}
    VfVariant(const std::string& text) : VfVariant(VfString(text)) {}

    /// Any copyable value that is no handle on a variant itself.
    template <class T,
              class = std::enable_if_t<!std::is_base_of_v<VfVariant, T> && !std::is_same_v<Referenced, T> &&
                                       std::is_copy_constructible_v<T>>>
    VfVariant(const T& value) : Referenced(new VfVariantPrivate(std::any(stored(value))), true)
    {}

    VfVariant& operator=(const VfVariant& other) = default;

    void setImp(const Referenced& other) override;

    /// @return true for the empty value
    bool isEmpty() const { return !getImp(); }

    /// @return true when a value of just this type is held; integers answer to long long, texts to VfString
    template <class T>
    bool is() const
    {
        return held<T>() != nullptr;
    }

    /// @return the value, or T() when no value of that type is held
    template <class T>
    T get() const
    {
        const T* value = held<T>();
        return value ? *value : T();
    }

    bool toBool() const { return get<bool>(); }
    long long toInteger() const { return get<long long>(); }
    double toDouble() const { return get<double>(); }
    VfString toString() const { return get<VfString>(); }

    /// @return the list, shared with the one given at the beginning; an empty list when none is held
    StringList toStringList() const { return get<StringList>(); }

    VfVariantPrivate* getImp() const { return static_cast<VfVariantPrivate*>(Referenced::getImp()); }

private:
    template <class T>
    static auto stored(const T& value)
    {
        if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>)
            return static_cast<long long>(value);
        else if constexpr (std::is_floating_point_v<T>)
            return static_cast<double>(value);
        else
            return value;
    }

    template <class T>
    const T* held() const
    {
        const VfVariantPrivate* body = getImp();
        return body ? std::any_cast<T>(&body->value) : nullptr;
    }
};

} // namespace vfBase
