// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <random>
#include <string>
#include <utility>

namespace vfTest {

/// Spoils bytes in the ways in which files are spoilt, several times at most: cuts, bits that flip, blocks that are there
/// twice or stand in each other's place, and what makes numbers huge. The same seed spoils the same bytes alike.
class Spoiler
{
public:
    explicit Spoiler(std::string healthy, unsigned int seed) : m_bytes(std::move(healthy)), m_random(seed) {}

    std::string spoil()
    {
        for (std::size_t times = 1 + below(3); times > 0 && m_bytes.size() > 8; --times) {
            switch (below(5)) {
            case 0:
                m_bytes.resize(1 + below(m_bytes.size()));
                break;
            case 1:
                for (std::size_t bytes = 1 + below(8); bytes > 0; --bytes)
                    m_bytes[below(m_bytes.size())] ^=
                        static_cast<char>(1u << below(8)); // NOLINT(bugprone-narrowing-conversions)
                break;
            case 2:
                m_bytes.insert(below(m_bytes.size()), m_bytes.substr(below(m_bytes.size()), 1 + below(200)));
                break;
            case 3:
                swapBlocks();
                break;
            default:
                overwrite();
            }
        }
        return m_bytes;
    }

private:
    std::size_t below(std::size_t limit)
    {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(m_random);
    }

    void swapBlocks()
    {
        const std::size_t length = 1 + below(std::min<std::size_t>(m_bytes.size() / 2, 64));
        const std::size_t a = below(m_bytes.size() - length + 1);
        const std::size_t b = below(m_bytes.size() - length + 1);
        std::swap_ranges(m_bytes.begin() + static_cast<std::ptrdiff_t>(a),
                         m_bytes.begin() +
                             static_cast<std::ptrdiff_t>(a + std::min(length, b > a ? b - a : length)),
                         m_bytes.begin() + static_cast<std::ptrdiff_t>(b));
    }

    /// With what makes numbers huge, in text and otherwise.
    void overwrite()
    {
        static const std::string values[] = {std::string(4, '\xff'),
                                             std::string(4, '\0'),
                                             "9999999999",
                                             std::string("\xff\xff\xff\x7f", 4),
                                             "-1",
                                             "nan",
                                             "{",
                                             "\""};
        const std::string& value = values[below(std::size(values))];
        m_bytes.replace(below(m_bytes.size()), value.size(), value);
    }

    std::string m_bytes;
    std::mt19937 m_random;
};

} // namespace vfTest
