// SPDX-License-Identifier: MIT
#include <velaforge/base/CopyCount.h>

#include <atomic>
#include <map>
#include <mutex>
#include <new>

namespace vfBase {

namespace {

struct Counts
{
    std::mutex mutex;
    std::map<const void*, unsigned int> further; ///< number of holders besides the first
    std::atomic<bool> areAny{false};
};

Counts& counts()
{
    // Never destroyed, because objects are destroyed until the process ends; in static memory, because a
    // destructor that makes the first call must not fail.
    alignas(Counts) static unsigned char place[sizeof(Counts)];
    static Counts& all = *new (place) Counts;
    return all;
}

} // namespace

void CopyCount::add(const void* shared)
{
    if (!shared)
        return;
    Counts& all = counts();
    const std::lock_guard<std::mutex> guard(all.mutex);
    ++all.further[shared];
    all.areAny = true;
}

bool CopyCount::release(const void* shared) noexcept
{
    Counts& all = counts();
    if (!all.areAny)
        return true;
    const std::lock_guard<std::mutex> guard(all.mutex);
    const auto found = all.further.find(shared);
    if (found == all.further.end())
        return true;
    if (--found->second == 0)
        all.further.erase(found);
    return false;
}

} // namespace vfBase
