// SPDX-License-Identifier: MIT
#include <velaforge/base/KeptForProcess.h>

#include <osg/ref_ptr>

#include <mutex>
#include <vector>

namespace vfBase {

void keepForProcess(const osg::Referenced* body)
{
    // Never destroyed: what is kept may be in use until the very end.
    static std::mutex& mutex = *new std::mutex;
    static auto& kept = *new std::vector<osg::ref_ptr<const osg::Referenced>>;
    if (!body)
        return;
    const std::lock_guard<std::mutex> guard(mutex);
    kept.emplace_back(body);
}

void keepReachable(const void* object)
{
    static std::mutex& mutex = *new std::mutex;
    static auto& kept = *new std::vector<const void*>;
    if (!object)
        return;
    const std::lock_guard<std::mutex> guard(mutex);
    kept.push_back(object);
}

} // namespace vfBase
