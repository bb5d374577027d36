// SPDX-License-Identifier: MIT
#include <velaforge/formats/writers/DxfWriter.h>

#include <velaforge/formats/FormatCode.h>
#include <velaforge/formats/internal/CheckedFile.h>
#include <velaforge/formats/internal/PlainText.h>
#include <velaforge/formats/writers/ModelParts.h>
#include <velaforge/formats/writers/TriangleWalk.h>
#include <velaforge/formats/writers/UniqueNames.h>

#include <osg/Material>
#include <osg/Vec3>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace vfFormats {

namespace {

/// The colours of the format by their numbers: from 10 to 249 two saturations of five values of 24 hues, then greys.
std::array<osg::Vec3, 256> makePalette()
{
    constexpr float values[] = {1, 0.65f, 0.5f, 0.3f, 0.15f};
    std::array<osg::Vec3, 256> palette;
    for (unsigned int number = 10; number < 250; ++number) {
        const float hue = static_cast<float>(number / 10 - 1) / 4; // of six
        const float value = values[number % 10 / 2];
        const float least = number % 2 == 0 ? 0 : value / 2;
        for (unsigned int i = 0; i < 3; ++i) {
            const float distance = std::abs(std::fmod(hue + 6 - 2 * static_cast<float>(i) + 3, 6.0f) - 3);
            palette[number][static_cast<int>(i)] =
                least + (value - least) * std::clamp(2 - distance, 0.0f, 1.0f);
        }
    }
    for (unsigned int number = 250; number < 256; ++number) {
        const float grey = 0.2f + 0.16f * static_cast<float>(number - 250);
        palette[number].set(grey, grey, grey);
    }
    return palette;
}

/// Returns the number of the colour that is nearest to that of a material.
std::size_t colorNumber(const osg::Material* material)
{
    static const std::array<osg::Vec3, 256> palette = makePalette();
    const osg::Vec4 diffuse =
        material ? material->getDiffuse(osg::Material::FRONT) : osg::Vec4(0.78f, 0.78f, 0.80f, 1);
    const osg::Vec3 color(diffuse.r(), diffuse.g(), diffuse.b());
    const auto nearest =
        std::min_element(palette.begin() + 10, palette.end(), [&](const osg::Vec3& a, const osg::Vec3& b) {
            return (a - color).length2() < (b - color).length2();
        });
    return static_cast<std::size_t>(nearest - palette.begin());
}

/// Returns a name of letters, digits, "$", "-" and "_", which are those that the format has.
std::string layerName(const std::string& name)
{
    std::string layer = lineOf(name);
    std::replace_if(
        layer.begin(), layer.end(),
        [](unsigned char c) {
            return !(c >= '0' && c <= '9') && !(c >= 'A' && c <= 'Z') && !(c >= 'a' && c <= 'z') &&
                   c != '$' && c != '-' && c != '_';
        },
        '_');
    return layer.empty() ? "part" : layer;
}

struct Layer
{
    ModelPart part;
    std::string name;
    std::size_t color;
};

class Writer
{
public:
    explicit Writer(CheckedFile& file) : m_file(file) {}

    void write(const std::vector<Layer>& layers)
    {
        m_file.write("0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n"
                     "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n");
        m_file.write(layers.size());
        for (const Layer& layer : layers) {
            m_file.write("\n0\nLAYER\n2\n" + layer.name + "\n70\n0\n62\n");
            m_file.write(layer.color);
            m_file.write("\n6\nCONTINUOUS");
        }
        m_file.write("\n0\nENDTAB\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n");
        for (std::size_t i = 0; i < layers.size() && m_file.isGood(); ++i)
            writeFaces(layers[i]);
        m_file.write("0\nENDSEC\n0\nEOF\n");
    }

private:
    void writeFaces(const Layer& layer)
    {
        const std::string start =
            "0\n3DFACE\n8\n" + layer.name + "\n62\n" + std::to_string(layer.color) + "\n";
        walkTriangles(layer.part, [&](const osg::Vec3d& a, const osg::Vec3d& b, const osg::Vec3d& c) {
            m_file.write(start);
            writeCorner('0', a);
            writeCorner('1', b);
            writeCorner('2', c);
            writeCorner('3', c); // a face has four corners; in a triangle the last two are equal
        });
    }

    /// Writes the coordinates of a corner: groups 10, 20, 30 for the first, 11, 21, 31 for the second and so on.
    void writeCorner(char corner, const osg::Vec3d& position)
    {
        for (int axis = 0; axis < 3; ++axis) {
            const char group[] = {static_cast<char>('1' + axis), corner, '\n'};
            m_file.write(group, sizeof(group));
            const auto number = static_cast<float>(position[axis]);
            m_file.write(std::isfinite(number) ? number : 0.0f);
            m_file.write("\n", 1);
        }
    }

    CheckedFile& m_file;
};

} // namespace

std::string writeDxf(osg::Node& model, const WriteTarget& target)
{
    UniqueNames names;
    std::vector<Layer> layers;
    for (const ModelPart& part : collectParts(model))
        layers.push_back({part, names.add(layerName(part.name)), colorNumber(part.look.material)});
    CheckedFile file(target.model);
    Writer(file).write(layers);
    return file.finish();
}

} // namespace vfFormats
