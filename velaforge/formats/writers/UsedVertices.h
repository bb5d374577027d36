// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/internal/PrimitiveWalk.h>

#include <osg/Geometry>

#include <cstddef>
#include <vector>

namespace vfFormats {

/// The vertices that the primitives of a geometry refer to, numbered from 1 in the order of the array.
class UsedVertices
{
public:
    /// @param size  of the vertex array; indices beyond it are ignored
    UsedVertices(const osg::Geometry& geometry, std::size_t size) : m_numbers(size, 0)
    {
        for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList()) {
            walkPrimitives(*primitives, [&](PrimitiveKind, const unsigned int* indices, std::size_t count) {
                for (std::size_t i = 0; i < count; ++i) {
                    if (indices[i] < size)
                        m_numbers[indices[i]] = 1;
                }
            });
        }
        for (std::size_t i = 0; i < size; ++i) {
            if (m_numbers[i] == 0)
                continue;
            m_indices.push_back(static_cast<unsigned int>(i));
            m_numbers[i] = m_indices.size();
        }
    }

    /// Returns the indices of the vertices, ascending.
    const std::vector<unsigned int>& indices() const { return m_indices; }
    std::size_t size() const { return m_indices.size(); }

    /// Returns the number of the vertex of an index, 0 for one that no primitive refers to.
    std::size_t number(unsigned int index) const { return m_numbers[index]; }

private:
    std::vector<std::size_t> m_numbers;
    std::vector<unsigned int> m_indices;
};

} // namespace vfFormats
