// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vfTest {

/// One list of lines into which recording objects write each call, so that an order is asserted as a list.
class Recorder
{
public:
    void add(const std::string& line);
    const std::vector<std::string>& lines() const { return m_lines; }

    /// @return the lines so far, and forgets them
    std::vector<std::string> take()
    {
        std::vector<std::string> lines;
        lines.swap(m_lines);
        return lines;
    }

    /// Called with each line that was recorded; what it throws comes out of the hook that recorded it.
    std::function<void(const std::string& line)> onLine;

    /// Also writes each line to standard output, for what comes when a process ends.
    void echo() { m_echoes = true; }

    /// @return how often a line stands in the list
    int count(const std::string& line) const;

private:
    std::vector<std::string> m_lines;
    bool m_echoes = false;
};

/// @return the recorder of this test's process
Recorder& recorder();

/// Writes a line into the recorder of this process.
void record(const std::string& line);

using Lines = std::vector<std::string>;

} // namespace vfTest
