// SPDX-License-Identifier: MIT
#include <velaforge/base/CopyGroup.h>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <new>

namespace vfBase {

namespace {

struct Group
{
    bool isBodyDeleted = false;
};

struct Groups
{
    std::mutex mutex;
    std::map<const void*, std::shared_ptr<Group>> ofObject;
    std::atomic<bool> areAny{false};
};

Groups& groups()
{
    // Never destroyed, since objects are destroyed until the very end of the process; and in memory of its own, since a
    // destructor that asks first must not fail.
    alignas(Groups) static unsigned char place[sizeof(Groups)];
    static Groups& all = *new (place) Groups;
    return all;
}

} // namespace

void CopyGroup::join(const void* copy, const void* source)
{
    if (copy == source)
        return;
    Groups& all = groups();
    const std::lock_guard<std::mutex> guard(all.mutex);
    std::shared_ptr<Group>& group = all.ofObject[source];
    if (!group)
        group = std::make_shared<Group>();
    all.ofObject[copy] = group;
    all.areAny = true;
}

void CopyGroup::leave(const void* object) noexcept
{
    Groups& all = groups();
    if (!all.areAny)
        return;
    const std::lock_guard<std::mutex> guard(all.mutex);
    all.ofObject.erase(object);
}

bool CopyGroup::end(const void* object) noexcept
{
    Groups& all = groups();
    if (!all.areAny)
        return true;
    const std::lock_guard<std::mutex> guard(all.mutex);
    const auto found = all.ofObject.find(object);
    if (found == all.ofObject.end())
        return true;
    const bool isFirst = !found->second->isBodyDeleted;
    found->second->isBodyDeleted = true;
    all.ofObject.erase(found);
    return isFirst;
}

} // namespace vfBase
