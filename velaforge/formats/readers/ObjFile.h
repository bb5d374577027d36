// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Vec2>
#include <osg/Vec3>

#include <string>
#include <string_view>
#include <vector>

namespace vfFormats {

/// A corner of a face: numbers of a point, a place in the texture and a normal, from 0; -1 for none.
struct ObjCorner
{
    int point;
    int texture;
    int normal;
};

/// What has one material within a part: triangles, lines and points, by the corners that they are made of.
struct ObjSurface
{
    std::string material;
    std::vector<ObjCorner> triangles;
    std::vector<ObjCorner> lines; ///< two each
    std::vector<ObjCorner> points;
};

/// What has one name.
struct ObjPart
{
    std::string name;
    std::vector<ObjSurface> surfaces;
};

/// What stands in a file of the format "obj", cut into triangles.
struct ObjFile
{
    std::vector<osg::Vec3> points;
    std::vector<osg::Vec3> colors; ///< one for each point, or none at all; grey for points without
    std::vector<osg::Vec2> textures;
    std::vector<osg::Vec3> normals;
    std::vector<ObjPart> parts;
    std::vector<std::string> libraries; ///< of materials
    std::size_t spoiltFaces = 0;        ///< faces left away, since they name points that are not there
    std::size_t unknownLines = 0;       ///< lines that begin with none of the words known
};

/// Takes everything that can be taken; y points up as in the text.
ObjFile parseObj(std::string_view text);

} // namespace vfFormats
