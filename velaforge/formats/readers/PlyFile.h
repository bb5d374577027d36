// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace vfFormats {

enum class PlyNumber : int
{
    None = 0,
    Int8,
    UInt8,
    Int16,
    UInt16,
    Int32,
    UInt32,
    Float32,
    Float64
};

/// A property of an element: a number, or a list of them.
struct PlyProperty
{
    std::string name;
    PlyNumber type = PlyNumber::None;
    PlyNumber countType = PlyNumber::None; ///< of a list's length; None for what is no list

    bool isList() const { return countType != PlyNumber::None; }
};

/// A kind of rows, such as the vertices or the faces.
struct PlyElement
{
    std::string name;
    std::uint64_t count = 0; ///< as the header says
    std::vector<PlyProperty> properties;

    /// @return the number of the property with one of these names; -1 for none
    int find(std::initializer_list<const char*> names) const;
};

/// What the header of a PLY file says.
struct PlyHeader
{
    enum class Form
    {
        Text,
        LittleEndian,
        BigEndian
    };

    Form form = Form::Text;
    std::vector<PlyElement> elements;
    std::vector<std::string> textures; ///< images that comments name
    std::size_t size = 0;              ///< in bytes, with its last line end

    /// @return an empty text, or why the header cannot be read
    std::string parse(std::string_view file);
};

/// Walks through the rows of the elements, in the order of the file. It never reads beyond the file, whatever counts say.
class PlyRows
{
public:
    PlyRows(std::string_view file, const PlyHeader& header);

    /// Begins with the next element, which is to be the next of the header.
    void begin(const PlyElement& element);

    /// @return how many rows the rest of the file can hold at most
    std::size_t mostRows() const;

    /// Reads the next row. @return false where the element or the file ends
    bool next();

    /// @return the number of a property of the row; for a list that is its length
    double number(std::size_t property) const { return m_numbers[property]; }

    /// @return the numbers of a list of the row
    const std::vector<double>& list(std::size_t property) const { return m_lists[property]; }

    std::uint64_t rowsRead() const { return m_rowsRead; }

    /// @return the bytes that were read
    std::size_t passed() const { return static_cast<std::size_t>(m_at - m_begin); }

private:
    bool takeNumber(PlyNumber type, double& number);
    bool takeWord(double& number);
    bool takeBytes(PlyNumber type, double& number);

    PlyHeader::Form m_form;
    const char* m_begin;
    const char* m_at;
    const char* m_end;
    const PlyElement* m_element = nullptr;
    std::uint64_t m_rowsRead = 0;
    std::vector<double> m_numbers;
    std::vector<std::vector<double>> m_lists;
};

} // namespace vfFormats
