// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/ObjReader.h>

#include <velaforge/formats/readers/MappedFile.h>
#include <velaforge/formats/readers/ObjFile.h>
#include <velaforge/formats/readers/ObjMaterials.h>
#include <velaforge/scene/Emission.h>

#include <osg/Geode>
#include <osg/Geometry>
#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>

#include <algorithm>
#include <functional>

namespace vfFormats {

namespace {

constexpr int longestChain = 256;

/// Makes the geometry of surfaces, in which corners that agree in everything are one.
class Builder
{
public:
    explicit Builder(const ObjFile& file) : m_file(file), m_first(file.points.size(), -1) {}

    /// @param mode   GL_TRIANGLES, GL_LINES or GL_POINTS
    /// @param emits  whether the material has a picture of what it emits
    osg::ref_ptr<osg::Geometry> build(const std::vector<ObjCorner>& corners, unsigned int mode, bool emits)
    {
        m_emits = emits;
        const auto has = [&corners](int ObjCorner::*number) {
            return std::all_of(corners.begin(), corners.end(),
                               [number](const ObjCorner& corner) { return corner.*number >= 0; });
        };
        m_hasTextures = has(&ObjCorner::texture);
        m_hasNormals = mode == GL_TRIANGLES && has(&ObjCorner::normal);
        unite(corners);
        osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
        addArrays(*geometry);
        if (m_corners.size() <= 0xffff)
            geometry->addPrimitiveSet(new osg::DrawElementsUShort(mode, m_indices.begin(), m_indices.end()));
        else
            geometry->addPrimitiveSet(new osg::DrawElementsUInt(mode, m_indices.begin(), m_indices.end()));
        for (const ObjCorner& corner : m_corners)
            m_first[static_cast<std::size_t>(corner.point)] = -1;
        return geometry;
    }

private:
    /// Numbers the corners that differ.
    void unite(const std::vector<ObjCorner>& corners)
    {
        m_corners.clear();
        m_next.clear();
        m_indices.clear();
        m_indices.reserve(corners.size());
        for (ObjCorner corner : corners) {
            if (!m_hasTextures)
                corner.texture = -1;
            if (!m_hasNormals)
                corner.normal = -1;
            m_indices.push_back(static_cast<unsigned int>(find(corner)));
        }
    }

    /// The corners of one point are a chain that begins at that point. It is short, and where it is not the corner is
    /// taken for a new one.
    int find(const ObjCorner& corner)
    {
        int& first = m_first[static_cast<std::size_t>(corner.point)];
        int steps = 0;
        for (int at = first; at >= 0 && steps < longestChain;
             at = m_next[static_cast<std::size_t>(at)], ++steps) {
            const ObjCorner& known = m_corners[static_cast<std::size_t>(at)];
            if (known.texture == corner.texture && known.normal == corner.normal)
                return at;
        }
        m_corners.push_back(corner);
        m_next.push_back(first);
        first = static_cast<int>(m_corners.size()) - 1;
        return first;
    }

    static osg::Vec3 zUp(const osg::Vec3& yUp) { return {yUp.x(), -yUp.z(), yUp.y()}; }

    void addArrays(osg::Geometry& geometry) const
    {
        const auto count = static_cast<unsigned int>(m_corners.size());
        const osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array(osg::Array::BIND_PER_VERTEX, count);
        fill(*points, [this](const ObjCorner& corner) { return zUp(m_file.points[index(corner.point)]); });
        geometry.setVertexArray(points);
        if (m_hasNormals) {
            const osg::ref_ptr<osg::Vec3Array> normals =
                new osg::Vec3Array(osg::Array::BIND_PER_VERTEX, count);
            fill(*normals,
                 [this](const ObjCorner& corner) { return zUp(m_file.normals[index(corner.normal)]); });
            geometry.setNormalArray(normals);
        }
        if (m_hasTextures) {
            const osg::ref_ptr<osg::Vec2Array> places =
                new osg::Vec2Array(osg::Array::BIND_PER_VERTEX, count);
            fill(*places, [this](const ObjCorner& corner) { return m_file.textures[index(corner.texture)]; });
            geometry.setTexCoordArray(0, places);
            if (m_emits)
                geometry.setTexCoordArray(vfScene::emissionUnit,
                                          osg::clone(places.get(), osg::CopyOp::DEEP_COPY_ALL));
        }
        if (!m_file.colors.empty()) {
            const osg::ref_ptr<osg::Vec4Array> colors =
                new osg::Vec4Array(osg::Array::BIND_PER_VERTEX, count);
            fill(*colors, [this](const ObjCorner& corner) {
                return osg::Vec4(m_file.colors[index(corner.point)], 1);
            });
            geometry.setColorArray(colors);
        }
    }

    template <class Array, class Value>
    void fill(Array& array, Value value) const
    {
        std::transform(m_corners.begin(), m_corners.end(), array.begin(), value);
    }

    static std::size_t index(int number) { return static_cast<std::size_t>(number); }

    const ObjFile& m_file;
    bool m_emits = false;
    bool m_hasTextures = false;
    bool m_hasNormals = false;
    std::vector<ObjCorner> m_corners; ///< those of the geometry
    std::vector<int> m_next;          ///< the next of the same point, -1 at the end
    std::vector<int> m_first;         ///< of each point of the file, -1 for none
    std::vector<unsigned int> m_indices;
};

/// Splits triangles by what their corners have: one without a texture or normals costs the others nothing.
/// @return nothing where all of them have the same
std::vector<std::vector<ObjCorner>> likeCorners(const std::vector<ObjCorner>& triangles)
{
    const auto kindOf = [&triangles](std::size_t first) {
        const auto has = [&](int ObjCorner::*number) {
            return triangles[first].*number >= 0 && triangles[first + 1].*number >= 0 &&
                   triangles[first + 2].*number >= 0;
        };
        return std::size_t(has(&ObjCorner::texture) ? 0 : 1) + (has(&ObjCorner::normal) ? 0 : 2);
    };
    std::vector<std::vector<ObjCorner>> split(4);
    bool isMixed = false;
    for (std::size_t i = 0; i + 2 < triangles.size() && !isMixed; i += 3)
        isMixed = kindOf(i) != kindOf(0);
    if (!isMixed)
        return {};
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3) {
        std::vector<ObjCorner>& kind = split[kindOf(i)];
        kind.insert(kind.end(), triangles.begin() + static_cast<std::ptrdiff_t>(i),
                    triangles.begin() + static_cast<std::ptrdiff_t>(i + 3));
    }
    return split;
}

void addSurface(osg::Geode& geode, Builder& builder, const ObjMaterials& materials, const ObjSurface& surface)
{
    const auto add = [&](const std::vector<ObjCorner>& corners, unsigned int mode) {
        if (corners.empty())
            return;
        osg::StateSet* state = materials.find(surface.material);
        const bool emits = state && state->getTextureAttribute(vfScene::emissionUnit,
                                                               osg::StateAttribute::TEXTURE) != nullptr;
        const osg::ref_ptr<osg::Geometry> geometry = builder.build(corners, mode, emits);
        geometry->setName(surface.material);
        if (state)
            geometry->setStateSet(state);
        geode.addDrawable(geometry);
    };
    const std::vector<std::vector<ObjCorner>> kinds = likeCorners(surface.triangles);
    if (kinds.empty())
        add(surface.triangles, GL_TRIANGLES);
    for (const std::vector<ObjCorner>& triangles : kinds)
        add(triangles, GL_TRIANGLES);
    add(surface.lines, GL_LINES);
    add(surface.points, GL_POINTS);
}

osg::ref_ptr<osg::Node> makeScene(const ObjFile& file, const ObjMaterials& materials)
{
    const osg::ref_ptr<osg::Group> root = new osg::Group;
    Builder builder(file);
    for (const ObjPart& part : file.parts) {
        const osg::ref_ptr<osg::Geode> geode = new osg::Geode;
        geode->setName(part.name);
        for (const ObjSurface& surface : part.surfaces)
            addSurface(*geode, builder, materials, surface);
        if (geode->getNumDrawables() > 0)
            root->addChild(geode);
    }
    return root;
}

std::string counted(std::size_t count, const char* one, const char* many)
{
    return std::to_string(count) + (count == 1 ? one : many);
}

} // namespace

ReadOutcome readObj(const std::string& path)
{
    ReadOutcome outcome;
    const MappedFile text(path);
    const ObjFile file = parseObj(text.text());
    if (file.parts.empty()) {
        outcome.reason = file.points.empty() ? "the file is damaged, or not of the format that its name says"
                                             : "there is nothing in it that could be shown";
        return outcome;
    }
    if (file.spoiltFaces > 0)
        outcome.warnings.push_back(counted(file.spoiltFaces, " face names", " faces name") +
                                   " points that are not there");
    if (file.unknownLines > 0)
        outcome.details.push_back(counted(file.unknownLines, " line begins", " lines begin") +
                                  " with an unknown word");
    ObjMaterials materials(osgDB::getFilePath(path));
    for (const std::string& library : file.libraries)
        materials.addLibrary(library);
    // Some programs leave the name of the library out where it is that of the model.
    const bool isWanted = std::any_of(file.parts.begin(), file.parts.end(), [](const ObjPart& part) {
        return std::any_of(part.surfaces.begin(), part.surfaces.end(),
                           [](const ObjSurface& surface) { return !surface.material.empty(); });
    });
    const std::string beside = osgDB::getNameLessExtension(path) + ".mtl";
    if (file.libraries.empty() && isWanted && osgDB::fileExists(beside))
        materials.addLibrary(osgDB::getSimpleFileName(beside));
    outcome.scene = makeScene(file, materials);
    return outcome;
}

} // namespace vfFormats
