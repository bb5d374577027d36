// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/ObjFile.h>

#include <velaforge/formats/internal/PlainText.h>
#include <velaforge/formats/internal/TextScanner.h>
#include <velaforge/formats/readers/ReadProgress.h>
#include <velaforge/scene/Triangulate.h>

#include <algorithm>
#include <map>
#include <utility>

namespace vfFormats {

namespace {

constexpr std::size_t bytesBetweenReports = 65536;

/// Of points without a colour, among those that have one.
const osg::Vec3 plain(0.78f, 0.78f, 0.80f);

/// A name on a line of its own, or something that is neither read nor missed.
bool isPassedOver(std::string_view word)
{
    for (const std::string_view known :
         {"s",     "mg",       "vp",       "shadow_obj", "trace_obj", "lod",  "usemap", "maplib",
          "bevel", "c_interp", "d_interp", "cstype",     "deg",       "parm", "trim",   "hole",
          "end",   "curv",     "curv2",    "surf",       "bmat",      "step", "scrv",   "sp",
          "con",   "call",     "csh",      "ctech",      "stech"})
    {
        if (word == known)
            return true;
    }
    return word.front() == '#';
}

class Parser
{
public:
    explicit Parser(std::string_view text) : m_scanner(text), m_size(text.size())
    {
        m_file.points.reserve(text.size() / 100);
    }

    ObjFile parse()
    {
        std::size_t nextReport = 0;
        while (!m_scanner.isAtEnd()) {
            if (m_scanner.passed() >= nextReport) {
                ReadProgress::tell(m_scanner.passed(), m_size);
                nextReport = m_scanner.passed() + bytesBetweenReports;
            }
            takeLine();
            m_scanner.nextLine();
        }
        takeDeferredFaces();
        finishColors();
        if (m_file.parts.empty() && m_file.spoiltFaces == 0)
            makeCloud();
        return std::move(m_file);
    }

private:
    void takeLine()
    {
        const std::string_view word = m_scanner.word();
        if (word.empty())
            return;
        if (word == "v")
            takePoint();
        else if (word == "f" || word == "fo")
            takeFace();
        else if (word == "vt")
            takeTexture();
        else if (word == "vn")
            takeNormal();
        else
            takeRareLine(word);
    }

    void takeRareLine(std::string_view word)
    {
        if (word == "l") {
            takeLineStrip();
        } else if (word == "p") {
            takeCorners();
            if (!defer('p'))
                add('p', surface());
        } else if (word == "g") {
            m_group = m_scanner.rest();
            m_surface = nullptr;
        } else if (word == "o") {
            m_object = m_scanner.rest();
            m_group.clear();
            m_surface = nullptr;
        } else if (word == "usemtl") {
            m_material = m_scanner.rest();
            m_surface = nullptr;
        } else if (word == "mtllib") {
            m_file.libraries.emplace_back(m_scanner.rest());
        } else if (!isPassedOver(word)) {
            ++m_file.unknownLines;
        }
    }

    void takePoint()
    {
        float values[7] = {};
        int count = 0;
        while (count < 7 && m_scanner.number(values[count]))
            ++count;
        m_file.points.emplace_back(values[0], values[1], values[2]);
        // Three more are a colour; one more is a weight, which only curves use.
        if (count >= 6) {
            const float* color = values + count - 3;
            m_file.colors.resize(m_file.points.size() - 1, plain);
            m_file.colors.emplace_back(color[0], color[1], color[2]);
        }
    }

    void takeTexture()
    {
        osg::Vec2 place;
        if (m_scanner.number(place.x()))
            m_scanner.number(place.y());
        m_file.textures.push_back(place);
    }

    void takeNormal()
    {
        osg::Vec3 normal;
        for (int i = 0; i < 3; ++i) {
            if (!m_scanner.number(normal[i]))
                break;
        }
        m_file.normals.push_back(normal);
    }

    /// @return the number of what is meant, from 0, which may be still to come; -1 when there is no such
    static int resolve(int number, std::size_t count)
    {
        return number < 0 ? std::max(number + static_cast<int>(count), -1) : number - 1;
    }

    /// @return whether everything that a corner names is known so far
    bool isKnown(const ObjCorner& corner) const
    {
        return corner.point < static_cast<int>(m_file.points.size()) &&
               corner.texture < static_cast<int>(m_file.textures.size()) &&
               corner.normal < static_cast<int>(m_file.normals.size());
    }

    ObjCorner takeCorner()
    {
        int number = 0;
        ObjCorner corner = {-1, -1, -1};
        if (m_scanner.integer(number))
            corner.point = resolve(number, m_file.points.size());
        if (m_scanner.take('/')) {
            if (m_scanner.integer(number))
                corner.texture = resolve(number, m_file.textures.size());
            if (m_scanner.take('/') && m_scanner.integer(number))
                corner.normal = resolve(number, m_file.normals.size());
        }
        m_scanner.finishWord(); // whatever else stands there
        return corner;
    }

    /// Takes the corners on the rest of the line. @return false when one of them is nowhere
    bool takeCorners()
    {
        m_corners.clear();
        bool areKnown = true;
        m_areAllKnown = true;
        while (m_scanner.hasWord() && !m_scanner.isNext('#')) {
            const ObjCorner corner = takeCorner();
            m_areAllKnown = m_areAllKnown && isKnown(corner);
            if (corner.point < 0)
                areKnown = false;
            else
                m_corners.push_back(corner);
        }
        return areKnown;
    }

    /// Keeps the corners for the end where they name what is still to come. @return whether it did
    bool defer(char kind)
    {
        if (m_areAllKnown)
            return false;
        surface();
        m_deferred.push_back({kind, m_place, m_corners});
        return true;
    }

    /// Takes what named something that was still to come.
    void takeDeferredFaces()
    {
        std::vector<Deferred> deferred;
        deferred.swap(m_deferred);
        m_areAllKnown = true;
        for (Deferred& face : deferred) {
            m_corners.swap(face.corners);
            bool isThere = true;
            for (ObjCorner& corner : m_corners) {
                isThere = isThere && corner.point < static_cast<int>(m_file.points.size());
                if (corner.texture >= static_cast<int>(m_file.textures.size()))
                    corner.texture = -1;
                if (corner.normal >= static_cast<int>(m_file.normals.size()))
                    corner.normal = -1;
            }
            ObjSurface& place = m_file.parts[face.place.first].surfaces[face.place.second];
            if (!isThere)
                ++m_file.spoiltFaces;
            else
                add(face.kind, place);
        }
        removeEmptyParts();
    }

    void removeEmptyParts()
    {
        const auto isEmpty = [](const ObjSurface& surface) {
            return surface.triangles.empty() && surface.lines.empty() && surface.points.empty();
        };
        std::vector<ObjPart>& parts = m_file.parts;
        for (ObjPart& part : parts)
            part.surfaces.erase(std::remove_if(part.surfaces.begin(), part.surfaces.end(), isEmpty),
                                part.surfaces.end());
        parts.erase(std::remove_if(parts.begin(), parts.end(),
                                   [](const ObjPart& part) { return part.surfaces.empty(); }),
                    parts.end());
    }

    void finishColors()
    {
        std::vector<osg::Vec3>& colors = m_file.colors;
        if (colors.empty())
            return;
        colors.resize(m_file.points.size(), plain);
        const bool isOfBytes = std::any_of(colors.begin(), colors.end(), [](const osg::Vec3& color) {
            return std::max({color.x(), color.y(), color.z()}) > 1.5f;
        });
        for (osg::Vec3& color : colors) {
            if (isOfBytes && color != plain)
                color /= 255;
            for (int i = 0; i < 3; ++i)
                color[i] = color[i] > 0 ? std::min(color[i], 1.0f) : 0;
        }
    }

    /// Scanners write points and nothing else.
    void makeCloud()
    {
        std::vector<ObjCorner> points;
        for (int i = 0; i < static_cast<int>(m_file.points.size()); ++i)
            points.push_back({i, -1, -1});
        if (!points.empty())
            m_file.parts.push_back({m_object, {{m_material, {}, {}, std::move(points)}}});
    }

    void takeFace()
    {
        if (!takeCorners() || m_corners.size() < 3) {
            ++m_file.spoiltFaces;
            return;
        }
        if (!defer('f'))
            add('f', surface());
    }

    /// Adds what the corners make to a surface. @param kind  'f' for a face, 'l' for a line, 'p' for points
    void add(char kind, ObjSurface& surface)
    {
        if (kind == 'p')
            surface.points.insert(surface.points.end(), m_corners.begin(), m_corners.end());
        else if (kind == 'l')
            addLine(surface.lines);
        else
            addFace(surface.triangles);
    }

    void addFace(std::vector<ObjCorner>& triangles)
    {
        if (m_corners.size() == 3) {
            triangles.insert(triangles.end(), m_corners.begin(), m_corners.end());
            return;
        }
        m_polygon.clear();
        m_cut.clear();
        for (const ObjCorner& corner : m_corners)
            m_polygon.push_back(m_file.points[static_cast<std::size_t>(corner.point)]);
        vfScene::triangulate(m_polygon, m_cut);
        for (const unsigned int corner : m_cut)
            triangles.push_back(m_corners[corner]);
    }

    void takeLineStrip()
    {
        if (!takeCorners() || m_corners.size() < 2) {
            ++m_file.spoiltFaces;
            return;
        }
        if (!defer('l'))
            add('l', surface());
    }

    void addLine(std::vector<ObjCorner>& lines) const
    {
        for (std::size_t i = 1; i < m_corners.size(); ++i) {
            lines.push_back(m_corners[i - 1]);
            lines.push_back(m_corners[i]);
        }
    }

    /// @return where faces go; it stays until a name on a line changes
    ObjSurface& surface()
    {
        if (m_surface)
            return *m_surface;
        const auto [part, isNewPart] = m_parts.try_emplace({m_object, m_group}, m_file.parts.size());
        if (isNewPart)
            m_file.parts.push_back({m_group.empty() ? m_object : m_group, {}});
        std::vector<ObjSurface>& surfaces = m_file.parts[part->second].surfaces;
        const auto [place, isNew] = m_surfaces.try_emplace({part->second, m_material}, surfaces.size());
        if (isNew)
            surfaces.push_back({m_material, {}, {}, {}});
        m_surface = &surfaces[place->second];
        m_place = {part->second, place->second};
        return *m_surface;
    }

    TextScanner m_scanner;
    std::size_t m_size;
    ObjFile m_file;
    std::string m_object;
    std::string m_group;
    std::string m_material;
    ObjSurface* m_surface = nullptr;
    std::pair<std::size_t, std::size_t> m_place; ///< of that: part and surface

    /// A face, a line or points that name what is still to come.
    struct Deferred
    {
        char kind;
        std::pair<std::size_t, std::size_t> place;
        std::vector<ObjCorner> corners;
    };
    std::vector<Deferred> m_deferred;
    bool m_areAllKnown = true; ///< what the corners name
    std::map<std::pair<std::string, std::string>, std::size_t> m_parts;
    std::map<std::pair<std::size_t, std::string>, std::size_t> m_surfaces;

    // Kept for their memory.
    std::vector<ObjCorner> m_corners;
    std::vector<osg::Vec3> m_polygon;
    std::vector<unsigned int> m_cut;
};

} // namespace

ObjFile parseObj(std::string_view text)
{
    const PlainText plainText(text);
    return Parser(plainText.text()).parse();
}

} // namespace vfFormats
