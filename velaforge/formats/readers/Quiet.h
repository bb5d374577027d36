// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vfFormats {

/// Keeps what readers and writers of models say off the terminal while it lives: what goes through osg::notify is in the
/// monitor, and what they and the libraries below them write straight to standard output and standard error is caught
/// here. One may live within another.
class Quiet
{
public:
    Quiet();
    ~Quiet();

    /// Makes the file in memory for the next one, in a process that will not be allowed to.
    static void prepare();

    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

    /// Ends the silence. @return what was said, a line each
    std::vector<std::string> stop();

private:
    void addCaught(std::vector<std::string>& texts) const;

    bool m_before;
    int m_caught;
    int m_saved[2] = {-1, -1};
    bool m_isOver = false;
};

} // namespace vfFormats
