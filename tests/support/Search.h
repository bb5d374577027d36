// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfTest {

/// A search for faults among what chance makes: rounds that depend on nothing but their seed.
///
///     Search search("damaged files", 25);
///     while (search.next())
///         expectNoHarm(spoil(healthy, search.seed()));
///
/// As a test it goes through the same few rounds each time. "./dev soak" has it begin at other seeds and go on for longer, by
/// VELAFORGE_SEED and VELAFORGE_ROUNDS. It stops at the first failure and names the seed; a round of a process that dies
/// is the one whose seed was printed last.
class Search
{
public:
    /// @param what  is searched, for the counts of "./dev soak"; each of its kinds has one name everywhere
    /// @param rounds  of a test
    Search(std::string what, int rounds);

    /// Prints how many rounds there were, when it was asked for more than those of a test.
    ~Search();

    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;

    /// Goes on to the next round. @return false when there are no more, or the last one failed
    bool next();

    /// @return the seed of this round
    unsigned int seed() const { return m_seed; }

    /// @return whether this is more than a test
    bool isSoak() const { return m_isSoak; }

private:
    std::string m_what;
    bool m_isSoak;
    int m_left;
    int m_done = 0;
    unsigned int m_seed;
};

} // namespace vfTest
