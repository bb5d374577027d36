// SPDX-License-Identifier: MIT
#include "assimp/AssimpGeometry.h"

#include <assimp/mesh.h>

#include <algorithm>

namespace vfViewer {

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

} // namespace

osg::ref_ptr<osg::Geometry> makeGeometry(const aiMesh& mesh, unsigned int textureChannel)
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
    if (mesh.HasTextureCoords(textureChannel)) {
        geometry->setTexCoordArray(
            0,
            makeArray<osg::Vec2Array>(mesh.mTextureCoords[textureChannel], mesh.mNumVertices,
                                      [](const aiVector3D& value) { return osg::Vec2(value.x, value.y); }));
    }
    if (mesh.HasVertexColors(0)) {
        geometry->setColorArray(
            makeArray<osg::Vec4Array>(mesh.mColors[0], mesh.mNumVertices, [](const aiColor4D& value) {
                return osg::Vec4(value.r, value.g, value.b, value.a);
            }));
    }
    return geometry;
}

} // namespace vfViewer
