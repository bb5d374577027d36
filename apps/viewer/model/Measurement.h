// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Vec3d>

#include <optional>
#include <string>
#include <vector>

namespace vfViewer {

enum class MeasureKind : int
{
    Distance = 0, ///< between two points
    Angle = 1,    ///< at the second of three points
    Radius = 2    ///< of the circle through three points
};

/// Something that was measured between points of a scene.
struct Measurement
{
    MeasureKind kind = MeasureKind::Distance;
    std::vector<osg::Vec3d> points;
    double value = 0; ///< in the units of the model; degrees for an angle
};

/// @return how many points it takes
std::size_t pointsFor(MeasureKind kind);

/// @return nothing when there is no such thing between the points: an angle where two are one, a circle through points
///         on a line, or another number of points
std::optional<Measurement> measure(MeasureKind kind, const std::vector<osg::Vec3d>& points);

/// @return the line to be drawn through the scene for it, the circle for a radius
std::vector<osg::Vec3d> lineOf(const Measurement& measurement);

enum class LengthUnit : int
{
    None = 0, ///< whatever the model means
    Millimetre = 1,
    Centimetre = 2,
    Metre = 3,
    Inch = 4,
    Foot = 5
};

constexpr int lengthUnitCount = 6;

/// What the numbers of a model mean, and how lengths are shown.
struct Units
{
    LengthUnit ofModel = LengthUnit::None;
    LengthUnit shown = LengthUnit::None; ///< None for that of the model
};

/// @return "mm", "cm", "m", "in", "ft", and an empty text for None
const char* symbolOf(LengthUnit unit);

/// Number of units, None among them.
constexpr int unitCount = 6;

/// @return nothing for a text that is no symbol; "none" and an empty text are None
std::optional<LengthUnit> unitOf(const std::string& symbol);

/// @return the length in the unit that is shown, "12.5 mm"
std::string describeLength(double length, const Units& units);

/// @return "12.5 mm", "90°"
std::string describeValue(const Measurement& measurement, const Units& units);

/// @return "distance 12.5 mm", "angle 90°", "radius 3 mm"
std::string describe(const Measurement& measurement, const Units& units);

} // namespace vfViewer
