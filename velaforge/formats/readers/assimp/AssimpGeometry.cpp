// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/assimp/AssimpGeometry.h>

#include <velaforge/scene/Emission.h>

#include <assimp/mesh.h>

#include <algorithm>

namespace vfFormats {

namespace {

/// @return the corners of all faces with that many
std::vector<unsigned int> cornersOf(const aiMesh& mesh, unsigned int count)
{
    std::vector<unsigned int> corners;
    corners.reserve(static_cast<std::size_t>(mesh.mNumFaces) * count);
    for (unsigned int i = 0; i < mesh.mNumFaces; ++i) {
        const aiFace& face = mesh.mFaces[i];
        if (face.mNumIndices != count ||
            std::any_of(face.mIndices, face.mIndices + count,
                        [&mesh](unsigned int index) { return index >= mesh.mNumVertices; }))
            continue;
        corners.insert(corners.end(), face.mIndices, face.mIndices + count);
    }
    return corners;
}

void addPrimitives(osg::Geometry& geometry, const aiMesh& mesh)
{
    constexpr GLenum modes[] = {GL_POINTS, GL_LINES, GL_TRIANGLES};
    for (unsigned int count = 1; count <= 3; ++count) {
        const std::vector<unsigned int> corners = cornersOf(mesh, count);
        if (corners.empty())
            continue;
        if (mesh.mNumVertices <= 0xffff)
            geometry.addPrimitiveSet(
                new osg::DrawElementsUShort(modes[count - 1], corners.begin(), corners.end()));
        else
            geometry.addPrimitiveSet(
                new osg::DrawElementsUInt(modes[count - 1], corners.begin(), corners.end()));
    }
}

template <class Array, class Source, class Convert>
osg::ref_ptr<Array> makeArray(const Source* values, unsigned int count, Convert convert)
{
    osg::ref_ptr<Array> array = new Array(osg::Array::BIND_PER_VERTEX, count);
    std::transform(values, values + count, array->begin(), convert);
    return array;
}

void addTextureCoordinates(osg::Geometry& geometry, unsigned int unit, const aiMesh& mesh,
                           const TexturePlacement& placement)
{
    // Some files count their sets from another number on.
    const unsigned int channel = mesh.HasTextureCoords(placement.channel) ? placement.channel : 0;
    if (!mesh.HasTextureCoords(channel))
        return;
    geometry.setTexCoordArray(unit,
                              makeArray<osg::Vec2Array>(mesh.mTextureCoords[channel], mesh.mNumVertices,
                                                        [&placement](const aiVector3D& value) {
                                                            return placement.transformed({value.x, value.y});
                                                        }));
}

osg::ref_ptr<osg::Vec4Array> makeColors(const aiMesh& mesh, const MeshLook& look)
{
    const aiColor4D* colors = mesh.mColors[0];
    // Colours of three parts come with an alpha of zero.
    const bool hasAlpha =
        std::any_of(colors, colors + mesh.mNumVertices, [](const aiColor4D& color) { return color.a != 0; });
    return makeArray<osg::Vec4Array>(colors, mesh.mNumVertices, [&](const aiColor4D& value) {
        osg::Vec4 color(value.r, value.g, value.b, hasAlpha ? value.a : 1);
        for (int part = 0; part < 4; ++part)
            color[part] = color[part] > 0 ? std::min(color[part] * look.colorFactor[part], 1.0f) : 0;
        if (look.isLinear)
            color = toSrgb(color);
        if (look.isOpaque)
            color.a() = 1;
        return color;
    });
}

} // namespace

bool hasVertexColors(const aiMesh& mesh)
{
    // Some readers of Assimp make room for colours where a file has none.
    const aiColor4D* colors = mesh.mColors[0];
    return mesh.HasVertexColors(0) &&
           std::any_of(colors, colors + mesh.mNumVertices, [](const aiColor4D& color) {
               return color.r != 0 || color.g != 0 || color.b != 0 || color.a != 0;
           });
}

osg::ref_ptr<osg::Geometry> makeGeometry(const aiMesh& mesh, const MeshLook& look)
{
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    if (!mesh.HasPositions())
        return nullptr;
    addPrimitives(*geometry, mesh);
    if (geometry->getNumPrimitiveSets() == 0)
        return nullptr;
    geometry->setName(mesh.mName.C_Str());
    const auto vector = [](const aiVector3D& value) { return osg::Vec3(value.x, value.y, value.z); };
    geometry->setVertexArray(makeArray<osg::Vec3Array>(mesh.mVertices, mesh.mNumVertices, vector));
    if (mesh.HasNormals())
        geometry->setNormalArray(makeArray<osg::Vec3Array>(mesh.mNormals, mesh.mNumVertices, vector));
    addTextureCoordinates(*geometry, 0, mesh, look.base);
    if (look.hasEmission)
        addTextureCoordinates(*geometry, vfScene::emissionUnit, mesh, look.emission);
    if (hasVertexColors(mesh))
        geometry->setColorArray(makeColors(mesh, look));
    return geometry;
}

} // namespace vfFormats
