// SPDX-License-Identifier: MIT
#include "writing/ObjWriter.h"

#include "writing/CheckedFile.h"
#include "writing/PrimitiveWalk.h"
#include "writing/VertexArray.h"

#include <osg/Geometry>
#include <osg/Image>
#include <osg/Material>
#include <osg/NodeVisitor>
#include <osg/TexMat>
#include <osg/Texture>
#include <osg/Transform>
#include <osgDB/FileNameUtils>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <tuple>
#include <vector>

namespace vfViewer {

namespace {

/// The highest shininess in OpenGL, and in the format.
constexpr float highestShininess = 128;
constexpr float highestExponent = 1000;

/// The name of a part as it can stand on a line.
std::string lineOf(const std::string& name)
{
    std::string line = name;
    std::replace_if(
        line.begin(), line.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, '_');
    const std::size_t first = line.find_first_not_of(' ');
    const std::size_t last = line.find_last_not_of(' ');
    return first == std::string::npos ? std::string() : line.substr(first, last - first + 1);
}

/// Gives each of several things a name of its own.
class Names
{
public:
    std::string add(const std::string& wanted)
    {
        std::string name = wanted;
        for (std::size_t& number = m_next[wanted]; !m_taken.insert(name).second;)
            name = wanted + "_" + std::to_string(++number);
        return name;
    }

private:
    std::set<std::string> m_taken;
    std::map<std::string, std::size_t> m_next;
};

/// What colours a part.
class Look
{
public:
    const osg::Material* material = nullptr;
    const osg::Texture* texture = nullptr;
    const osg::TexMat* place = nullptr;

    bool isEmpty() const { return !material && !image(); }
    const osg::Image* image() const
    {
        return texture && texture->getNumImages() > 0 ? texture->getImage(0) : nullptr;
    }
    bool operator<(const Look& other) const
    {
        return std::tie(material, texture, place) < std::tie(other.material, other.texture, other.place);
    }

    void take(const osg::StateSet* state)
    {
        if (!state)
            return;
        m_material.take(state->getAttributePair(osg::StateAttribute::MATERIAL), material);
        m_texture.take(state->getTextureAttributePair(0, osg::StateAttribute::TEXTURE), texture);
        m_place.take(state->getTextureAttributePair(0, osg::StateAttribute::TEXMAT), place);
    }

private:
    /// Whether what is below an attribute of a kind must not replace it.
    struct Forced
    {
        template <class Kind>
        void take(const osg::StateSet::RefAttributePair* pair, const Kind*& taken)
        {
            const auto* own = pair ? dynamic_cast<const Kind*>(pair->first.get()) : nullptr;
            if (!own || (isForced && !(pair->second & osg::StateAttribute::PROTECTED)))
                return;
            taken = own;
            isForced = (pair->second & osg::StateAttribute::OVERRIDE) != 0;
        }
        bool isForced = false;
    };

    Forced m_material;
    Forced m_texture;
    Forced m_place;
};

/// The materials of a file, in the order in which they are used.
class Materials
{
public:
    /// @return the name of a look
    const std::string& find(const Look& look)
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
    static void write(CheckedFile& file, const Look& look, const std::string& name)
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

    static void writeMap(CheckedFile& file, const Look& look)
    {
        file.write("map_Kd ");
        if (look.place) {
            const osg::Matrixd& matrix = look.place->getMatrix();
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

    std::map<Look, std::string> m_names;
    std::vector<const std::pair<const Look, std::string>*> m_order;
    Names m_unique;
};

class Writer : public osg::NodeVisitor
{
public:
    Writer(CheckedFile& file, Materials& materials)
        : NodeVisitor(TRAVERSE_ALL_CHILDREN), m_file(file), m_materials(materials)
    {
        setNodeMaskOverride(~0u);
    }

    void apply(osg::Node& node) override
    {
        const Look above = m_look;
        const std::string nameAbove = m_name;
        m_look.take(node.getStateSet());
        if (!node.getName().empty())
            m_name = node.getName();
        traverse(node);
        m_look = above;
        m_name = nameAbove;
    }

    void apply(osg::Geometry& geometry) override
    {
        const VertexArray vertices(geometry.getVertexArray());
        if (vertices.size() == 0 || geometry.getNumPrimitiveSets() == 0 || !m_file.isGood())
            return;
        Look look = m_look;
        look.take(geometry.getStateSet());
        // Within a part of a name that its geometries do not have themselves, they are told apart by it.
        const std::string name = lineOf(m_name.empty() ? geometry.getName() : m_name);
        m_file.write("o " + m_names.add(name.empty() ? "part" : name) + "\n");
        if (!look.isEmpty() || m_isColored) {
            m_file.write("usemtl " + m_materials.find(look) + "\n");
            m_isColored = true;
        }
        writeArrays(geometry, vertices);
        for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList()) {
            walkPrimitives(*primitives,
                           [&](PrimitiveKind kind, const unsigned int* indices, std::size_t count) {
                               writePrimitive(kind, indices, count, vertices.size());
                           });
        }
        m_vertices += m_used;
        m_normals += m_hasNormals ? m_used : 0;
        m_places += m_hasPlaces ? m_used : 0;
    }

private:
    /// Writes the vertices that are used, with what belongs to them.
    void writeArrays(const osg::Geometry& geometry, const VertexArray& vertices)
    {
        number(geometry, vertices.size());
        const osg::Matrixd matrix = osg::computeLocalToWorld(getNodePath());
        const osg::Matrixd inverse = osg::Matrixd::inverse(matrix);
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
        for (const unsigned int i : m_order)
            writeVector("v", vertices[i] * matrix, 3);
        for (std::size_t i = 0; m_hasNormals && i < m_order.size(); ++i) {
            osg::Vec3d normal = osg::Matrixd::transform3x3(inverse, (*normals)[isOneNormal ? 0 : m_order[i]]);
            normal.normalize();
            writeVector("vn", normal, 3);
        }
        for (std::size_t i = 0; m_hasPlaces && i < m_order.size(); ++i) {
            const osg::Vec2& place = (*places)[m_order[i]];
            writeVector("vt", osg::Vec3d(static_cast<double>(place.x()), static_cast<double>(place.y()), 0),
                        2);
        }
    }

    /// Numbers the vertices that are used, in the order of the array.
    void number(const osg::Geometry& geometry, std::size_t count)
    {
        m_number.assign(count, 0);
        for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList()) {
            walkPrimitives(*primitives, [&](PrimitiveKind, const unsigned int* indices, std::size_t size) {
                for (std::size_t i = 0; i < size; ++i) {
                    if (indices[i] < count)
                        m_number[indices[i]] = 1;
                }
            });
        }
        m_used = 0;
        m_order.clear();
        for (std::size_t i = 0; i < count; ++i) {
            if (m_number[i] == 0)
                continue;
            m_number[i] = ++m_used;
            m_order.push_back(static_cast<unsigned int>(i));
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
                        std::size_t vertices)
    {
        if (std::any_of(indices, indices + count, [vertices](unsigned int i) { return i >= vertices; }))
            return;
        m_file.write(kind == PrimitiveKind::Point ? "p" : kind == PrimitiveKind::Lines ? "l" : "f", 1);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t number = m_number[indices[i]];
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
    Names m_names;
    Look m_look;
    std::string m_name;
    bool m_isColored = false;
    std::size_t m_vertices = 0; ///< written before this geometry
    std::size_t m_normals = 0;
    std::size_t m_places = 0;
    bool m_hasNormals = false;
    bool m_hasPlaces = false;
    std::size_t m_used = 0;
    std::vector<std::size_t> m_number; ///< of each vertex, from 1; 0 for one that is not used
    std::vector<unsigned int> m_order; ///< the vertices that are used
};

/// @return whether anything of a model has a material or a texture
bool hasLooks(osg::Node& model)
{
    struct Find : osg::NodeVisitor
    {
        Find() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }
        void apply(osg::Node& node) override
        {
            look.take(node.getStateSet());
            traverse(node);
        }
        Look look;
    } find;
    model.accept(find);
    return !find.look.isEmpty();
}

} // namespace

std::string materialsOwner(const std::string& modelName)
{
    return "# materials of " + lineOf(modelName) + ", written by vfviewer\n";
}

std::string writeObj(osg::Node& model, const std::string& path, const std::string& materialPath,
                     const std::string& owner)
{
    const bool isColored = hasLooks(model);
    CheckedFile file(path);
    Materials materials;
    if (isColored)
        file.write("mtllib " + osgDB::getSimpleFileName(materialPath) + "\n");
    Writer writer(file, materials);
    model.accept(writer);
    std::string reason = file.finish();
    if (!reason.empty() || !isColored)
        return reason;
    CheckedFile materialFile(materialPath);
    materialFile.write(materialsOwner(owner));
    materials.write(materialFile);
    return materialFile.finish();
}

} // namespace vfViewer
