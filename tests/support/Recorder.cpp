// SPDX-License-Identifier: MIT
#include "Recorder.h"

#include <algorithm>
#include <cstdio>

namespace vfTest {

void Recorder::add(const std::string& line)
{
    m_lines.push_back(line);
    if (m_echoes) {
        std::puts(line.c_str());
        std::fflush(stdout);
    }
    if (onLine)
        onLine(line);
}

int Recorder::count(const std::string& line) const
{
    return static_cast<int>(std::count(m_lines.begin(), m_lines.end(), line));
}

Recorder& recorder()
{
    // Never destroyed: modules and settings, which go with the process, may write into it.
    static Recorder& lines = *new Recorder;
    return lines;
}

void record(const std::string& line)
{
    recorder().add(line);
}

} // namespace vfTest
