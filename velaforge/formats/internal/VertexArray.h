// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <osg/Array>
#include <osg/Vec3d>

namespace vfFormats {

/// Reads the vertices of a geometry, of whichever type they are.
class VFFORMATS_EXPORT VertexArray
{
public:
    /// @param array  null for no vertices
    explicit VertexArray(const osg::Array* array)
        : m_vec3(dynamic_cast<const osg::Vec3Array*>(array)),
          m_vec3d(dynamic_cast<const osg::Vec3dArray*>(array)),
          m_vec2(dynamic_cast<const osg::Vec2Array*>(array)),
          m_vec4(dynamic_cast<const osg::Vec4Array*>(array))
    {}

    /// Returns the number of vertices, 0 for a type that is not read.
    std::size_t size() const
    {
        if (m_vec3)
            return m_vec3->size();
        if (m_vec3d)
            return m_vec3d->size();
        if (m_vec2)
            return m_vec2->size();
        return m_vec4 ? m_vec4->size() : 0;
    }

    /// Returns a vertex; @p i must be below size().
    osg::Vec3d operator[](std::size_t i) const
    {
        if (m_vec3)
            return (*m_vec3)[i];
        if (m_vec3d)
            return (*m_vec3d)[i];
        if (m_vec2)
            return {static_cast<double>((*m_vec2)[i].x()), static_cast<double>((*m_vec2)[i].y()), 0};
        const osg::Vec4d point = (*m_vec4)[i];
        return osg::Vec3d(point.x(), point.y(), point.z()) / (point.w() == 0 ? 1 : point.w());
    }

private:
    const osg::Vec3Array* m_vec3;
    const osg::Vec3dArray* m_vec3d;
    const osg::Vec2Array* m_vec2;
    const osg::Vec4Array* m_vec4;
};

} // namespace vfFormats
