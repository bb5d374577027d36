// SPDX-License-Identifier: MIT
#pragma once

#include "model/ViewStyle.h"

#include <velaforge/base/SettingsValue.h>

#include <osg/Vec3f>

namespace vfViewer {

// How colours, cameras and styles stand among the settings.

vfBase::SettingsValue stored(const osg::Vec3f& vector);
vfBase::SettingsValue stored(const LookAt& camera);
vfBase::SettingsValue stored(const ViewStyle& style);

/// @return the value of that name; one of nothing where there is none
const vfBase::SettingsValue& storedPart(const vfBase::SettingsValue::Map& map, const char* name);

// Each returns false, and leaves what is there, for what is none. In a style what is missing or makes no sense stays.
bool readStored(const vfBase::SettingsValue& value, osg::Vec3f& vector);
bool readStored(const vfBase::SettingsValue& value, LookAt& camera);
bool readStored(const vfBase::SettingsValue& value, ViewStyle& style);

} // namespace vfViewer
