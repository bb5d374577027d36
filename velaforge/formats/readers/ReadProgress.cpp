// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/ReadProgress.h>

#include <velaforge/isolation/Helper.h>

#include <algorithm>
#include <atomic>

namespace vfFormats {

namespace {

/// How the work is shared out, in percent: reading the file, or writing it, takes most of it.
struct Share
{
    std::uint64_t begin;
    std::uint64_t end;
};

constexpr Share shares[] = {{0, 75}, {80, 80}, {90, 90}, {10, 70}};

std::atomic<vfIsolation::TaskContext*> task{nullptr};
std::atomic<ReadProgress::Stage> current{ReadProgress::Reading};

} // namespace

void ReadProgress::share(vfIsolation::TaskContext* context)
{
    task = context;
}

void ReadProgress::tell(Stage stage)
{
    current = stage;
    tell(0, 1);
}

void ReadProgress::tell(std::uint64_t done, std::uint64_t all)
{
    vfIsolation::TaskContext* context = task;
    if (!context || all == 0)
        return;
    const Share& share = shares[current];
    const double part = static_cast<double>(std::min(done, all)) / static_cast<double>(all);
    const double percent =
        static_cast<double>(share.begin) + part * static_cast<double>(share.end - share.begin);
    context->tell(static_cast<std::uint64_t>(percent * 1000), 100000);
}

} // namespace vfFormats
