// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/StlReader.h>

#include <velaforge/base/LaunchPolicy.h>
#include <velaforge/formats/internal/LargeArray.h>
#include <velaforge/formats/internal/PlainText.h>
#include <velaforge/formats/internal/StlKind.h>
#include <velaforge/formats/internal/TextScanner.h>
#include <velaforge/formats/readers/MappedFile.h>
#include <velaforge/formats/readers/ReadProgress.h>

#include <osg/Geode>
#include <osg/Geometry>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace vfFormats {

namespace {

constexpr std::size_t headerSize = stlHeaderSize;
constexpr std::size_t triangleSize = stlTriangleSize;
constexpr std::size_t trianglesBetweenReports = 65536;
constexpr std::size_t trianglesAtOnce = 512;
constexpr std::size_t trianglesWorthAThread = 100000;
constexpr std::size_t bytesBetweenReports = std::size_t(1024) * 1024;

/// One solid.
struct Solid
{
    std::string name;
    osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array(osg::Array::BIND_PER_VERTEX);
    osg::ref_ptr<osg::Vec3Array> normals = new osg::Vec3Array(osg::Array::BIND_PER_VERTEX);
    osg::ref_ptr<osg::Vec4Array> colors = new osg::Vec4Array(osg::Array::BIND_PER_VERTEX);
};

/// Not all files bring normals, and not all that they bring are right.
osg::Vec3 normalOf(const osg::Vec3& given, const osg::Vec3& a, const osg::Vec3& b, const osg::Vec3& c)
{
    osg::Vec3 normal = (b - a) ^ (c - a);
    if (normal.normalize() > 0)
        return normal;
    normal = given;
    return normal.normalize() > 0 ? normal : osg::Vec3(0, 0, 1);
}

osg::ref_ptr<osg::Geode> makeNode(const Solid& solid)
{
    const osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setVertexArray(solid.points);
    geometry->setNormalArray(solid.normals);
    if (!solid.colors->empty())
        geometry->setColorArray(solid.colors);
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLES, 0, static_cast<int>(solid.points->size())));
    const osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->setName(solid.name);
    geode->addDrawable(geometry);
    return geode;
}

template <class Value>
Value valueAt(const char* data)
{
    Value value;
    std::memcpy(&value, data, sizeof(value));
    return value;
}

/// The colours that the two spare bytes of a triangle may hold, five bits a part. Where the header names a colour the
/// lowest bits are red and the highest is set where the colour of the whole counts; otherwise the lowest are blue, and the
/// highest is set where there is a colour.
class SpareBytes
{
public:
    explicit SpareBytes(std::string_view header)
    {
        const std::size_t place = header.find("COLOR=");
        if (place == std::string_view::npos || place + 10 > header.size())
            return;
        m_isNamed = true;
        for (unsigned int i = 0; i < 4; ++i)
            m_whole[static_cast<int>(i)] =
                static_cast<float>(static_cast<unsigned char>(header[place + 6 + i])) / 255.0f;
    }

    bool hasColor(std::uint16_t bits) const { return m_isNamed || (bits & 0x8000) != 0; }

    osg::Vec4 color(std::uint16_t bits) const
    {
        const bool isOwn = m_isNamed == ((bits & 0x8000) == 0);
        if (!isOwn)
            return m_whole;
        const auto part = [bits](int shift) { return static_cast<float>(bits >> shift & 31) / 31; };
        return m_isNamed ? osg::Vec4(part(0), part(5), part(10), 1)
                         : osg::Vec4(part(10), part(5), part(0), 1);
    }

private:
    bool m_isNamed = false;
    osg::Vec4 m_whole{0.8f, 0.8f, 0.8f, 1};
};

/// Adds three elements for each triangle to an array, a few triangles at a time: the array is written once, and not filled
/// with zeros before.
/// @param make  makes the three of the triangle of that number, whose bytes are given
template <class Make>
void append(osg::Vec3Array& array, std::string_view text, std::size_t count, Make make)
{
    reserveLarge(array.asVector(), count * 3);
    std::array<osg::Vec3, 3 * trianglesAtOnce> some;
    std::size_t filled = 0;
    const auto flush = [&] {
        array.insert(array.end(), some.begin(), some.begin() + static_cast<std::ptrdiff_t>(filled));
        filled = 0;
    };
    const char* at = text.data() + headerSize;
    for (std::size_t i = 0; i < count; ++i, at += triangleSize, filled += 3) {
        if (filled == some.size())
            flush();
        make(i, at, some.data() + filled);
    }
    flush();
}

/// Gives the triangles the colours that they bring. One with a colour gives one to all.
void takeColors(Solid& solid, std::string_view text, std::size_t count, const SpareBytes& spare)
{
    solid.colors->resize(count * 3, osg::Vec4(0.8f, 0.8f, 0.8f, 1));
    const char* at = text.data() + headerSize + 48;
    for (std::size_t i = 0; i < count; ++i, at += triangleSize) {
        const auto bits = valueAt<std::uint16_t>(at);
        if (!spare.hasColor(bits))
            continue;
        std::fill_n(solid.colors->begin() + static_cast<std::ptrdiff_t>(3 * i), 3, spare.color(bits));
    }
}

Solid parseNumbers(std::string_view text)
{
    Solid solid;
    const std::size_t announced = valueAt<std::uint32_t>(text.data() + headerSize - 4);
    const std::size_t count = std::min(announced, (text.size() - headerSize) / triangleSize);
    const auto computeNormals = [&solid, text, count] {
        append(*solid.normals, text, count, [](std::size_t, const char* at, osg::Vec3* normals) {
            std::array<osg::Vec3, 4> values;
            std::memcpy(values.data(), at, sizeof(values));
            normals[0] = normals[1] = normals[2] = normalOf(values[0], values[1], values[2], values[3]);
        });
    };
    // Points and normals are worked out side by side where that is worth it.
    std::future<void> others;
    if (count >= trianglesWorthAThread)
        others = std::async(vfBase::asyncOrDeferred, computeNormals);
    const SpareBytes spare(text.substr(0, 80));
    bool hasColors = false;
    append(*solid.points, text, count, [&](std::size_t i, const char* at, osg::Vec3* points) {
        if (i % trianglesBetweenReports == 0)
            ReadProgress::tell(i, count);
        std::memcpy(points, at + sizeof(osg::Vec3), 3 * sizeof(osg::Vec3));
        hasColors |= spare.hasColor(valueAt<std::uint16_t>(at + 48));
    });
    if (others.valid())
        others.get();
    else
        computeNormals();
    if (hasColors)
        takeColors(solid, text, count, spare);
    return solid;
}

bool readPoint(TextScanner& scanner, osg::Vec3& point)
{
    return scanner.number(point[0]) && scanner.number(point[1]) && scanner.number(point[2]);
}

/// Takes the triangles of a facet: the corners of an outer loop, which are three in proper files.
void finishFacet(Solid& solid, const osg::Vec3& given, std::vector<osg::Vec3>& corners)
{
    for (std::size_t i = 2; i < corners.size(); ++i) {
        const osg::Vec3 normal = normalOf(given, corners[0], corners[i - 1], corners[i]);
        for (const std::size_t corner : {std::size_t(0), i - 1, i}) {
            solid.points->push_back(corners[corner]);
            solid.normals->push_back(normal);
        }
    }
    corners.clear();
}

/// Takes the facets of a text wherever they stand: words in any capitals, in lines of any kind.
class TextParser
{
public:
    explicit TextParser(std::string_view text) : m_scanner(text), m_size(text.size()) {}

    std::vector<Solid> parse()
    {
        std::size_t nextReport = 0;
        while (!m_scanner.isAtEnd()) {
            if (m_scanner.passed() >= nextReport) {
                ReadProgress::tell(m_scanner.passed(), m_size);
                nextReport = m_scanner.passed() + bytesBetweenReports;
            }
            const std::string_view word = m_scanner.word();
            if (word.empty())
                m_scanner.nextLine();
            else
                take(word);
        }
        if (m_corners.size() >= 3)
            finishFacet(solid(), m_normal, m_corners);
        return std::move(m_solids);
    }

    /// @return whether the last solid is closed
    bool isWhole() const { return m_isClosed; }

private:
    void take(std::string_view word)
    {
        if (isStlWord(word, "vertex")) {
            osg::Vec3 point;
            if (readPoint(m_scanner, point))
                m_corners.push_back(point);
        } else if (isStlWord(word, "facet")) {
            m_normal.set(0, 0, 0);
        } else if (isStlWord(word, "normal")) {
            readPoint(m_scanner, m_normal);
        } else if (isStlWord(word, "endloop") || isStlWord(word, "endfacet")) {
            if (m_corners.size() >= 3)
                finishFacet(solid(), m_normal, m_corners);
            m_corners.clear();
        } else if (isStlWord(word, "solid")) {
            m_solids.emplace_back();
            m_solids.back().name = takeName();
            m_isClosed = false;
        } else if (isStlWord(word, "endsolid")) {
            takeName();
            m_isClosed = true;
        }
    }

    /// @return the rest of the line, without what follows in files of one line
    std::string takeName()
    {
        std::string name;
        while (m_scanner.hasWord()) {
            TextScanner ahead = m_scanner;
            const std::string_view word = ahead.word();
            if (isStlWord(word, "facet") || isStlWord(word, "endsolid") || isStlWord(word, "solid"))
                break;
            name += (name.empty() ? "" : " ") + std::string(word);
            m_scanner = ahead;
        }
        return name;
    }

    Solid& solid()
    {
        if (m_solids.empty())
            m_solids.emplace_back();
        return m_solids.back();
    }

    TextScanner m_scanner;
    std::size_t m_size;
    std::vector<Solid> m_solids;
    osg::Vec3 m_normal;
    std::vector<osg::Vec3> m_corners;
    bool m_isClosed = true;
};

} // namespace

ReadOutcome readStl(const std::string& path)
{
    ReadOutcome outcome;
    const MappedFile file(path);
    const std::string_view text = file.text();
    const osg::ref_ptr<osg::Group> root = new osg::Group;
    std::vector<Solid> solids;
    if (isStlText(text)) {
        const PlainText plainText(text);
        TextParser parser(plainText.text());
        solids = parser.parse();
        if (!parser.isWhole())
            outcome.warnings.emplace_back("the file ends before its \"endsolid\"");
    } else if (text.size() >= headerSize) {
        solids.push_back(parseNumbers(text));
    }
    for (const Solid& solid : solids) {
        if (!solid.points->empty())
            root->addChild(makeNode(solid));
    }
    if (root->getNumChildren() > 0)
        outcome.scene = root;
    else
        outcome.reason = solids.empty() ? "the file is damaged, or not of the format that its name says"
                                        : "there is nothing in it that could be shown";
    return outcome;
}

} // namespace vfFormats
