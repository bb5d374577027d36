// SPDX-License-Identifier: MIT
#include "Search.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace vfTest {

namespace {

unsigned long numberOf(const char* variable, unsigned long usual)
{
    const char* text = std::getenv(variable);
    return text ? std::strtoul(text, nullptr, 10) : usual;
}

} // namespace

Search::Search(std::string what, int rounds)
    : m_what(std::move(what)),
      m_isSoak(std::getenv("VELAFORGE_SEED")),
      m_left(static_cast<int>(numberOf("VELAFORGE_ROUNDS", static_cast<unsigned long>(rounds)))),
      m_seed(static_cast<unsigned int>(numberOf("VELAFORGE_SEED", 1)) - 1)
{}

Search::~Search()
{
    if (m_isSoak)
        std::printf("searched: %d %s\n", m_done, m_what.c_str());
    if (testing::Test::HasFailure())
        std::printf("failed at seed %u of %s\n", m_seed, m_what.c_str());
}

bool Search::next()
{
    if (m_left == 0 || testing::Test::HasFailure())
        return false;
    --m_left;
    ++m_done;
    ++m_seed;
    if (m_isSoak) {
        std::printf("seed %u\n", m_seed);
        std::fflush(stdout);
    }
    return true;
}

} // namespace vfTest
