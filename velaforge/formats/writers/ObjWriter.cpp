// SPDX-License-Identifier: MIT
#include <velaforge/formats/writers/ObjWriter.h>

#include <velaforge/formats/FormatCode.h>
#include <velaforge/formats/internal/CheckedFile.h>
#include <velaforge/formats/internal/PlainText.h>
#include <velaforge/formats/internal/PrimitiveWalk.h>
#include <velaforge/formats/internal/SideNames.h>
#include <velaforge/formats/internal/VertexArray.h>
#include <velaforge/formats/writers/ModelParts.h>
#include <velaforge/formats/writers/UniqueNames.h>
#include <velaforge/formats/writers/UsedVertices.h>

#include <osg/Geometry>
#include <osg/Image>
#include <osg/Material>
#include <osg/TexMat>
#include <osg/Texture>
#include <osgDB/FileNameUtils>

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace vfFormats {

namespace {

/// The highest shininess in OpenGL, and in the format.
constexpr float highestShininess = 128;
constexpr float highestExponent = 1000;

/// The materials of a file, in the order in which they are used.
class Materials
{
public:
    /// @return the name of the material
    const std::string& find(const Appearance& look)
    {
        const auto [entry, isNew] = m_names.try_emplace(look);
        if (isNew) {
            std::string name = look.material ? look.material->getName() : std::string();
            std::replace(name.begin(), name.end(), ' ', '_');
            name = lineOf(name);
            entry->second = m_unique.add(name.empty() ? "material" : name);
            m_order.push_back(&*entry);
        }
        return entry->second;
    }

    void write(CheckedFile& file) const
    {
        for (const auto* entry : m_order)
            write(file, entry->first, entry->second);
    }

private:
    static void write(CheckedFile& file, const Appearance& look, const std::string& name)
    {
        file.write("newmtl " + name + "\n");
        osg::Vec4 diffuse(1, 1, 1, 1);
        if (const osg::Material* material = look.material) {
            constexpr auto front = osg::Material::FRONT;
            diffuse = material->getDiffuse(front);
            writeColor(file, "Ka", material->getAmbient(front));
            writeColor(file, "Kd", diffuse);
            writeColor(file, "Ks", material->getSpecular(front));
            writeColor(file, "Ke", material->getEmission(front));
            file.write("Ns ");
            file.write(material->getShininess(front) / highestShininess * highestExponent);
            file.write("\n");
        } else if (look.image()) {
            writeColor(file, "Kd", diffuse);
        } else { // as what has no material is shown
            writeColor(file, "Ka", {0.78f, 0.78f, 0.80f, 1});
            writeColor(file, "Kd", {0.78f, 0.78f, 0.80f, 1});
        }
        file.write("d ");
        file.write(diffuse.a());
        file.write("\n");
        if (look.image() && !look.image()->getFileName().empty())
            writeMap(file, look);
        file.write("\n");
    }

    static void writeColor(CheckedFile& file, const char* word, const osg::Vec4& color)
    {
        file.write(word);
        for (int i = 0; i < 3; ++i) {
            file.write(" ");
            file.write(std::isfinite(color[i]) ? color[i] : 0.0f);
        }
        file.write("\n");
    }

    static void writeMap(CheckedFile& file, const Appearance& look)
    {
        file.write("map_Kd ");
        if (look.placement) {
            const osg::Matrixd& matrix = look.placement->getMatrix();
            writeOption(file, "-s", matrix(0, 0), matrix(1, 1), matrix(2, 2));
            writeOption(file, "-o", matrix(3, 0), matrix(3, 1), matrix(3, 2));
        }
        const osg::Texture::WrapMode wrap = look.texture->getWrap(osg::Texture::WRAP_S);
        if (wrap == osg::Texture::CLAMP || wrap == osg::Texture::CLAMP_TO_EDGE)
            file.write("-clamp on ");
        file.write(lineOf(look.image()->getFileName()) + "\n");
    }

    static void writeOption(CheckedFile& file, const char* option, double x, double y, double z)
    {
        file.write(option);
        for (const double number : {x, y, z}) {
            file.write(" ");
            file.write(static_cast<float>(number));
        }
        file.write(" ");
    }

    std::map<Appearance, std::string> m_names;
    std::vector<const std::pair<const Appearance, std::string>*> m_order;
    UniqueNames m_unique;
};

class Writer
{
public:
    /// @param isColored  whether parts refer to materials
    Writer(CheckedFile& file, Materials& materials, bool isColored)
        : m_file(file), m_materials(materials), m_isColored(isColored)
    {}

    void write(const ModelPart& part)
    {
        const VertexArray vertices(part.geometry->getVertexArray());
        const std::string name = lineOf(part.name);
        m_file.write("o " + m_names.add(name.empty() ? "part" : name) + "\n");
        if (m_isColored)
            m_file.write("usemtl " + m_materials.find(part.look) + "\n");
        const UsedVertices used(*part.geometry, vertices.size());
        writeArrays(part, vertices, used);
        for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : part.geometry->getPrimitiveSetList()) {
            walkPrimitives(*primitives,
                           [&](PrimitiveKind kind, const unsigned int* indices, std::size_t count) {
                               writePrimitive(kind, indices, count, vertices.size(), used);
                           });
        }
        m_vertices += used.size();
        m_normals += m_hasNormals ? used.size() : 0;
        m_places += m_hasPlaces ? used.size() : 0;
    }

private:
    /// Writes the vertices that are used, with what belongs to them.
    void writeArrays(const ModelPart& part, const VertexArray& vertices, const UsedVertices& used)
    {
        const osg::Geometry& geometry = *part.geometry;
        const osg::Matrixd inverse = osg::Matrixd::inverse(part.matrix);
        const auto perVertex = [&](const osg::Array* array) {
            return array && array->getBinding() == osg::Array::BIND_PER_VERTEX &&
                   array->getNumElements() >= vertices.size();
        };
        const auto* normals = dynamic_cast<const osg::Vec3Array*>(geometry.getNormalArray());
        const auto* places = dynamic_cast<const osg::Vec2Array*>(geometry.getTexCoordArray(0));
        const bool isOneNormal =
            normals && normals->getBinding() == osg::Array::BIND_OVERALL && !normals->empty();
        m_hasNormals = perVertex(normals) || isOneNormal;
        m_hasPlaces = perVertex(places);
        for (const unsigned int i : used.indices())
            writeVector("v", vertices[i] * part.matrix, 3);
        for (std::size_t i = 0; m_hasNormals && i < used.size(); ++i) {
            osg::Vec3d normal =
                osg::Matrixd::transform3x3(inverse, (*normals)[isOneNormal ? 0 : used.indices()[i]]);
            normal.normalize();
            writeVector("vn", normal, 3);
        }
        for (std::size_t i = 0; m_hasPlaces && i < used.size(); ++i) {
            const osg::Vec2& place = (*places)[used.indices()[i]];
            writeVector("vt", osg::Vec3d(static_cast<double>(place.x()), static_cast<double>(place.y()), 0),
                        2);
        }
    }

    void writeVector(const char* word, const osg::Vec3d& vector, int size)
    {
        m_file.write(word);
        for (int i = 0; i < size; ++i) {
            m_file.write(" ", 1);
            const auto number = static_cast<float>(vector[i]);
            m_file.write(std::isfinite(number) ? number : 0.0f);
        }
        m_file.write("\n", 1);
    }

    void writePrimitive(PrimitiveKind kind, const unsigned int* indices, std::size_t count,
                        std::size_t vertices, const UsedVertices& used)
    {
        if (std::any_of(indices, indices + count, [vertices](unsigned int i) { return i >= vertices; }))
            return;
        m_file.write(kind == PrimitiveKind::Point ? "p" : kind == PrimitiveKind::Lines ? "l" : "f", 1);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t number = used.number(indices[i]);
            m_file.write(" ", 1);
            m_file.write(m_vertices + number);
            if (kind != PrimitiveKind::Face)
                continue;
            if (m_hasPlaces || m_hasNormals)
                m_file.write("/", 1);
            if (m_hasPlaces)
                m_file.write(m_places + number);
            if (m_hasNormals) {
                m_file.write("/", 1);
                m_file.write(m_normals + number);
            }
        }
        m_file.write("\n", 1);
    }

    CheckedFile& m_file;
    Materials& m_materials;
    UniqueNames m_names;
    bool m_isColored;
    std::size_t m_vertices = 0; ///< written before this geometry
    std::size_t m_normals = 0;
    std::size_t m_places = 0;
    bool m_hasNormals = false;
    bool m_hasPlaces = false;
};

} // namespace

std::string writeObj(osg::Node& model, const WriteTarget& target)
{
    const std::vector<ModelPart> parts = collectParts(model);
    const bool isColored =
        std::any_of(parts.begin(), parts.end(), [](const ModelPart& part) { return !part.look.isEmpty(); });
    CheckedFile file(target.model);
    Materials materials;
    if (isColored)
        file.write("mtllib " + target.materialsName + "\n");
    Writer writer(file, materials, isColored);
    for (std::size_t i = 0; i < parts.size() && file.isGood(); ++i)
        writer.write(parts[i]);
    std::string reason = file.finish();
    if (!reason.empty() || !isColored)
        return reason;
    CheckedFile materialFile(target.materials);
    materialFile.write(materialsOwner(target.modelName));
    materials.write(materialFile);
    return materialFile.finish();
}

} // namespace vfFormats
