// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Vec3d>

#include <optional>
#include <string>
#include <vector>

namespace vfScene {

/// Kinds of measurements between points. The numbers are stored in settings.
enum class MeasureKind : int
{
    Distance = 0, ///< between two points
    Angle = 1,    ///< at the second of three points
    Radius = 2    ///< of the circle through three points
};

/// A measurement between points of a scene.
struct Measurement
{
    MeasureKind kind = MeasureKind::Distance; ///< what is measured
    std::vector<osg::Vec3d> points;           ///< in the coordinates of the scene
    double value = 0;                         ///< in the units of the model; degrees for an angle
};

/// Returns the number of points that a kind needs.
VFSCENE_EXPORT std::size_t pointsFor(MeasureKind kind);

/// Measures between points.
/// @param kind    what to measure
/// @param points  in the coordinates of the scene
/// @return the measurement; nothing where the points do not define one: an angle with two equal points, a circle through
///         collinear points, a wrong number of points
VFSCENE_EXPORT std::optional<Measurement> measure(MeasureKind kind, const std::vector<osg::Vec3d>& points);

/// Returns the line to draw for a measurement: through its points, or the circle of a radius.
VFSCENE_EXPORT std::vector<osg::Vec3d> lineOf(const Measurement& measurement);

/// Units of length. The numbers are stored in settings.
enum class LengthUnit : int
{
    None = 0, ///< the model does not say
    Millimetre = 1,
    Centimetre = 2,
    Metre = 3,
    Inch = 4,
    Foot = 5
};

/// Number of units, None included.
constexpr int lengthUnitCount = 6;

/// The unit of a model and the one in which its lengths are shown.
struct Units
{
    LengthUnit ofModel = LengthUnit::None; ///< the unit of its coordinates
    LengthUnit shown = LengthUnit::None;   ///< None for that of the model
};

/// Returns "mm", "cm", "m", "in" or "ft"; an empty text for None.
VFSCENE_EXPORT const char* symbolOf(LengthUnit unit);

/// Returns the unit with a symbol; nothing for a text that is no symbol. "none" and an empty text are None.
VFSCENE_EXPORT std::optional<LengthUnit> unitOf(const std::string& symbol);

/// Returns a length in the unit that is shown, "12.5 mm".
VFSCENE_EXPORT std::string describeLength(double length, const Units& units);

/// Returns the value of a measurement, "12.5 mm" or "90°".
VFSCENE_EXPORT std::string describeValue(const Measurement& measurement, const Units& units);

/// Returns a measurement in words, "distance 12.5 mm", "angle 90°" or "radius 3 mm".
VFSCENE_EXPORT std::string describe(const Measurement& measurement, const Units& units);

} // namespace vfScene
