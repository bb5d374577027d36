// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/assimp/GltfFile.h>

#include <velaforge/formats/readers/FileGate.h>
#include <velaforge/formats/readers/MappedFile.h>
#include <velaforge/formats/readers/SideFiles.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <optional>
#include <set>

namespace vfFormats {

namespace {

using Json = nlohmann::json;

/// Nothing in such a file is nested deeper; what is deeper is left out.
constexpr int deepest = 64;

constexpr const char* modelName = "vfviewer-model.gltf";
constexpr const char* embeddedName = "vfviewer-embedded.bin";
constexpr const char* convertedName = "vfviewer-converted.bin";

enum ComponentType : int
{
    Byte = 5120,
    UnsignedByte = 5121,
    Short = 5122,
    UnsignedShort = 5123,
    UnsignedInt = 5125,
    Float = 5126
};

std::uint32_t numberAt(std::string_view bytes, std::size_t at)
{
    std::uint32_t number = 0;
    if (at + sizeof(number) <= bytes.size())
        std::memcpy(&number, bytes.data() + at, sizeof(number));
    return number;
}

/// The two parts of a file, the second of which only the binary form has.
struct Chunks
{
    std::string_view json;
    std::string_view binary;
    bool isBinary = false;
};

Chunks chunksOf(std::string_view file)
{
    constexpr std::uint32_t jsonKind = 0x4e4f534a;
    constexpr std::uint32_t binaryKind = 0x004e4942;
    Chunks chunks;
    chunks.isBinary = file.substr(0, 4) == "glTF";
    if (!chunks.isBinary) {
        chunks.json = file;
        return chunks;
    }
    for (std::size_t at = 12; at + 8 <= file.size();) {
        const std::uint32_t length = numberAt(file, at);
        const std::uint32_t kind = numberAt(file, at + 4);
        const std::string_view body = file.substr(at + 8, length);
        if (kind == jsonKind && chunks.json.empty())
            chunks.json = body;
        else if (kind == binaryKind && chunks.binary.empty())
            chunks.binary = body;
        at += 8 + std::size_t(length);
    }
    return chunks;
}

Json parseJson(std::string_view text)
{
    if (text.substr(0, 3) == "\xef\xbb\xbf")
        text.remove_prefix(3);
    const auto isNotTooDeep = [](int depth, Json::parse_event_t, Json&) { return depth <= deepest; };
    return Json::parse(text.begin(), text.end(), isNotTooDeep, false);
}

// Questions to a value of any kind: what is not there, or is of another kind, is empty.

const Json& at(const Json& value, const char* key)
{
    static const Json none;
    const auto found = value.is_object() ? value.find(key) : value.end();
    return value.is_object() && found != value.end() ? *found : none;
}

const Json& at(const Json& list, std::uint64_t number)
{
    static const Json none;
    return list.is_array() && number < list.size() ? list[static_cast<std::size_t>(number)] : none;
}

std::optional<std::uint64_t> count(const Json& value)
{
    if (value.is_number_unsigned())
        return value.get<std::uint64_t>();
    return std::nullopt;
}

std::string text(const Json& value)
{
    return value.is_string() ? value.get<std::string>() : std::string();
}

std::string decodedBase64(std::string_view text)
{
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t group = 0;
    int bits = 0;
    for (const char letter : text) {
        int value = -1;
        if (letter >= 'A' && letter <= 'Z')
            value = letter - 'A';
        else if (letter >= 'a' && letter <= 'z')
            value = letter - 'a' + 26;
        else if (letter >= '0' && letter <= '9')
            value = letter - '0' + 52;
        else if (letter == '+' || letter == '-')
            value = 62;
        else if (letter == '/' || letter == '_')
            value = 63;
        if (value < 0)
            continue;
        group = (group << 6 | static_cast<std::uint32_t>(value)) & 0xffffff;
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes += static_cast<char>(group >> bits & 0xff);
        }
    }
    return bytes;
}

std::size_t sizeOf(std::uint64_t componentType)
{
    switch (componentType) {
    case Byte:
    case UnsignedByte:
        return 1;
    case Short:
    case UnsignedShort:
        return 2;
    case UnsignedInt:
    case Float:
        return 4;
    default:
        return 0;
    }
}

std::size_t componentsOf(const std::string& type)
{
    static const std::map<std::string, std::size_t> known = {
        {"SCALAR", 1}, {"VEC2", 2}, {"VEC3", 3}, {"VEC4", 4}};
    const auto found = known.find(type);
    return found == known.end() ? 0 : found->second;
}

template <class Number>
float valueOf(const char* bytes, bool isNormalized, float highest)
{
    Number value;
    std::memcpy(&value, bytes, sizeof(value));
    const auto plain = static_cast<float>(value);
    return isNormalized ? std::max(plain / highest, -1.0f) : plain;
}

float componentAt(const char* bytes, std::uint64_t componentType, bool isNormalized)
{
    switch (componentType) {
    case Byte:
        return valueOf<std::int8_t>(bytes, isNormalized, 127);
    case UnsignedByte:
        return valueOf<std::uint8_t>(bytes, isNormalized, 255);
    case Short:
        return valueOf<std::int16_t>(bytes, isNormalized, 32767);
    case UnsignedShort:
        return valueOf<std::uint16_t>(bytes, isNormalized, 65535);
    case UnsignedInt:
        return valueOf<std::uint32_t>(bytes, isNormalized, 4294967295.0f);
    default:
        return valueOf<float>(bytes, false, 1);
    }
}

bool beginsWith(const std::string& text, const char* beginning)
{
    return text.compare(0, std::strlen(beginning), beginning) == 0;
}

} // namespace

/// Works through the file once.
class GltfFile::Parser
{
public:
    Parser(const Chunks& chunks, const std::string& directory, GltfFile& file)
        : m_chunks(chunks), m_directory(directory), m_file(file)
    {}

    bool parse()
    {
        m_root = parseJson(m_chunks.json);
        if (!m_root.is_object() || !beginsWith(text(at(at(m_root, "asset"), "version")), "2"))
            return false;
        noteMissing();
        correctAddresses();
        convertAttributes();
        if (m_isChanged)
            storeReplacements();
        return true;
    }

private:
    const Json& list(const char* name) const
    {
        static const Json none = Json::array();
        const Json& found = at(m_root, name);
        return found.is_array() ? found : none;
    }

    void noteMissing()
    {
        static const std::pair<const char*, const char*> extensions[] = {
            {"KHR_materials_clearcoat", "clear coats"},
            {"KHR_materials_transmission", "light that passes through"},
            {"KHR_materials_volume", "volumes of materials"},
            {"KHR_materials_sheen", "sheen"},
            {"KHR_materials_iridescence", "iridescence"},
            {"KHR_materials_anisotropy", "anisotropy"},
            {"KHR_materials_specular", "specular colours"},
            {"KHR_materials_variants", "variants of materials"},
            {"KHR_texture_basisu", "textures in KTX2"},
            {"EXT_texture_webp", "textures in WebP"},
            {"EXT_mesh_gpu_instancing", "instances"},
            {"EXT_meshopt_compression", "compressed meshes"},
            {"KHR_animation_pointer", "animations of properties"}};
        std::set<std::string> used;
        for (const char* name : {"extensionsUsed", "extensionsRequired"}) {
            for (const Json& extension : list(name))
                used.insert(text(extension));
        }
        for (const auto& [extension, name] : extensions) {
            if (used.count(extension))
                m_file.m_missing.emplace_back(name);
        }
        noteMissingMaps();
        for (const Json& mesh : list("meshes")) {
            for (const Json& primitive : at(mesh, "primitives")) {
                if (at(primitive, "targets").is_array())
                    addMissing("morph targets");
            }
        }
        for (const Json& animation : list("animations")) {
            for (const Json& sampler : at(animation, "samplers")) {
                const std::string way = text(at(sampler, "interpolation"));
                if (way == "STEP" || way == "CUBICSPLINE")
                    addMissing("the steps and splines of animations");
            }
        }
    }

    void noteMissingMaps()
    {
        for (const Json& material : list("materials")) {
            if (at(material, "normalTexture").is_object())
                addMissing("normal maps");
            if (at(material, "occlusionTexture").is_object())
                addMissing("occlusion maps");
            if (at(at(material, "pbrMetallicRoughness"), "metallicRoughnessTexture").is_object())
                addMissing("maps of metal and roughness");
        }
    }

    void addMissing(const std::string& name)
    {
        std::vector<std::string>& missing = m_file.m_missing;
        if (std::find(missing.begin(), missing.end(), name) == missing.end())
            missing.push_back(name);
    }

    /// Assimp takes addresses as they stand there.
    void correctAddresses()
    {
        Json& buffers = m_root["buffers"];
        for (std::size_t i = 0; buffers.is_array() && i < buffers.size(); ++i) {
            const std::string address = text(at(buffers[i], "uri"));
            if (address.empty() || beginsWith(address, "data:"))
                continue;
            const std::string found = SideFiles::find(address, {m_directory});
            const std::string prefix = m_directory + "/";
            if (!beginsWith(found, prefix.c_str()) || found == prefix + address)
                continue;
            buffers[i]["uri"] = found.substr(prefix.size());
            m_isChanged = true;
        }
        if (buffers.is_null())
            m_root.erase("buffers");
    }

    /// Makes floats of the numbers of attributes that are something else, and colours of four parts.
    void convertAttributes()
    {
        for (const Json& mesh : list("meshes")) {
            for (const Json& primitive : at(mesh, "primitives")) {
                if (at(at(primitive, "extensions"), "KHR_draco_mesh_compression").is_object())
                    continue;
                convert(at(primitive, "attributes"));
                for (const Json& target : at(primitive, "targets"))
                    convert(target);
            }
        }
        if (m_converted.empty())
            return;
        m_isChanged = true;
        const std::size_t number = m_root["buffers"].size();
        m_root["buffers"].push_back({{"byteLength", m_converted.size()}, {"uri", convertedName}});
        for (const auto& [accessor, place] : m_done) {
            const auto& [offset, length, parts] = place;
            Json& changed = m_root["accessors"][accessor];
            changed["bufferView"] = m_root["bufferViews"].size();
            changed["byteOffset"] = 0;
            changed["componentType"] = static_cast<int>(Float);
            changed["type"] = "VEC" + std::to_string(parts);
            for (const char* key : {"normalized", "min", "max"})
                changed.erase(key);
            m_root["bufferViews"].push_back(
                {{"buffer", number}, {"byteOffset", offset}, {"byteLength", length}});
        }
        Json& required = m_root["extensionsRequired"];
        if (required.is_array())
            required.erase(std::remove(required.begin(), required.end(), "KHR_mesh_quantization"),
                           required.end());
        else
            m_root.erase("extensionsRequired");
    }

    void convert(const Json& attributes)
    {
        if (!attributes.is_object())
            return;
        for (const auto& [name, value] : attributes.items()) {
            const bool isColor = beginsWith(name, "COLOR_");
            const bool isOther =
                name == "POSITION" || name == "NORMAL" || name == "TANGENT" || beginsWith(name, "TEXCOORD_");
            const std::optional<std::uint64_t> accessor = count(value);
            if (accessor && (isColor || isOther) && !m_done.count(static_cast<std::size_t>(*accessor)))
                convert(static_cast<std::size_t>(*accessor), isColor);
        }
    }

    void convert(std::size_t number, bool isColor)
    {
        const Json& accessor = at(list("accessors"), number);
        const std::uint64_t type = count(at(accessor, "componentType")).value_or(0);
        const std::size_t parts = componentsOf(text(at(accessor, "type")));
        const std::optional<std::uint64_t> view = count(at(accessor, "bufferView"));
        const bool isWhole = type == Float && !(isColor && parts == 3);
        if (isWhole || sizeOf(type) == 0 || parts < 2 || !view || at(accessor, "sparse").is_object())
            return;
        const Json& place = at(list("bufferViews"), *view);
        const std::string_view bytes = buffer(count(at(place, "buffer")).value_or(~0ull));
        const std::uint64_t size = bytes.size();
        const std::uint64_t viewOffset = count(at(place, "byteOffset")).value_or(0);
        const std::uint64_t ownOffset = count(at(accessor, "byteOffset")).value_or(0);
        const std::uint64_t rows = count(at(accessor, "count")).value_or(0);
        const std::uint64_t rowSize = sizeOf(type) * parts;
        const std::uint64_t given = count(at(place, "byteStride")).value_or(0);
        const std::uint64_t stride = given > 0 ? given : rowSize;
        if (rows == 0 || viewOffset > size || ownOffset > size - viewOffset)
            return;
        const std::uint64_t first = viewOffset + ownOffset;
        const std::uint64_t room = size - first;
        if (room < rowSize || stride > size || (rows > 1 && (room - rowSize) / stride < rows - 1))
            return;
        const std::size_t made = isColor ? 4 : parts;
        const bool isNormalized = at(accessor, "normalized") == true || isColor;
        const std::size_t begin = m_converted.size();
        m_converted.resize(begin + rows * made * sizeof(float));
        char* target = m_converted.data() + begin;
        for (std::uint64_t row = 0; row < rows; ++row) {
            const char* source = bytes.data() + first + row * stride;
            for (std::size_t part = 0; part < made; ++part, target += sizeof(float)) {
                const float value =
                    part < parts ? componentAt(source + part * sizeOf(type), type, isNormalized) : 1;
                std::memcpy(target, &value, sizeof(value));
            }
        }
        m_done[number] = {begin, m_converted.size() - begin, made};
    }

    /// @return the bytes of a buffer; empty when there are none
    std::string_view buffer(std::uint64_t number)
    {
        const auto known = m_buffers.find(number);
        if (known != m_buffers.end())
            return known->second.bytes;
        Buffer& made = m_buffers[number];
        const Json& description = at(list("buffers"), number);
        const std::string address = text(at(description, "uri"));
        const std::size_t comma = address.find(',');
        if (address.empty()) {
            made.bytes = number == 0 ? m_chunks.binary : std::string_view();
        } else if (beginsWith(address, "data:")) {
            if (comma != std::string::npos)
                made.decoded = decodedBase64(std::string_view(address).substr(comma + 1));
            made.bytes = made.decoded;
        } else {
            const std::string path = SideFiles::find(address, {m_directory});
            if (!path.empty() && FileGate::readError(path).empty()) {
                FileGate::noteFile(path);
                made.mapped = std::make_unique<MappedFile>(path);
                made.bytes = made.mapped->text();
            }
        }
        return made.bytes;
    }

    void storeReplacements()
    {
        std::vector<Replacement>& stored = m_file.m_replacements;
        Json& buffers = m_root["buffers"];
        const bool hasEmbedded = m_chunks.isBinary && buffers.is_array() && !buffers.empty() &&
                                 buffers[0].is_object() && !buffers[0].contains("uri");
        if (hasEmbedded)
            buffers[0]["uri"] = embeddedName;
        stored.push_back({modelName, m_root.dump(-1, ' ', false, Json::error_handler_t::replace)});
        if (hasEmbedded)
            stored.push_back({embeddedName, std::string(m_chunks.binary)});
        if (!m_converted.empty())
            stored.push_back({convertedName, std::move(m_converted)});
    }

    struct Buffer
    {
        std::string_view bytes;
        std::string decoded;
        std::unique_ptr<MappedFile> mapped;
    };

    /// Where the floats of an accessor are among the converted ones.
    struct Place
    {
        std::size_t offset = 0;
        std::size_t length = 0;
        std::size_t parts = 0;
    };

    const Chunks& m_chunks;
    const std::string& m_directory;
    GltfFile& m_file;
    Json m_root;
    bool m_isChanged = false;
    std::map<std::uint64_t, Buffer> m_buffers;
    std::string m_converted;
    std::map<std::size_t, Place> m_done;
};

std::unique_ptr<GltfFile> GltfFile::parse(std::string_view contents, const std::string& directory)
{
    const Chunks chunks = chunksOf(contents);
    auto file = std::make_unique<GltfFile>();
    try {
        if (Parser(chunks, directory, *file).parse())
            return file;
    } catch (const Json::exception&) {
        // Something is of another kind than it must be; the reader says what.
    }
    return nullptr;
}

} // namespace vfFormats
