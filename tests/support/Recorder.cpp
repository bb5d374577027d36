// SPDX-License-Identifier: MIT
#include "Recorder.h"

#include <algorithm>

namespace vfTest {

int Recorder::count(const std::string& line) const
{
    return static_cast<int>(std::count(m_lines.begin(), m_lines.end(), line));
}

Recorder& recorder()
{
    static Recorder lines;
    return lines;
}

void record(const std::string& line)
{
    recorder().add(line);
}

} // namespace vfTest
