// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/internal/PrimitiveWalk.h>
#include <velaforge/formats/internal/VertexArray.h>
#include <velaforge/formats/writers/ModelParts.h>

#include <osg/Geometry>

#include <algorithm>
#include <vector>

namespace vfFormats {

/// Calls @p work with the corners of each triangle of a part, in the coordinates of the model. Polygons become fans; faces
/// that refer to missing vertices are left out.
template <class Work>
void walkTriangles(const ModelPart& part, Work work)
{
    const VertexArray vertices(part.geometry->getVertexArray());
    std::vector<osg::Vec3d> corners;
    for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : part.geometry->getPrimitiveSetList()) {
        walkPrimitives(*primitives, [&](PrimitiveKind kind, const unsigned int* indices, std::size_t count) {
            if (kind != PrimitiveKind::Face ||
                std::any_of(indices, indices + count, [&](unsigned int i) { return i >= vertices.size(); }))
                return;
            corners.clear();
            for (std::size_t i = 0; i < count; ++i)
                corners.push_back(vertices[indices[i]] * part.matrix);
            for (std::size_t i = 1; i + 1 < count; ++i)
                work(corners[0], corners[i], corners[i + 1]);
        });
    }
}

} // namespace vfFormats
