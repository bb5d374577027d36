// SPDX-License-Identifier: MIT
// Damaged files of every format, one after another in one program.
#include "Reading.h"
#include "support/Models.h"

#include <osg/ComputeBoundsVisitor>

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <malloc.h>
#include <unistd.h>

using vfViewer::ReadJob;
using vfViewer::ReadKind;
using vfViewer::ReadLimits;
using vfViewer::ReadOutcome;

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int mutants = 25; // each takes many times as long
#else
constexpr int mutants = 1000;
#endif

constexpr unsigned int secondsAllowed = 1;
constexpr std::uint64_t memoryAllowed = std::uint64_t(512) * 1024 * 1024;

/// Spoils a file in one of the ways in which files are spoilt, several times at most.
class Spoiler
{
public:
    explicit Spoiler(const std::string& healthy, unsigned int seed) : m_bytes(healthy), m_random(seed) {}

    std::string spoil()
    {
        for (unsigned int times = 1 + below(3); times > 0 && m_bytes.size() > 8; --times) {
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

long residentKilobytes()
{
    malloc_trim(0);
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    long resident = 0;
    file >> pages >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

class Corpus : public vfTest::Reading, public testing::WithParamInterface<std::string>
{
protected:
    void open(const std::string& path)
    {
        ReadLimits limits;
        limits.seconds = secondsAllowed;
        limits.memory = memoryAllowed;
        ReadJob job(ReadKind::Model, path, limits);
        ASSERT_TRUE(job.wait(60000)) << path;
        const ReadOutcome outcome = job.take();
        if (!outcome.scene) {
            ++refused;
            ASSERT_NE("", outcome.reason);
            ASSERT_EQ(std::string::npos, outcome.reason.find('\n')) << outcome.reason;
            crashed += outcome.reason.find("its reader fails") != std::string::npos;
            hung += outcome.reason.find("too long") != std::string::npos;
            return;
        }
        osg::ComputeBoundsVisitor bounds; // somebody looks at it
        outcome.scene->accept(bounds);
        ASSERT_TRUE(bounds.getBoundingBox().valid());
    }

    int refused = 0;
    int crashed = 0;
    int hung = 0;
};

} // namespace

TEST_P(Corpus, OfDamagedFilesDoesNoHarm)
{
    const std::string healthy = vfTest::readFile(vfTest::signpost(GetParam()));
    ASSERT_FALSE(healthy.empty());
    directory.write("signpost.bin", vfTest::readFile(vfTest::signpost("bin"))); // to which one format refers
    [[maybe_unused]] long before = 0; // sanitizers keep what was freed
    for (int i = 0; i < mutants; ++i) {
        if (i == mutants / 2)
            before = residentKilobytes();
        open(directory.write("mutant." + GetParam(), Spoiler(healthy, static_cast<unsigned int>(i)).spoil()));
        ASSERT_FALSE(HasFatalFailure()) << "mutant " << i;
    }
    EXPECT_GT(refused, 0);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_LT(residentKilobytes() - before, 4096) << "grown in the second half";
#endif
    open(vfTest::signpost(GetParam()));
    std::cout << mutants << " mutants: " << refused << " refused, of which the reader of " << crashed
              << " crashed and of " << hung << " hung" << std::endl;
}

INSTANTIATE_TEST_SUITE_P(EveryFormat, Corpus, testing::ValuesIn(vfTest::signpostFormats()),
                         [](const auto& tested) { return "of_" + tested.param; });
