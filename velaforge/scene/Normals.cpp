// SPDX-License-Identifier: MIT
#include <velaforge/scene/Normals.h>

#include <osg/Geometry>
#include <osg/TriangleIndexFunctor>
#include <osgUtil/SmoothingVisitor>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <unordered_map>
#include <vector>

namespace vfScene {

namespace {

/// Where more faces meet in one point than this, they are not compared each with each: it is round there.
constexpr std::size_t mostFacesCompared = 256;

/// Normals that differ less than this are one.
constexpr float sameNormal = 1e-3f;

struct CollectTriangles
{
    std::vector<unsigned int>* corners = nullptr;

    void operator()(unsigned int a, unsigned int b, unsigned int c)
    {
        corners->insert(corners->end(), {a, b, c});
    }
};

/// Numbers points by where they are: those in one place have one number.
std::vector<unsigned int> numberPlaces(const osg::Vec3Array& points, unsigned int& count)
{
    std::size_t size = 16;
    while (size < points.size() * 2)
        size *= 2;
    constexpr unsigned int free = ~0u;
    std::vector<unsigned int> table(size, free); // the first point of each place
    std::vector<unsigned int> places(points.size());
    count = 0;
    for (unsigned int i = 0; i < points.size(); ++i) {
        const osg::Vec3 point = points[i] + osg::Vec3(); // which makes -0 into 0
        std::array<std::uint32_t, 3> bits;
        std::memcpy(bits.data(), point.ptr(), sizeof(bits));
        std::uint64_t hash =
            bits[0] * 0x9e3779b97f4a7c15u ^ bits[1] * 0xc2b2ae3d27d4eb4fu ^ bits[2] * 0x165667b19e3779f9u;
        hash ^= hash >> 29;
        std::size_t at = (hash * 0xbf58476d1ce4e5b9u >> 20) & (size - 1);
        while (table[at] != free && points[table[at]] != points[i])
            at = (at + 1) & (size - 1);
        if (table[at] == free) {
            table[at] = i;
            places[i] = count++;
        } else {
            places[i] = places[table[at]];
        }
    }
    return places;
}

/// The corners that meet in each place.
class Meetings
{
public:
    Meetings(const std::vector<unsigned int>& corners, const std::vector<unsigned int>& places,
             unsigned int count)
        : m_begins(count + 1, 0), m_corners(corners.size())
    {
        for (const unsigned int point : corners)
            ++m_begins[places[point] + 1];
        std::partial_sum(m_begins.begin(), m_begins.end(), m_begins.begin());
        std::vector<std::size_t> next(m_begins.begin(), m_begins.end() - 1);
        for (unsigned int i = 0; i < corners.size(); ++i)
            m_corners[next[places[corners[i]]]++] = i;
    }

    const unsigned int* begin(unsigned int place) const { return m_corners.data() + m_begins[place]; }
    std::size_t size(unsigned int place) const { return m_begins[place + 1] - m_begins[place]; }

private:
    std::vector<std::size_t> m_begins;
    std::vector<unsigned int> m_corners;
};

class Smoother
{
public:
    Smoother(osg::Geometry& geometry, const osg::Vec3Array& points, double creaseAngle)
        : m_geometry(geometry), m_points(points), m_cosine(static_cast<float>(std::cos(creaseAngle)))
    {}

    void smooth()
    {
        collectTriangles();
        findFaceNormals();
        unsigned int count = 0;
        const std::vector<unsigned int> places = numberPlaces(m_points, count);
        const Meetings meetings(m_corners, places, count);
        m_normals.assign(m_points.size(), osg::Vec3());
        m_next.assign(m_points.size(), -1);
        m_origins.resize(m_points.size());
        std::iota(m_origins.begin(), m_origins.end(), 0u);
        std::vector<bool> isUsed(m_points.size(), false);
        for (unsigned int i = 0; i < m_corners.size(); ++i) {
            const unsigned int point = m_corners[i];
            const osg::Vec3 normal = normalAt(i, places[point], meetings);
            if (!isUsed[point]) {
                isUsed[point] = true;
                m_normals[point] = normal;
            } else {
                m_corners[i] = find(point, normal);
            }
        }
        store();
    }

private:
    void collectTriangles()
    {
        for (unsigned int i = 0; i < m_geometry.getNumPrimitiveSets(); ++i) {
            const osg::PrimitiveSet& primitives = *m_geometry.getPrimitiveSet(i);
            if (primitives.getMode() >= GL_TRIANGLES) {
                osg::TriangleIndexFunctor<CollectTriangles> functor;
                functor.corners = &m_corners;
                primitives.accept(functor);
            }
            m_ends.push_back(m_corners.size());
        }
        // An index may be beyond the points.
        for (unsigned int& point : m_corners) {
            if (point >= m_points.size())
                point = 0;
        }
    }

    /// Of each triangle: the longer the larger.
    void findFaceNormals()
    {
        m_faces.reserve(m_corners.size() / 3);
        for (std::size_t i = 0; i + 2 < m_corners.size(); i += 3) {
            const osg::Vec3& a = m_points[m_corners[i]];
            m_faces.push_back((m_points[m_corners[i + 1]] - a) ^ (m_points[m_corners[i + 2]] - a));
            m_units.push_back(m_faces.back());
            m_units.back().normalize();
        }
    }

    osg::Vec3 roundNormalAt(unsigned int place, const Meetings& meetings)
    {
        const auto [known, isNew] = m_roundNormals.try_emplace(place);
        for (std::size_t i = 0; isNew && i < meetings.size(place); ++i)
            known->second += m_faces[meetings.begin(place)[i] / 3];
        if (isNew && !(known->second.normalize() > 0))
            known->second.set(0, 0, 1);
        return known->second;
    }

    osg::Vec3 normalAt(unsigned int corner, unsigned int place, const Meetings& meetings)
    {
        const osg::Vec3& own = m_units[corner / 3];
        const unsigned int* others = meetings.begin(place);
        const std::size_t count = meetings.size(place);
        if (count > mostFacesCompared)
            return roundNormalAt(place, meetings);
        osg::Vec3 sum;
        for (std::size_t i = 0; i < count; ++i) {
            const unsigned int face = others[i] / 3;
            if (face == corner / 3 || own * m_units[face] >= m_cosine)
                sum += m_faces[face];
        }
        if (sum.normalize() > 0)
            return sum;
        return own.length2() > 0 ? own
                                 : osg::Vec3(0, 0, 1); // a triangle without an area shows nothing anyway
    }

    /// @return the point, or a double of it, that has the normal
    unsigned int find(unsigned int point, const osg::Vec3& normal)
    {
        unsigned int at = point;
        while ((m_normals[at] - normal).length2() > sameNormal * sameNormal) {
            if (m_next[at] < 0) {
                m_next[at] = static_cast<int>(m_normals.size());
                m_normals.push_back(normal);
                m_next.push_back(-1);
                m_origins.push_back(point);
                return static_cast<unsigned int>(m_normals.size()) - 1;
            }
            at = static_cast<unsigned int>(m_next[at]);
        }
        return at;
    }

    void store()
    {
        std::size_t begin = 0;
        for (unsigned int i = 0; i < m_geometry.getNumPrimitiveSets(); ++i) {
            const std::size_t end = m_ends[i];
            if (m_geometry.getPrimitiveSet(i)->getMode() >= GL_TRIANGLES) {
                const auto first = m_corners.begin() + static_cast<std::ptrdiff_t>(begin);
                const auto last = m_corners.begin() + static_cast<std::ptrdiff_t>(end);
                if (m_normals.size() <= 0xffff)
                    m_geometry.setPrimitiveSet(i, new osg::DrawElementsUShort(GL_TRIANGLES, first, last));
                else
                    m_geometry.setPrimitiveSet(i, new osg::DrawElementsUInt(GL_TRIANGLES, first, last));
            }
            begin = end;
        }
        doubleOtherArrays();
        const osg::ref_ptr<osg::Vec3Array> normals = new osg::Vec3Array(m_normals.begin(), m_normals.end());
        normals->setBinding(osg::Array::BIND_PER_VERTEX);
        m_geometry.setNormalArray(normals);
        m_geometry.dirtyGLObjects();
    }

    /// What belongs to a point belongs to its doubles.
    void doubleOtherArrays()
    {
        m_geometry.setNormalArray(nullptr);
        osg::Geometry::ArrayList arrays;
        m_geometry.getArrayList(arrays);
        const std::size_t before = m_points.size(); // which is one of the arrays
        const auto after = static_cast<unsigned int>(m_origins.size());
        for (const osg::ref_ptr<osg::Array>& array : arrays) {
            if (array->getNumElements() != before || array->getBinding() != osg::Array::BIND_PER_VERTEX)
                continue;
            array->resizeArray(after);
            char* data = static_cast<char*>(const_cast<void*>(array->getDataPointer()));
            const std::size_t size = array->getElementSize();
            for (std::size_t i = before; i < after; ++i)
                std::memcpy(data + i * size, data + m_origins[i] * size, size);
            array->dirty();
        }
    }

    osg::Geometry& m_geometry;
    const osg::Vec3Array& m_points;
    float m_cosine;
    std::vector<unsigned int> m_corners; ///< of all triangles: points
    std::vector<std::size_t> m_ends;     ///< of the primitive sets, among the corners
    std::vector<osg::Vec3> m_faces;
    std::vector<osg::Vec3> m_units;

    std::unordered_map<unsigned int, osg::Vec3> m_roundNormals; ///< of places where many faces meet

    // Of each point, doubles at the end.
    std::vector<osg::Vec3> m_normals;
    std::vector<int> m_next; ///< the next double, -1 for none
    std::vector<unsigned int> m_origins;
};

/// @return whether an array has the vertices' own binding, but not an element for each of them
bool sharesItsArrays(const osg::Geometry& geometry)
{
    osg::Geometry::ArrayList arrays;
    geometry.getArrayList(arrays);
    for (const osg::ref_ptr<osg::Array>& array : arrays) {
        if (array->referenceCount() > 2) // the geometry's, and the list's
            return true;
    }
    return false;
}

} // namespace

void makeNormals(osg::Geometry& geometry, double creaseAngle)
{
    geometry.setNormalArray(nullptr);
    const auto* points = dynamic_cast<const osg::Vec3Array*>(geometry.getVertexArray());
    if (points && points->getBinding() == osg::Array::BIND_PER_VERTEX && !sharesItsArrays(geometry)) {
        Smoother(geometry, *points, creaseAngle).smooth();
        return;
    }
    osgUtil::SmoothingVisitor smoother;
    smoother.setCreaseAngle(creaseAngle);
    geometry.accept(smoother);
}

} // namespace vfScene
