// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>
#include <velaforge/formats/internal/FlatFields.h>

#include <osg/ref_ptr>

#include <type_traits>
#include <typeinfo>
#include <vector>

namespace vfFormats {

/// A class of objects in a scene that is sent from one process to another.
template <class Base>
struct FlatKind
{
    const std::type_info* type;
    osg::ref_ptr<Base> (*make)();
    void (*exchange)(FlatFields& fields, Base& object); ///< what is this class's own
};

template <class Base>
using FlatKinds = std::vector<FlatKind<Base>>;

/// Makes the entry of a class, of which a function exchanges the fields.
template <class T, class Base, void (*exchangeFields)(FlatFields&, T&)>
FlatKind<Base> flatKind()
{
    return {&typeid(T), [] { return osg::ref_ptr<Base>(new T); },
            [](FlatFields& fields, Base& object) {
                if constexpr (std::is_base_of_v<osg::Callback, T>)
                    exchangeFields(fields, dynamic_cast<T&>(object)); // whose base is virtual
                else
                    exchangeFields(fields, static_cast<T&>(object));
            }};
}

// The classes that can be sent. The number of one is its place in the list.
VFFORMATS_EXPORT const FlatKinds<osg::StateAttribute>& flatAttributes();
VFFORMATS_EXPORT const FlatKinds<osg::Callback>& flatCallbacks();
VFFORMATS_EXPORT const FlatKinds<osg::Node>& flatNodes();

/// @return the number of an object's class; the size of the list when the class is not in it
VFFORMATS_EXPORT std::size_t flatKindOf(const osg::StateAttribute& attribute);
VFFORMATS_EXPORT std::size_t flatKindOf(const osg::Callback& callback);
VFFORMATS_EXPORT std::size_t flatKindOf(const osg::Node& node);

/// Exchanges the name of an object, and whether it changes.
VFFORMATS_EXPORT void exchangeObject(FlatFields& fields, osg::Object& object);

// What each has, of whatever class.
VFFORMATS_EXPORT void exchangeCommon(FlatFields& fields, osg::StateAttribute& attribute);

/// Exchanges what each node has, of whatever class: its name, state, callbacks, mask, and values that a user gave it.
VFFORMATS_EXPORT void exchangeCommon(FlatFields& fields, osg::Node& node);

VFFORMATS_EXPORT void exchange(FlatFields& fields, osg::StateSet& state);

/// Textures stand in as many units, and coordinates for them.
constexpr unsigned int mostTextureUnits = 32;

} // namespace vfFormats
