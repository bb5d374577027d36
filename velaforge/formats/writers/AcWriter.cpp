// SPDX-License-Identifier: MIT
#include <velaforge/formats/writers/AcWriter.h>

#include <velaforge/formats/FormatCode.h>
#include <velaforge/formats/internal/CheckedFile.h>
#include <velaforge/formats/internal/PrimitiveWalk.h>
#include <velaforge/formats/internal/VertexArray.h>
#include <velaforge/formats/writers/ModelParts.h>
#include <velaforge/formats/writers/UsedVertices.h>

#include <osg/Geometry>
#include <osg/Image>
#include <osg/Material>
#include <osg/TexMat>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numeric>
#include <vector>

namespace vfFormats {

namespace {

/// Bits of a surface. A face has two sides, since models are shown so.
constexpr const char* smoothFace = "SURF 0x30\n";
constexpr const char* flatFace = "SURF 0x20\n";
constexpr const char* openLine = "SURF 0x22\n";

float finite(double number)
{
    const auto value = static_cast<float>(number);
    return std::isfinite(value) ? value : 0.0f;
}

/// Returns a name between quotation marks, without the characters that would end it.
std::string quoted(std::string name)
{
    std::replace_if(
        name.begin(), name.end(),
        [](unsigned char c) { return c < 0x20 || c == 0x7f || c == '"' || c == '\\'; }, '_');
    return '"' + name + '"';
}

/// The vertices of a geometry as the format has them: without normals, so that those with the same position and the same
/// normal are one, and the faces around it are shaded as one surface.
class Vertices
{
public:
    explicit Vertices(const ModelPart& part)
        : m_array(part.geometry->getVertexArray()), m_used(*part.geometry, m_array.size())
    {
        const auto* normals = dynamic_cast<const osg::Vec3Array*>(part.geometry->getNormalArray());
        m_hasNormals = normals && normals->getBinding() == osg::Array::BIND_PER_VERTEX &&
                       normals->size() >= m_array.size();
        for (const unsigned int i : m_used.indices()) {
            const osg::Vec3d position = m_array[i] * part.matrix;
            const osg::Vec3 normal = m_hasNormals ? (*normals)[i] : osg::Vec3();
            m_keys.push_back({finite(position.x()), finite(position.y()), finite(position.z()),
                              finite(double(normal.x())), finite(double(normal.y())),
                              finite(double(normal.z()))});
        }
        merge();
    }

    /// Returns the number of a vertex in the file, from 0.
    std::size_t number(unsigned int index) const { return m_numbers[m_used.number(index) - 1]; }

    /// Returns whether the normals at the corners of a face differ.
    bool isSmooth(const unsigned int* indices, std::size_t count) const
    {
        const auto normal = [&](std::size_t i) {
            const Key& key = m_keys[m_used.number(indices[i]) - 1];
            return osg::Vec3(key[3], key[4], key[5]);
        };
        for (std::size_t i = 1; m_hasNormals && i < count; ++i) {
            if ((normal(i) - normal(0)).length() > 1e-3f)
                return true;
        }
        return false;
    }

    void write(CheckedFile& file) const
    {
        file.write("numvert ");
        file.write(m_written.size());
        for (const std::size_t i : m_written) {
            for (std::size_t k = 0; k < 3; ++k) {
                file.write(k == 0 ? "\n" : " ", 1);
                file.write(m_keys[i][k]);
            }
        }
        file.write("\n", 1);
    }

private:
    using Key = std::array<float, 6>; ///< position and normal

    void merge()
    {
        std::vector<std::size_t> sorted(m_keys.size());
        std::iota(sorted.begin(), sorted.end(), std::size_t(0));
        if (m_hasNormals)
            std::stable_sort(sorted.begin(), sorted.end(),
                             [this](std::size_t a, std::size_t b) { return m_keys[a] < m_keys[b]; });
        m_numbers.resize(m_keys.size());
        std::vector<std::size_t> first(m_keys.size()); // the first vertex that is equal
        for (std::size_t i = 0; i < sorted.size(); ++i) {
            const bool isEqual = m_hasNormals && i > 0 && m_keys[sorted[i]] == m_keys[sorted[i - 1]];
            first[sorted[i]] = isEqual ? first[sorted[i - 1]] : sorted[i];
        }
        for (std::size_t i = 0; i < first.size(); ++i) {
            if (first[i] == i) {
                m_numbers[i] = m_written.size();
                m_written.push_back(i);
            } else {
                m_numbers[i] = m_numbers[first[i]];
            }
        }
    }

    VertexArray m_array;
    UsedVertices m_used;
    bool m_hasNormals = false;
    std::vector<Key> m_keys;            ///< of the used vertices
    std::vector<std::size_t> m_numbers; ///< in the file, of each of them
    std::vector<std::size_t> m_written; ///< those of them that are written
};

class Writer
{
public:
    explicit Writer(CheckedFile& file) : m_file(file) {}

    void write(const std::vector<ModelPart>& parts)
    {
        m_file.write("AC3Db\n");
        for (const ModelPart& part : parts)
            writeMaterial(part.look.material, part.look.image());
        std::size_t objects = 0;
        for (const ModelPart& part : parts)
            objects += countSurfaces(part) > 0 ? 1 : 0;
        m_file.write("OBJECT world\nkids ");
        m_file.write(objects);
        m_file.write("\n", 1);
        for (const ModelPart& part : parts)
            writeObject(part);
    }

private:
    /// Writes a material once. Without one and without an image, the colour in which such parts are shown.
    void writeMaterial(const osg::Material* material, const osg::Image* image)
    {
        const bool isPlain = !material && !image;
        if (!m_materials.emplace(std::make_pair(material, isPlain), m_materials.size()).second)
            return;
        constexpr auto front = osg::Material::FRONT;
        const osg::Vec4 plain = isPlain ? osg::Vec4(0.78f, 0.78f, 0.80f, 1) : osg::Vec4(1, 1, 1, 1);
        const osg::Vec4 black(0, 0, 0, 1);
        const osg::Vec4 diffuse = material ? material->getDiffuse(front) : plain;
        m_file.write("MATERIAL " + quoted(material ? material->getName() : std::string()));
        writeColor(" rgb", diffuse);
        writeColor(" amb", material ? material->getAmbient(front) : plain);
        writeColor(" emis", material ? material->getEmission(front) : black);
        writeColor(" spec", material ? material->getSpecular(front) : black);
        m_file.write(" shi ");
        m_file.write(static_cast<std::size_t>(
            material ? std::lround(std::clamp(material->getShininess(front), 0.0f, 128.0f)) : 0));
        m_file.write(" trans ");
        m_file.write(1 - std::clamp(finite(double(diffuse.a())), 0.0f, 1.0f));
        m_file.write("\n", 1);
    }

    void writeColor(const char* word, const osg::Vec4& color)
    {
        m_file.write(word);
        for (int i = 0; i < 3; ++i) {
            m_file.write(" ", 1);
            m_file.write(finite(double(color[i])));
        }
    }

    /// Calls @p work for each line and each face with (bool isLine, indices, count).
    template <class Work>
    static void walkSurfaces(const ModelPart& part, Work work)
    {
        const std::size_t size = VertexArray(part.geometry->getVertexArray()).size();
        for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : part.geometry->getPrimitiveSetList()) {
            walkPrimitives(
                *primitives, [&](PrimitiveKind kind, const unsigned int* indices, std::size_t count) {
                    const bool isSound =
                        std::all_of(indices, indices + count, [size](unsigned int i) { return i < size; });
                    if (kind != PrimitiveKind::Point && isSound)
                        work(kind == PrimitiveKind::Lines, indices, count);
                });
        }
    }

    static std::size_t countSurfaces(const ModelPart& part)
    {
        std::size_t surfaces = 0;
        walkSurfaces(part, [&](bool, const unsigned int*, std::size_t) { ++surfaces; });
        return surfaces;
    }

    void writeObject(const ModelPart& part)
    {
        const std::size_t surfaces = countSurfaces(part);
        if (surfaces == 0 || !m_file.isGood())
            return;
        const Vertices vertices(part);
        m_file.write("OBJECT poly\nname " + quoted(part.name) + "\n");
        const osg::Image* image = part.look.image();
        if (image && !image->getFileName().empty())
            m_file.write("texture \"" + image->getFileName() + "\"\n");
        m_file.write("crease 180\n"); // edges have vertices of their own
        vertices.write(m_file);
        m_file.write("numsurf ");
        m_file.write(surfaces);
        m_file.write("\n", 1);
        const std::size_t material = m_materials.at({part.look.material, part.look.isEmpty()});
        walkSurfaces(part, [&](bool isLine, const unsigned int* indices, std::size_t count) {
            m_file.write(isLine ? openLine : vertices.isSmooth(indices, count) ? smoothFace : flatFace);
            m_file.write("mat ", 4);
            m_file.write(material);
            m_file.write("\nrefs ", 6);
            m_file.write(count);
            for (std::size_t i = 0; i < count; ++i) {
                m_file.write("\n", 1);
                m_file.write(vertices.number(indices[i]));
                writeTextureCoordinates(part, indices[i]);
            }
            m_file.write("\n", 1);
        });
        m_file.write("kids 0\n");
    }

    void writeTextureCoordinates(const ModelPart& part, unsigned int index)
    {
        const auto* places = dynamic_cast<const osg::Vec2Array*>(part.geometry->getTexCoordArray(0));
        osg::Vec3d place;
        if (places && index < places->size())
            place.set(double((*places)[index].x()), double((*places)[index].y()), 0);
        if (part.look.placement)
            place = place * part.look.placement->getMatrix();
        for (int i = 0; i < 2; ++i) {
            m_file.write(" ", 1);
            m_file.write(finite(place[i]));
        }
    }

    CheckedFile& m_file;
    std::map<std::pair<const osg::Material*, bool>, std::size_t> m_materials; ///< with their numbers
};

} // namespace

std::string writeAc(osg::Node& model, const WriteTarget& target)
{
    CheckedFile file(target.model);
    Writer(file).write(collectParts(model));
    return file.finish();
}

} // namespace vfFormats
