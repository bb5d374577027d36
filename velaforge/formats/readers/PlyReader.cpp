// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/PlyReader.h>

#include <velaforge/formats/internal/LargeArray.h>
#include <velaforge/formats/readers/ImageFiles.h>
#include <velaforge/formats/readers/MappedFile.h>
#include <velaforge/formats/readers/PlyFile.h>
#include <velaforge/formats/readers/ReadProgress.h>
#include <velaforge/scene/Triangulate.h>

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Material>
#include <osg/Texture2D>
#include <osgDB/FileNameUtils>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace vfFormats {

namespace {

constexpr std::uint64_t rowsBetweenReports = 65536;

/// Of what has no colour, among what has.
const osg::Vec4 plain(0.78f, 0.78f, 0.80f, 1);

/// Where the parts of a colour stand in a row; -1 for none.
struct ColorColumns
{
    explicit ColorColumns(const PlyElement& element)
        : parts{element.find({"red", "r", "diffuse_red", "diffuse_r"}),
                element.find({"green", "g", "diffuse_green", "diffuse_g"}),
                element.find({"blue", "b", "diffuse_blue", "diffuse_b"}),
                element.find({"alpha", "a", "diffuse_alpha", "diffuse_a"})}
    {
        const auto isMissing = [&element](int part) {
            return part < 0 || element.properties[static_cast<std::size_t>(part)].isList();
        };
        if (isMissing(parts[0]) || isMissing(parts[1]) || isMissing(parts[2])) {
            isThere = false;
            return;
        }
        if (isMissing(parts[3]))
            parts[3] = -1;
        for (std::size_t i = 0; i < 4; ++i) {
            if (parts[i] >= 0)
                scales[i] = scaleOf(element.properties[static_cast<std::size_t>(parts[i])].type);
        }
    }

    osg::Vec4 take(const PlyRows& rows) const
    {
        osg::Vec4 color(0, 0, 0, 1);
        for (std::size_t i = 0; i < 4; ++i) {
            if (parts[i] >= 0)
                color[static_cast<int>(i)] =
                    static_cast<float>(rows.number(static_cast<std::size_t>(parts[i])) * scales[i]);
        }
        return color;
    }

    std::array<int, 4> parts;
    std::array<double, 4> scales{1, 1, 1, 1};
    bool isThere = true;

private:
    static double scaleOf(PlyNumber type)
    {
        switch (type) {
        case PlyNumber::UInt16:
        case PlyNumber::Int16:
            return 1 / 65535.0;
        case PlyNumber::Float32:
        case PlyNumber::Float64:
            return 1;
        default:
            return 1 / 255.0;
        }
    }
};

/// Real numbers are from 0 to 1 as a rule, and from 0 to 255 where one is larger.
void correctColors(osg::Vec4Array& colors)
{
    const bool isOfBytes = std::any_of(colors.begin(), colors.end(), [](const osg::Vec4& color) {
        return std::max({color.r(), color.g(), color.b()}) > 1.5f;
    });
    for (osg::Vec4& color : colors) {
        for (int i = 0; i < 4; ++i) {
            const float scale = isOfBytes && (i < 3 || color.a() > 1.5f) ? 1 / 255.0f : 1;
            color[i] = color[i] > 0 ? std::min(color[i] * scale, 1.0f) : 0;
        }
    }
}

std::string describe(std::uint64_t count, const char* one, const char* many)
{
    return std::to_string(count) + (count == 1 ? one : many);
}

class Reader
{
public:
    Reader(const std::string& path, std::string_view text, ReadOutcome& outcome)
        : m_directory(osgDB::getFilePath(path)), m_text(text), m_outcome(outcome)
    {}

    void read()
    {
        PlyHeader header;
        m_outcome.reason = header.parse(m_text);
        if (!m_outcome.reason.empty())
            return;
        m_textures = header.textures;
        PlyRows rows(m_text, header);
        for (const PlyElement& element : header.elements) {
            rows.begin(element);
            if (!take(element, rows)) {
                m_outcome.warnings.push_back("the file ends after " + std::to_string(rows.rowsRead()) +
                                             " of " + describe(element.count, " row", " rows") + " of \"" +
                                             element.name + "\"");
                break;
            }
        }
        m_outcome.scene = makeScene();
        if (!m_outcome.scene) {
            m_outcome.reason = "there is nothing in it that could be shown";
            return;
        }
        if (m_spoilt > 0)
            m_outcome.warnings.push_back(describe(m_spoilt, " face names", " faces name") +
                                         " points that are not there");
        if (m_degenerate > 0)
            m_outcome.details.push_back(describe(m_degenerate, " face has", " faces have") +
                                        " less than three corners");
    }

private:
    /// Reads all rows of an element. @return false where the file ends too early
    bool take(const PlyElement& element, PlyRows& rows)
    {
        if (element.name == "vertex")
            takeVertices(element, rows);
        else if (element.name == "face")
            takeFaces(element, rows);
        else if (element.name == "tristrips")
            takeStrips(element, rows);
        else if (element.name == "edge")
            takeEdges(element, rows);
        else
            while (rows.next()) {
            }
        return rows.rowsRead() == element.count || element.properties.empty();
    }

    void report(const PlyRows& rows) const
    {
        if (rows.rowsRead() % rowsBetweenReports == 0)
            ReadProgress::tell(rows.passed(), m_text.size());
    }

    void takeVertices(const PlyElement& element, PlyRows& rows)
    {
        const auto scalar = [&element](std::initializer_list<const char*> names) {
            const int found = element.find(names);
            return found >= 0 && element.properties[static_cast<std::size_t>(found)].isList() ? -1 : found;
        };
        const std::array<int, 3> place = {scalar({"x", "px", "posx"}), scalar({"y", "py", "posy"}),
                                          scalar({"z", "pz", "posz"})};
        const std::array<int, 3> normal = {scalar({"nx", "normalx", "normal_x"}),
                                           scalar({"ny", "normaly", "normal_y"}),
                                           scalar({"nz", "normalz", "normal_z"})};
        const std::array<int, 2> coordinates = {scalar({"s", "u", "texture_u", "texture_s", "tx"}),
                                                scalar({"t", "v", "texture_v", "texture_t", "ty"})};
        const ColorColumns color(element);
        const auto isThere = [](const auto& columns) {
            return std::all_of(columns.begin(), columns.end(), [](int column) { return column >= 0; });
        };
        const bool hasNormals = isThere(normal);
        const bool hasCoordinates = isThere(coordinates);
        const std::size_t most = rows.mostRows();
        reserveLarge(m_points->asVector(), most);
        if (hasNormals)
            reserveLarge(m_normals->asVector(), most);
        if (color.isThere)
            reserveLarge(m_colors->asVector(), most);
        const auto number = [&rows](int column) {
            return column < 0 ? 0.0f : static_cast<float>(rows.number(static_cast<std::size_t>(column)));
        };
        while (rows.next()) {
            report(rows);
            m_points->push_back({number(place[0]), number(place[1]), number(place[2])});
            if (hasNormals)
                m_normals->push_back({number(normal[0]), number(normal[1]), number(normal[2])});
            if (hasCoordinates)
                m_coordinates->push_back({number(coordinates[0]), number(coordinates[1])});
            if (color.isThere)
                m_colors->push_back(color.take(rows));
        }
        correctColors(*m_colors);
        replaceNowhere();
    }

    /// Vertices that are nowhere are not drawn; their places must not count for the extent of the model.
    void replaceNowhere()
    {
        const auto isNowhere = [](const osg::Vec3& point) {
            return !std::isfinite(point.x() + point.y() + point.z());
        };
        const auto first = std::find_if_not(m_points->begin(), m_points->end(), isNowhere);
        const osg::Vec3 somewhere = first == m_points->end() ? osg::Vec3() : *first;
        for (std::size_t i = 0; i < m_points->size(); ++i) {
            if (!isNowhere((*m_points)[i]))
                continue;
            if (m_isNowhere.empty())
                m_isNowhere.resize(m_points->size());
            m_isNowhere[i] = true;
            (*m_points)[i] = somewhere;
        }
    }

    /// @return whether a list of a row names vertices that are there, which are in m_corners then
    bool takeCorners(const std::vector<double>& list)
    {
        m_corners.clear();
        for (const double number : list) {
            if (!(number >= 0 && number < static_cast<double>(m_points->size())))
                return false;
            const auto corner = static_cast<unsigned int>(number);
            if (!m_isNowhere.empty() && m_isNowhere[corner])
                return false;
            m_corners.push_back(corner);
        }
        return true;
    }

    static int listOf(const PlyElement& element, std::initializer_list<const char*> names)
    {
        const int named = element.find(names);
        if (named >= 0 && element.properties[static_cast<std::size_t>(named)].isList())
            return named;
        return -1;
    }

    void takeFaces(const PlyElement& element, PlyRows& rows)
    {
        int corners = listOf(element, {"vertex_indices", "vertex_index"});
        const int coordinates = listOf(element, {"texcoord", "texcoords", "uv"});
        const int picture = element.find({"texnumber", "texture_number"});
        if (corners < 0) { // the only list
            for (std::size_t i = 0; i < element.properties.size(); ++i) {
                if (element.properties[i].isList() && static_cast<int>(i) != coordinates &&
                    static_cast<int>(i) != picture)
                    corners = corners < 0 ? static_cast<int>(i) : corners;
            }
        }
        const ColorColumns color(element);
        m_hasFaceColors = m_hasFaceColors || color.isThere;
        m_hasFaceCoordinates = m_hasFaceCoordinates || coordinates >= 0;
        reserveLarge(m_triangles, corners < 0 ? 0 : std::min(rows.mostRows() * 3, m_text.size() / 2));
        while (rows.next()) {
            report(rows);
            if (corners < 0)
                continue;
            if (!takeCorners(rows.list(static_cast<std::size_t>(corners)))) {
                ++m_spoilt;
                continue;
            }
            const std::size_t first = m_triangles.size();
            addPolygon();
            const osg::Vec4 own = color.isThere ? color.take(rows) : osg::Vec4();
            for (std::size_t i = first; i < m_triangles.size(); ++i) {
                if (color.isThere)
                    m_cornerColors->push_back(own);
                if (coordinates >= 0)
                    m_cornerCoordinates.push_back(
                        coordinatesOf(rows.list(static_cast<std::size_t>(coordinates)), m_cut[i - first]));
            }
            if (picture >= 0) {
                const std::size_t column = static_cast<std::size_t>(picture);
                const bool isList = element.properties[column].isList();
                const double number = !isList                     ? rows.number(column)
                                      : rows.list(column).empty() ? 0
                                                                  : rows.list(column).front();
                m_pictures.resize(m_triangles.size() / 3,
                                  number >= 0 && number < 1000 ? static_cast<int>(number) : 0);
            }
        }
        correctColors(*m_cornerColors);
    }

    /// Cuts the polygon of m_corners into triangles; m_cut says which corner of it each of their corners is.
    void addPolygon()
    {
        m_cut.clear();
        if (m_corners.size() < 3) {
            ++m_degenerate;
            return;
        }
        if (m_corners.size() == 3) {
            m_cut.assign({0, 1, 2});
        } else {
            m_polygon.clear();
            for (const unsigned int corner : m_corners)
                m_polygon.push_back((*m_points)[corner]);
            vfScene::triangulate(m_polygon, m_cut);
        }
        for (const unsigned int corner : m_cut)
            m_triangles.push_back(m_corners[corner]);
    }

    static osg::Vec2 coordinatesOf(const std::vector<double>& list, unsigned int corner)
    {
        const std::size_t at = std::size_t(2) * corner;
        if (at + 1 >= list.size())
            return {};
        return {static_cast<float>(list[at]), static_cast<float>(list[at + 1])};
    }

    /// A strip is a list of vertices, each of which makes a triangle with the two before it; -1 begins another.
    void takeStrips(const PlyElement& element, PlyRows& rows)
    {
        const int column = listOf(element, {"vertex_indices", "vertex_index"});
        while (rows.next()) {
            if (column < 0)
                continue;
            std::size_t length = 0;
            const std::vector<double>& list = rows.list(static_cast<std::size_t>(column));
            for (std::size_t i = 0; i < list.size(); ++i) {
                if (list[i] < 0) {
                    length = 0;
                    continue;
                }
                if (++length < 3)
                    continue;
                const bool isOdd = length % 2 == 0;
                if (!takeCorners({list[i - 2], list[isOdd ? i : i - 1], list[isOdd ? i - 1 : i]}))
                    ++m_spoilt;
                else if (m_corners[0] != m_corners[1] && m_corners[1] != m_corners[2] &&
                         m_corners[2] != m_corners[0])
                    addPolygon();
            }
        }
    }

    void takeEdges(const PlyElement& element, PlyRows& rows)
    {
        const int from = element.find({"vertex1", "v1"});
        const int to = element.find({"vertex2", "v2"});
        while (rows.next()) {
            if (from < 0 || to < 0)
                continue;
            if (!takeCorners(
                    {rows.number(static_cast<std::size_t>(from)), rows.number(static_cast<std::size_t>(to))}))
                ++m_spoilt;
            else
                m_edges.insert(m_edges.end(), m_corners.begin(), m_corners.end());
        }
    }

    static osg::ref_ptr<osg::PrimitiveSet> elements(GLenum mode, const std::vector<unsigned int>& numbers,
                                                    std::size_t points)
    {
        if (points <= 0xffff)
            return new osg::DrawElementsUShort(mode, numbers.begin(), numbers.end());
        return new osg::DrawElementsUInt(mode, numbers.begin(), numbers.end());
    }

    /// @return a geometry with the arrays of the vertices
    osg::ref_ptr<osg::Geometry> ofVertices(bool hasNormals) const
    {
        osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
        geometry->setVertexArray(m_points);
        if (hasNormals && m_normals->size() == m_points->size())
            geometry->setNormalArray(m_normals);
        if (m_colors->size() == m_points->size())
            geometry->setColorArray(m_colors);
        if (m_coordinates->size() == m_points->size())
            geometry->setTexCoordArray(0, m_coordinates);
        return geometry;
    }

    /// @return a geometry in which each corner of some triangles is a vertex of its own, for what belongs to faces
    osg::ref_ptr<osg::Geometry> ofCorners(const std::vector<std::size_t>& triangles) const
    {
        const auto count = static_cast<unsigned int>(triangles.size() * 3);
        const auto make = [&](const auto& source, auto take) {
            using Array = std::decay_t<decltype(*source)>;
            osg::ref_ptr<Array> made = new Array(osg::Array::BIND_PER_VERTEX, count);
            for (std::size_t i = 0; i < count; ++i) {
                const std::size_t corner = triangles[i / 3] * 3 + i % 3;
                (*made)[i] = take(corner);
            }
            return made;
        };
        const auto vertex = [this](std::size_t corner) { return m_triangles[corner]; };
        osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
        geometry->setVertexArray(make(m_points, [&](std::size_t i) { return (*m_points)[vertex(i)]; }));
        if (m_normals->size() == m_points->size())
            geometry->setNormalArray(make(m_normals, [&](std::size_t i) { return (*m_normals)[vertex(i)]; }));
        if (m_hasFaceColors) {
            geometry->setColorArray(make(m_cornerColors, [&](std::size_t i) {
                return i < m_cornerColors->size() ? (*m_cornerColors)[i] : plain;
            }));
        } else if (m_colors->size() == m_points->size()) {
            geometry->setColorArray(make(m_colors, [&](std::size_t i) { return (*m_colors)[vertex(i)]; }));
        }
        const auto coordinates = [&](std::size_t i) {
            if (m_hasFaceCoordinates)
                return i < m_cornerCoordinates.size() ? m_cornerCoordinates[i] : osg::Vec2();
            return (*m_coordinates)[vertex(i)];
        };
        if (m_hasFaceCoordinates || m_coordinates->size() == m_points->size())
            geometry->setTexCoordArray(0, make(m_coordinates, coordinates));
        geometry->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLES, 0, static_cast<int>(count)));
        return geometry;
    }

    /// Lays a picture on the surface. The colours of vertices are often the same picture once more.
    void addTexture(osg::Geometry& geometry, std::size_t number) const
    {
        if (number >= m_textures.size() || !geometry.getTexCoordArray(0))
            return;
        const osg::ref_ptr<osg::Image> image = readImageFile(m_textures[number], m_directory);
        if (!image)
            return;
        const osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
        texture->setWrap(osg::Texture::WRAP_S, osg::Texture::REPEAT);
        texture->setWrap(osg::Texture::WRAP_T, osg::Texture::REPEAT);
        texture->setResizeNonPowerOfTwoHint(false);
        const osg::ref_ptr<osg::Material> white = new osg::Material;
        white->setColorMode(osg::Material::OFF);
        white->setAmbient(osg::Material::FRONT_AND_BACK, {1, 1, 1, 1});
        white->setDiffuse(osg::Material::FRONT_AND_BACK, {1, 1, 1, 1});
        geometry.setColorArray(nullptr);
        geometry.getOrCreateStateSet()->setTextureAttributeAndModes(0, texture);
        geometry.getOrCreateStateSet()->setAttribute(white);
    }

    osg::ref_ptr<osg::Node> makeScene()
    {
        if (m_points->empty())
            return nullptr;
        osg::ref_ptr<osg::Geode> geode = new osg::Geode;
        addSurfaces(*geode);
        if (!m_edges.empty()) {
            const osg::ref_ptr<osg::Geometry> geometry =
                osg::clone(ofVertices(false).get(), osg::CopyOp::DEEP_COPY_ALL);
            geometry->addPrimitiveSet(elements(GL_LINES, m_edges, m_points->size()));
            geode->addDrawable(geometry);
        }
        if (geode->getNumDrawables() == 0)
            addCloud(*geode);
        return geode->getNumDrawables() > 0 ? geode : nullptr;
    }

    void addSurfaces(osg::Geode& geode)
    {
        if (m_triangles.empty())
            return;
        const bool hasPictures = m_textures.size() > 1 && !m_pictures.empty();
        if (!m_hasFaceColors && !m_hasFaceCoordinates && !hasPictures) {
            const osg::ref_ptr<osg::Geometry> geometry = ofVertices(true);
            geometry->addPrimitiveSet(elements(GL_TRIANGLES, m_triangles, m_points->size()));
            addTexture(*geometry, 0);
            geode.addDrawable(geometry);
            return;
        }
        std::map<int, std::vector<std::size_t>> byPicture;
        for (std::size_t i = 0; i < m_triangles.size() / 3; ++i)
            byPicture[hasPictures && i < m_pictures.size() ? m_pictures[i] : 0].push_back(i);
        for (const auto& [number, triangles] : byPicture) {
            const osg::ref_ptr<osg::Geometry> geometry = ofCorners(triangles);
            addTexture(*geometry, static_cast<std::size_t>(number));
            geode.addDrawable(geometry);
        }
    }

    void addCloud(osg::Geode& geode) const
    {
        const osg::ref_ptr<osg::Geometry> geometry = ofVertices(false);
        if (m_isNowhere.empty()) {
            geometry->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, static_cast<int>(m_points->size())));
        } else {
            std::vector<unsigned int> there;
            for (unsigned int i = 0; i < m_isNowhere.size(); ++i) {
                if (!m_isNowhere[i])
                    there.push_back(i);
            }
            if (there.empty())
                return;
            geometry->addPrimitiveSet(elements(GL_POINTS, there, m_points->size()));
        }
        geode.addDrawable(geometry);
    }

    std::string m_directory;
    std::string_view m_text;
    ReadOutcome& m_outcome;
    std::vector<std::string> m_textures;

    // Of each vertex, or empty.
    osg::ref_ptr<osg::Vec3Array> m_points = new osg::Vec3Array(osg::Array::BIND_PER_VERTEX);
    osg::ref_ptr<osg::Vec3Array> m_normals = new osg::Vec3Array(osg::Array::BIND_PER_VERTEX);
    osg::ref_ptr<osg::Vec4Array> m_colors = new osg::Vec4Array(osg::Array::BIND_PER_VERTEX);
    osg::ref_ptr<osg::Vec2Array> m_coordinates = new osg::Vec2Array(osg::Array::BIND_PER_VERTEX);
    std::vector<bool> m_isNowhere;

    std::vector<unsigned int> m_triangles; ///< three vertices each
    std::vector<unsigned int> m_edges;     ///< two each

    // Of each corner of the triangles, where faces have them.
    bool m_hasFaceColors = false;
    bool m_hasFaceCoordinates = false;
    osg::ref_ptr<osg::Vec4Array> m_cornerColors = new osg::Vec4Array;
    std::vector<osg::Vec2> m_cornerCoordinates;
    std::vector<int> m_pictures; ///< of each triangle

    std::size_t m_spoilt = 0;
    std::size_t m_degenerate = 0;

    // Kept for their memory.
    std::vector<unsigned int> m_corners;
    std::vector<unsigned int> m_cut;
    std::vector<osg::Vec3> m_polygon;
};

} // namespace

ReadOutcome readPly(const std::string& path)
{
    ReadOutcome outcome;
    const MappedFile file(path);
    Reader(path, file.text(), outcome).read();
    return outcome;
}

} // namespace vfFormats
