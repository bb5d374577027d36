// SPDX-License-Identifier: MIT
#include <velaforge/scene/Measurement.h>

#include <osg/Math>

#include <algorithm>
#include <cmath>
#include <locale>
#include <sstream>

namespace vfScene {

namespace {

/// Sides of a triangle that differ from a line by less are on it.
constexpr double straight = 1e-9;

struct UnitRecord
{
    const char* symbol;
    double metres;
};

constexpr UnitRecord unitRecords[lengthUnitCount] = {{"", 1},  {"mm", 0.001},  {"cm", 0.01},
                                                     {"m", 1}, {"in", 0.0254}, {"ft", 0.3048}};

const UnitRecord& recordOf(LengthUnit unit)
{
    return unitRecords[static_cast<std::size_t>(unit)];
}

struct Circle
{
    osg::Vec3d middle;
    osg::Vec3d across; ///< to the first point
    osg::Vec3d other;  ///< at a right angle to it, as long
};

std::optional<Circle> circleThrough(const osg::Vec3d& a, const osg::Vec3d& b, const osg::Vec3d& c)
{
    const osg::Vec3d u = b - a;
    const osg::Vec3d v = c - a;
    const osg::Vec3d normal = u ^ v;
    if (!(normal.length() > straight * u.length() * v.length()))
        return std::nullopt;
    const osg::Vec3d middle =
        a + ((normal ^ u) * v.length2() + (v ^ normal) * u.length2()) / (2 * normal.length2());
    osg::Vec3d other = normal ^ (a - middle);
    other.normalize();
    return Circle{middle, a - middle, other * (a - middle).length()};
}

std::string number(double value)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(6);
    text << value;
    return text.str();
}

} // namespace

std::size_t pointsFor(MeasureKind kind)
{
    return kind == MeasureKind::Distance ? 2 : 3;
}

std::optional<Measurement> measure(MeasureKind kind, const std::vector<osg::Vec3d>& points)
{
    if (points.size() != pointsFor(kind))
        return std::nullopt;
    Measurement measurement{kind, points, 0};
    if (kind == MeasureKind::Distance) {
        measurement.value = (points[1] - points[0]).length();
    } else if (kind == MeasureKind::Angle) {
        const osg::Vec3d one = points[0] - points[1];
        const osg::Vec3d other = points[2] - points[1];
        if (!(one.length() > 0) || !(other.length() > 0))
            return std::nullopt;
        // This way small angles are as exact as large ones.
        measurement.value = osg::RadiansToDegrees(std::atan2((one ^ other).length(), one * other));
    } else {
        const std::optional<Circle> circle = circleThrough(points[0], points[1], points[2]);
        if (!circle)
            return std::nullopt;
        measurement.value = circle->across.length();
    }
    return measurement;
}

std::vector<osg::Vec3d> lineOf(const Measurement& measurement)
{
    if (measurement.kind != MeasureKind::Radius)
        return measurement.points;
    std::vector<osg::Vec3d> line;
    const std::optional<Circle> circle =
        circleThrough(measurement.points[0], measurement.points[1], measurement.points[2]);
    constexpr int corners = 96;
    for (int i = 0; circle && i <= corners; ++i) {
        const double angle = 2 * osg::PI * i / corners;
        line.push_back(circle->middle + circle->across * std::cos(angle) + circle->other * std::sin(angle));
    }
    return line;
}

const char* symbolOf(LengthUnit unit)
{
    return recordOf(unit).symbol;
}

std::optional<LengthUnit> unitOf(const std::string& symbol)
{
    const auto* found = std::find_if(std::begin(unitRecords), std::end(unitRecords),
                                     [&symbol](const UnitRecord& record) { return record.symbol == symbol; });
    if (symbol == "none")
        return LengthUnit::None;
    if (found == std::end(unitRecords))
        return std::nullopt;
    return static_cast<LengthUnit>(found - std::begin(unitRecords));
}

std::string describeLength(double length, const Units& units)
{
    // Of a model that means nothing in particular nothing can be converted.
    const bool isConverted = units.ofModel != LengthUnit::None && units.shown != LengthUnit::None;
    const LengthUnit shown = isConverted ? units.shown : units.ofModel;
    const double value = length * recordOf(units.ofModel).metres / recordOf(shown).metres;
    return number(value) + (shown == LengthUnit::None ? "" : std::string(" ") + symbolOf(shown));
}

std::string describeValue(const Measurement& measurement, const Units& units)
{
    return measurement.kind == MeasureKind::Angle ? number(measurement.value) + "°"
                                                  : describeLength(measurement.value, units);
}

std::string describe(const Measurement& measurement, const Units& units)
{
    const char* const names[] = {"distance ", "angle ", "radius "};
    return names[static_cast<std::size_t>(measurement.kind)] + describeValue(measurement, units);
}

} // namespace vfScene
