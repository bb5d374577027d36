// SPDX-License-Identifier: MIT
#include <velaforge/base/LeakForProcess.h>

#include <osg/ref_ptr>

#include <mutex>
#include <vector>

namespace vfBase {

void leakForProcess(const osg::Referenced* body)
{
    // Never destroyed: code that runs while the process ends may still use a leaked body.
    static std::mutex& mutex = *new std::mutex;
    static auto& leaked = *new std::vector<osg::ref_ptr<const osg::Referenced>>;
    if (!body)
        return;
    const std::lock_guard<std::mutex> guard(mutex);
    leaked.emplace_back(body);
}

void leakForProcess(const void* object)
{
    static std::mutex& mutex = *new std::mutex;
    static auto& leaked = *new std::vector<const void*>;
    if (!object)
        return;
    const std::lock_guard<std::mutex> guard(mutex);
    leaked.push_back(object);
}

} // namespace vfBase
