// SPDX-License-Identifier: MIT
#pragma once

#include <osg/PrimitiveSet>

#include <vector>

namespace vfFormats {

enum class PrimitiveKind
{
    Point,
    Lines,
    Face
};

/// Calls @p work with each primitive of a set as (PrimitiveKind, const unsigned int* indices, std::size_t count): one index for
/// a point, two or more for a run of lines, three or more for a face, in the order in which it is drawn.
template <class Work>
void walkPrimitives(const osg::PrimitiveSet& primitives, Work work);

namespace detail {

/// Walks through @p count indices of one mode, which begin at the number @p first.
template <class Work>
void walkRun(const osg::PrimitiveSet& primitives, unsigned int first, unsigned int count, Work& work)
{
    const auto at = [&](unsigned int i) { return primitives.index(first + i); };
    const auto each = [&](unsigned int size, unsigned int step, PrimitiveKind kind, auto order) {
        unsigned int indices[4];
        for (unsigned int i = 0; i + size <= count; i += step) {
            for (unsigned int k = 0; k < size; ++k)
                indices[k] = at(i + order(i, k));
            work(kind, indices, size);
        }
    };
    const auto whole = [&](PrimitiveKind kind, bool isClosed) {
        std::vector<unsigned int> indices;
        for (unsigned int i = 0; i < count; ++i)
            indices.push_back(at(i));
        if (isClosed)
            indices.push_back(at(0));
        work(kind, indices.data(), indices.size());
    };
    const auto asTheyAre = [](unsigned int, unsigned int k) { return k; };
    switch (primitives.getMode()) {
    case GL_POINTS:
        each(1, 1, PrimitiveKind::Point, asTheyAre);
        break;
    case GL_LINES:
        each(2, 2, PrimitiveKind::Lines, asTheyAre);
        break;
    case GL_LINE_STRIP:
    case GL_LINE_LOOP:
        if (count >= 2)
            whole(PrimitiveKind::Lines, primitives.getMode() == GL_LINE_LOOP);
        break;
    case GL_TRIANGLES:
        each(3, 3, PrimitiveKind::Face, asTheyAre);
        break;
    case GL_TRIANGLE_STRIP:
        each(3, 1, PrimitiveKind::Face,
             [](unsigned int i, unsigned int k) { return i % 2 == 1 && k < 2 ? 1 - k : k; });
        break;
    case GL_TRIANGLE_FAN:
        for (unsigned int i = 1; i + 1 < count; ++i) {
            const unsigned int indices[3] = {at(0), at(i), at(i + 1)};
            work(PrimitiveKind::Face, indices, 3);
        }
        break;
    case GL_QUADS:
        each(4, 4, PrimitiveKind::Face, asTheyAre);
        break;
    case GL_QUAD_STRIP:
        each(4, 2, PrimitiveKind::Face, [](unsigned int, unsigned int k) { return k < 2 ? k : 5 - k; });
        break;
    case GL_POLYGON:
        if (count >= 3)
            whole(PrimitiveKind::Face, false);
        break;
    default: // patches and neighbours need a shader
        break;
    }
}

} // namespace detail

template <class Work>
void walkPrimitives(const osg::PrimitiveSet& primitives, Work work)
{
    const auto* lengths = dynamic_cast<const osg::DrawArrayLengths*>(&primitives);
    if (!lengths) {
        detail::walkRun(primitives, 0, primitives.getNumIndices(), work);
        return;
    }
    unsigned int first = 0;
    for (const GLsizei length : *lengths) {
        const auto count = static_cast<unsigned int>(length > 0 ? length : 0);
        detail::walkRun(primitives, first, count, work);
        first += count;
    }
}

} // namespace vfFormats
