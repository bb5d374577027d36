// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/ValidateGeometry.h>

#include <osg/Geometry>

#include <algorithm>
#include <cstdint>

namespace vfFormats {

namespace {

template <class Elements>
bool isWithin(const osg::PrimitiveSet& primitives, std::size_t count, bool& isKnown)
{
    const auto* elements = dynamic_cast<const Elements*>(&primitives);
    if (!elements)
        return false;
    isKnown = true;
    return elements->empty() || *std::max_element(elements->begin(), elements->end()) < count;
}

bool isWithin(const osg::PrimitiveSet& primitives, std::size_t count)
{
    if (const auto* range = dynamic_cast<const osg::DrawArrays*>(&primitives)) {
        return range->getFirst() >= 0 && range->getCount() >= 0 &&
               static_cast<std::uint64_t>(range->getFirst()) +
                       static_cast<std::uint64_t>(range->getCount()) <=
                   count;
    }
    if (const auto* lengths = dynamic_cast<const osg::DrawArrayLengths*>(&primitives)) {
        std::uint64_t end = static_cast<std::uint64_t>(std::max(lengths->getFirst(), 0));
        for (const GLsizei length : *lengths) {
            if (length < 0)
                return false;
            end += static_cast<std::uint64_t>(length);
        }
        return lengths->getFirst() >= 0 && end <= count;
    }
    bool isKnown = false;
    const bool isValid = isWithin<osg::DrawElementsUInt>(primitives, count, isKnown) ||
                         isWithin<osg::DrawElementsUShort>(primitives, count, isKnown) ||
                         isWithin<osg::DrawElementsUByte>(primitives, count, isKnown);
    return isKnown && isValid;
}

/// @return whether there is an element for each point, or for all, as the binding says
bool isLongEnough(const osg::Array& array, std::size_t points, std::size_t primitiveSets)
{
    switch (array.getBinding()) {
    case osg::Array::BIND_OFF:
        return true;
    case osg::Array::BIND_OVERALL:
        return array.getNumElements() > 0;
    case osg::Array::BIND_PER_PRIMITIVE_SET:
        return array.getNumElements() >= primitiveSets;
    default:
        return array.getNumElements() >= points;
    }
}

} // namespace

bool validateGeometry(osg::Geometry& geometry)
{
    const osg::Array* vertices = geometry.getVertexArray();
    const std::size_t points = vertices ? vertices->getNumElements() : 0;
    bool isChanged = false;
    for (unsigned int i = geometry.getNumPrimitiveSets(); i > 0; --i) {
        if (isWithin(*geometry.getPrimitiveSet(i - 1), points))
            continue;
        geometry.removePrimitiveSet(i - 1);
        isChanged = true;
    }
    // Without shaders, instances lie on one another: a number of them only costs time.
    for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList()) {
        isChanged = isChanged || primitives->getNumInstances() > 1;
        primitives->setNumInstances(0);
    }
    const std::size_t sets = geometry.getNumPrimitiveSets();
    const auto isShort = [&](const osg::Array* array) {
        return array && !isLongEnough(*array, points, sets);
    };
    if (isShort(geometry.getNormalArray())) {
        geometry.setNormalArray(nullptr);
        isChanged = true;
    }
    if (isShort(geometry.getColorArray())) {
        geometry.setColorArray(nullptr);
        isChanged = true;
    }
    if (isShort(geometry.getSecondaryColorArray())) {
        geometry.setSecondaryColorArray(nullptr);
        isChanged = true;
    }
    if (isShort(geometry.getFogCoordArray())) {
        geometry.setFogCoordArray(nullptr);
        isChanged = true;
    }
    for (unsigned int i = 0; i < geometry.getNumTexCoordArrays(); ++i) {
        if (isShort(geometry.getTexCoordArray(i))) {
            geometry.setTexCoordArray(i, nullptr);
            isChanged = true;
        }
    }
    for (unsigned int i = 0; i < geometry.getNumVertexAttribArrays(); ++i) {
        if (isShort(geometry.getVertexAttribArray(i))) {
            geometry.setVertexAttribArray(i, nullptr);
            isChanged = true;
        }
    }
    return isChanged;
}

} // namespace vfFormats
