// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/PlyFile.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <map>
#include <sstream>

namespace vfFormats {

namespace {

/// A header is shorter, and has fewer properties.
constexpr std::size_t longestHeader = std::size_t(1024) * 1024;
constexpr std::size_t mostProperties = 4096;

PlyNumber typeOf(const std::string& name)
{
    static const std::map<std::string, PlyNumber> types = {
        {"char", PlyNumber::Int8},      {"int8", PlyNumber::Int8},       {"uchar", PlyNumber::UInt8},
        {"uint8", PlyNumber::UInt8},    {"short", PlyNumber::Int16},     {"int16", PlyNumber::Int16},
        {"ushort", PlyNumber::UInt16},  {"uint16", PlyNumber::UInt16},   {"int", PlyNumber::Int32},
        {"int32", PlyNumber::Int32},    {"uint", PlyNumber::UInt32},     {"uint32", PlyNumber::UInt32},
        {"float", PlyNumber::Float32},  {"float32", PlyNumber::Float32}, {"double", PlyNumber::Float64},
        {"float64", PlyNumber::Float64}};
    const auto found = types.find(name);
    return found == types.end() ? PlyNumber::None : found->second;
}

std::size_t sizeOf(PlyNumber type)
{
    switch (type) {
    case PlyNumber::Int8:
    case PlyNumber::UInt8:
        return 1;
    case PlyNumber::Int16:
    case PlyNumber::UInt16:
        return 2;
    case PlyNumber::Float64:
        return 8;
    case PlyNumber::None:
        return 0;
    default:
        return 4;
    }
}

template <class Number>
double valueAt(const char* bytes)
{
    Number value;
    std::memcpy(&value, bytes, sizeof(value));
    return static_cast<double>(value);
}

double valueAt(const char* bytes, PlyNumber type)
{
    switch (type) {
    case PlyNumber::Int8:
        return valueAt<std::int8_t>(bytes);
    case PlyNumber::UInt8:
        return valueAt<std::uint8_t>(bytes);
    case PlyNumber::Int16:
        return valueAt<std::int16_t>(bytes);
    case PlyNumber::UInt16:
        return valueAt<std::uint16_t>(bytes);
    case PlyNumber::Int32:
        return valueAt<std::int32_t>(bytes);
    case PlyNumber::UInt32:
        return valueAt<std::uint32_t>(bytes);
    case PlyNumber::Float32:
        return valueAt<float>(bytes);
    case PlyNumber::Float64:
        return valueAt<double>(bytes);
    default:
        return 0;
    }
}

bool isSpace(char letter)
{
    return letter == ' ' || (letter >= '\t' && letter <= '\r');
}

/// Takes the lines of a header, which end in LF, in CR LF or in CR, as the first does.
class Lines
{
public:
    explicit Lines(std::string_view text) : m_text(text)
    {
        const std::size_t first = text.find_first_of("\r\n");
        if (first == std::string_view::npos)
            return;
        m_end = text.substr(first, text.substr(first, 2) == "\r\n" ? 2 : 1);
    }

    /// @return whether there was a whole one
    bool next(std::string& line)
    {
        const std::size_t end = m_end.empty() ? std::string_view::npos : m_text.find(m_end, m_passed);
        if (end == std::string_view::npos)
            return false;
        line = m_text.substr(m_passed, end - m_passed);
        m_passed = end + m_end.size();
        return true;
    }

    std::size_t passed() const { return m_passed; }

private:
    std::string_view m_text;
    std::string_view m_end;
    std::size_t m_passed = 0;
};

/// @return what follows the first words of a line
std::string restOf(std::istringstream& words)
{
    std::string rest;
    std::getline(words >> std::ws, rest);
    while (!rest.empty() && isSpace(rest.back()))
        rest.pop_back();
    return rest;
}

bool takeProperty(std::istringstream& words, PlyElement& element)
{
    PlyProperty property;
    std::string type;
    words >> type;
    if (type == "list") {
        std::string countType;
        words >> countType >> type;
        property.countType = typeOf(countType);
        if (property.countType == PlyNumber::None)
            return false;
    }
    property.type = typeOf(type);
    words >> property.name;
    element.properties.push_back(property);
    return property.type != PlyNumber::None;
}

} // namespace

int PlyElement::find(std::initializer_list<const char*> names) const
{
    for (const char* wanted : names) {
        const auto found =
            std::find_if(properties.begin(), properties.end(),
                         [wanted](const PlyProperty& property) { return property.name == wanted; });
        if (found != properties.end())
            return static_cast<int>(found - properties.begin());
    }
    return -1;
}

std::string PlyHeader::parse(std::string_view file)
{
    constexpr const char* damaged = "the file is damaged, or not of the format that its name says";
    const std::size_t mark = file.substr(0, 3) == "\xef\xbb\xbf" ? 3 : 0;
    Lines lines(file.substr(mark, longestHeader));
    std::string line;
    if (!lines.next(line) || line.substr(0, 3) != "ply")
        return damaged;
    std::size_t properties = 0;
    while (lines.next(line)) {
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word == "end_header") {
            size = mark + lines.passed();
            return elements.empty() ? "there is nothing in it that could be shown" : "";
        }
        if (word == "format") {
            words >> word;
            form = word == "binary_little_endian" ? Form::LittleEndian
                   : word == "binary_big_endian"  ? Form::BigEndian
                                                  : Form::Text;
        } else if (word == "comment") {
            words >> word;
            if (word == "TextureFile")
                textures.push_back(restOf(words));
        } else if (word == "element") {
            elements.emplace_back();
            words >> elements.back().name >> elements.back().count;
        } else if (word == "property" && (elements.empty() || ++properties > mostProperties ||
                                          !takeProperty(words, elements.back())))
        {
            return damaged;
        }
    }
    return "the file is cut off in its header";
}

PlyRows::PlyRows(std::string_view file, const PlyHeader& header)
    : m_form(header.form),
      m_begin(file.data()),
      m_at(file.data() + std::min(header.size, file.size())),
      m_end(file.data() + file.size())
{}

void PlyRows::begin(const PlyElement& element)
{
    m_element = &element;
    m_rowsRead = 0;
    m_numbers.assign(element.properties.size(), 0);
    m_lists.resize(element.properties.size());
}

std::size_t PlyRows::mostRows() const
{
    std::size_t size = 0;
    for (const PlyProperty& property : m_element->properties) {
        if (m_form == PlyHeader::Form::Text)
            size += 2; // a digit and what is between
        else
            size += sizeOf(property.isList() ? property.countType : property.type);
    }
    const auto left = static_cast<std::size_t>(m_end - m_at) + 1;
    return static_cast<std::size_t>(std::min<std::uint64_t>(m_element->count, size > 0 ? left / size : 0));
}

bool PlyRows::next()
{
    if (m_rowsRead >= m_element->count || m_element->properties.empty())
        return false;
    for (std::size_t i = 0; i < m_element->properties.size(); ++i) {
        const PlyProperty& property = m_element->properties[i];
        if (!takeNumber(property.isList() ? property.countType : property.type, m_numbers[i]))
            return false;
        if (!property.isList())
            continue;
        const double length = m_numbers[i];
        const auto left = static_cast<double>(m_end - m_at) + 1;
        const double size = m_form == PlyHeader::Form::Text ? 2 : static_cast<double>(sizeOf(property.type));
        if (!(length >= 0 && length * size <= left))
            return false;
        std::vector<double>& list = m_lists[i];
        list.resize(static_cast<std::size_t>(length));
        for (double& number : list) {
            if (!takeNumber(property.type, number))
                return false;
        }
    }
    ++m_rowsRead;
    return true;
}

bool PlyRows::takeNumber(PlyNumber type, double& number)
{
    return m_form == PlyHeader::Form::Text ? takeWord(number) : takeBytes(type, number);
}

bool PlyRows::takeWord(double& number)
{
    while (m_at != m_end && isSpace(*m_at))
        ++m_at;
    const char* begin = m_at != m_end && *m_at == '+' ? m_at + 1 : m_at;
    const auto [end, error] = std::from_chars(begin, m_end, number);
    if (error == std::errc::invalid_argument || (end != m_end && !isSpace(*end)))
        return false;
    if (error == std::errc::result_out_of_range)
        number = 0;
    m_at = end;
    return true;
}

bool PlyRows::takeBytes(PlyNumber type, double& number)
{
    const std::size_t size = sizeOf(type);
    if (static_cast<std::size_t>(m_end - m_at) < size)
        return false;
    if (m_form == PlyHeader::Form::BigEndian) {
        char bytes[8];
        std::reverse_copy(m_at, m_at + size, bytes);
        number = valueAt(bytes, type);
    } else {
        number = valueAt(m_at, type);
    }
    m_at += size;
    return true;
}

} // namespace vfFormats
