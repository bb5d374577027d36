// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace vfTest {

inline std::string base64(const std::string& bytes)
{
    static const char letters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group = group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0u);
        for (std::size_t k = 0; k < 4; ++k)
            text += i + k <= bytes.size() ? letters[group >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

/// @return the bytes of numbers as they stand in memory
template <class Number>
std::string bytesOf(const std::vector<Number>& values)
{
    return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(Number)};
}

/// A glTF file with one mesh of one primitive, put together as text.
class Gltf
{
public:
    /// @param kind   5120 for bytes, 5121, 5122, 5123 for the further integers, 5126 for floats
    /// @param more   further members of the accessor, each with a comma before it
    Gltf& attribute(const std::string& name, int kind, const std::string& type, std::size_t count,
                    const std::string& bytes, const std::string& more = "", int stride = 0)
    {
        while (m_data.size() % 4 != 0)
            m_data += '\0';
        const std::string number = std::to_string(m_count++);
        m_views += (m_views.empty() ? "" : ",") + std::string(R"({"buffer":0,"byteOffset":)") +
                   std::to_string(m_data.size()) + R"(,"byteLength":)" + std::to_string(bytes.size()) +
                   (stride > 0 ? R"(,"byteStride":)" + std::to_string(stride) : "") + "}";
        m_accessors += (m_accessors.empty() ? "" : ",") + std::string(R"({"bufferView":)") + number +
                       R"(,"componentType":)" + std::to_string(kind) + R"(,"count":)" +
                       std::to_string(count) + R"(,"type":")" + type + "\"" + more + "}";
        m_attributes += (m_attributes.empty() ? "\"" : ",\"") + name + "\":" + number;
        m_data += bytes;
        return *this;
    }

    /// Floats. @param parts  of each element
    Gltf& floats(const std::string& name, int parts, const std::vector<float>& values)
    {
        return attribute(name, 5126, "VEC" + std::to_string(parts),
                         values.size() / static_cast<std::size_t>(parts), bytesOf(values));
    }

    /// @param text  the members of the material
    Gltf& material(const std::string& text)
    {
        m_materials += (m_materials.empty() ? "{" : ",{") + text + "}";
        return *this;
    }

    /// @param text  further members of the primitive, with a comma before each
    Gltf& primitive(const std::string& text)
    {
        m_primitive += text;
        return *this;
    }

    /// @param text  further members of the file, with a comma before each
    Gltf& more(const std::string& text)
    {
        m_more += text;
        return *this;
    }

    /// @param text  the nodes; one with the mesh where this is not called
    Gltf& nodes(const std::string& text, const std::string& inScene)
    {
        m_nodes = text;
        m_inScene = inScene;
        return *this;
    }

    std::string text() const
    {
        return json(R"(,"uri":"data:application/octet-stream;base64,)" + base64(m_data) + "\"");
    }

    /// @return the same with its numbers in a file of its own. @param address  where that is
    std::string textBeside(const std::string& address) const { return json(R"(,"uri":")" + address + "\""); }
    const std::string& data() const { return m_data; }

    /// @return the same in the binary form
    std::string binary() const
    {
        std::string head = json("");
        std::string body = m_data;
        head.resize((head.size() + 3) / 4 * 4, ' ');
        body.resize((body.size() + 3) / 4 * 4, '\0');
        const auto number = [](std::size_t value) {
            return bytesOf(std::vector<std::uint32_t>{static_cast<std::uint32_t>(value)});
        };
        return "glTF" + number(2) + number(28 + head.size() + body.size()) + number(head.size()) + "JSON" +
               head + number(body.size()) + std::string("BIN\0", 4) + body;
    }

private:
    std::string json(const std::string& buffer) const
    {
        return R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[)" + m_inScene +
               R"(]}],"nodes":[)" + m_nodes + R"(],"meshes":[{"primitives":[{"attributes":{)" + m_attributes +
               "}" + (m_materials.empty() ? "" : R"(,"material":0)") + m_primitive + "}]}]" +
               (m_materials.empty() ? "" : R"(,"materials":[)" + m_materials + "]") + R"(,"accessors":[)" +
               m_accessors + R"(],"bufferViews":[)" + m_views + R"(],"buffers":[{"byteLength":)" +
               std::to_string(m_data.size()) + buffer + "}]" + m_more + "}";
    }

    std::string m_data;
    int m_count = 0;
    std::string m_views;
    std::string m_accessors;
    std::string m_attributes;
    std::string m_materials;
    std::string m_primitive;
    std::string m_more;
    std::string m_nodes = R"({"mesh":0})";
    std::string m_inScene = "0";
};

/// @return a unit square of two triangles that faces z, as positions
inline std::vector<float> squarePoints()
{
    return {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 0, 0, 1, 1, 0, 0, 1, 0};
}

/// @return its texture coordinates, from the top down as the format has them
inline std::vector<float> squarePlaces()
{
    return {0, 1, 1, 1, 1, 0, 0, 1, 1, 0, 0, 0};
}

} // namespace vfTest
