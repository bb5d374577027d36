// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>

namespace vfTest {

/// Writes a hilly ground of that many triangles in the format "stl".
inline void writeHills(const std::string& path, std::uint32_t triangles)
{
    std::ofstream file(path, std::ios::binary);
    const std::string header(80, ' ');
    file.write(header.data(), 80);
    file.write(reinterpret_cast<const char*>(&triangles), 4);
    const auto side = static_cast<std::uint32_t>(std::sqrt(triangles / 2.0)) + 1;
    std::string block;
    for (std::uint32_t i = 0; i < triangles; ++i) {
        const std::uint32_t column = i / 2 % side;
        const std::uint32_t row = i / 2 / side;
        float values[12] = {};
        for (std::uint32_t corner = 0; corner < 3; ++corner) {
            const std::uint32_t dx = i % 2 ? (corner != 0) : (corner == 1);
            const std::uint32_t dy = corner == 2;
            const float x = static_cast<float>(column + dx) * 10 / static_cast<float>(side);
            const float y = static_cast<float>(row + dy) * 10 / static_cast<float>(side);
            float* point = values + 3 + std::size_t(3) * corner;
            point[0] = x;
            point[1] = y;
            point[2] = std::sin(x) * std::cos(y);
        }
        block.append(reinterpret_cast<const char*>(values), sizeof(values));
        block.append(2, '\0');
        if (block.size() > std::size_t(1024) * 1024) {
            file.write(block.data(), static_cast<std::streamsize>(block.size()));
            block.clear();
        }
    }
    file.write(block.data(), static_cast<std::streamsize>(block.size()));
}

/// Writes a hilly ground of about that many triangles, with its points shared, in the format "obj".
inline void writeHillsAsObj(const std::string& path, std::uint32_t triangles)
{
    std::ofstream file(path);
    const auto side = static_cast<std::uint32_t>(std::sqrt(triangles / 2.0)) + 1;
    for (std::uint32_t row = 0; row < side; ++row) {
        for (std::uint32_t column = 0; column < side; ++column) {
            const double x = 10.0 * column / side;
            const double y = 10.0 * row / side;
            file << "v " << x << ' ' << y << ' ' << std::sin(x) * std::cos(y) << '\n';
        }
    }
    for (std::uint32_t row = 0; row + 1 < side; ++row) {
        for (std::uint32_t column = 0; column + 1 < side; ++column) {
            const std::uint32_t at = row * side + column + 1;
            file << "f " << at << ' ' << at + 1 << ' ' << at + side + 1 << "\nf " << at << ' '
                 << at + side + 1 << ' ' << at + side << '\n';
        }
    }
}

/// @return a model in the format "obj" that keeps its reader busy for a minute: curled polygons, which are hard to cut
///         into triangles
inline std::string slowModel()
{
    std::string text;
    constexpr int turns = 500;
    for (int side = 0; side < 2; ++side) {
        for (int i = 0; i < turns; ++i) {
            const double angle = 0.5 * (side == 0 ? i : turns - 1 - i);
            const double radius = 1 + angle + side * 1.2;
            text += "v " + std::to_string(radius * std::cos(angle)) + " " +
                    std::to_string(radius * std::sin(angle)) + " 0\n";
        }
    }
    std::string face = "f";
    for (int i = 1; i <= 2 * turns; ++i)
        face += " " + std::to_string(i);
    for (int i = 0; i < 3000; ++i)
        text += face + "\n";
    return text;
}

} // namespace vfTest
