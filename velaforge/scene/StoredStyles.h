// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/SettingsValue.h>
#include <velaforge/scene/Export.h>
#include <velaforge/scene/ViewStyle.h>

#include <osg/Vec3f>

namespace vfScene {

/// Returns a colour or a point as a value of the settings store: a list of three numbers.
VFSCENE_EXPORT vfBase::SettingsValue stored(const osg::Vec3f& vector);

/// Returns a camera as a value of the settings store: a map.
VFSCENE_EXPORT vfBase::SettingsValue stored(const LookAt& camera);

/// Returns a style as a value of the settings store: a map.
VFSCENE_EXPORT vfBase::SettingsValue stored(const ViewStyle& style);

/// Returns the value of a name in a map; an empty value when there is none.
VFSCENE_EXPORT const vfBase::SettingsValue& storedPart(const vfBase::SettingsValue::Map& map,
                                                       const char* name);

/// Reads a colour or a point.
/// @param value   from the store
/// @param vector  set on success, otherwise unchanged
/// @return false when @p value is none
VFSCENE_EXPORT bool readStored(const vfBase::SettingsValue& value, osg::Vec3f& vector);

/// Reads a camera.
/// @param value   from the store
/// @param camera  set on success, otherwise unchanged
/// @return false when @p value is none
VFSCENE_EXPORT bool readStored(const vfBase::SettingsValue& value, LookAt& camera);

/// Reads a style. What is missing or invalid in @p value stays as it is in @p style.
/// @param value  from the store
/// @param style  set on success
/// @return false when @p value is none
VFSCENE_EXPORT bool readStored(const vfBase::SettingsValue& value, ViewStyle& style);

} // namespace vfScene
