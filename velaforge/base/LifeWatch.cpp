// SPDX-License-Identifier: MIT
#include <velaforge/base/LifeWatch.h>

namespace vfBase {

namespace {

/// The watches of this thread, newest first. The list is short: one entry per nested call.
[[gnu::tls_model("initial-exec")]] thread_local ObjectWatch* newest = nullptr;

} // namespace

ObjectWatch::ObjectWatch(const void* object, const void* call) noexcept
    : m_object(object), m_call(call), m_previous(nullptr), m_next(newest)
{
    if (m_next)
        m_next->m_previous = this;
    newest = this;
}

ObjectWatch::~ObjectWatch()
{
    if (m_next)
        m_next->m_previous = m_previous;
    (m_previous ? m_previous->m_next : newest) = m_next;
}

void ObjectWatch::end(const void* object) noexcept
{
    for (ObjectWatch* watch = newest; watch; watch = watch->m_next) {
        if (watch->m_object == object) {
            watch->m_isGone = true;
            watch->m_object = nullptr; // another object may get this address
        }
    }
}

bool ObjectWatch::isMarked(const void* object, const void* call) noexcept
{
    for (const ObjectWatch* watch = newest; watch; watch = watch->m_next) {
        if (watch->m_call == call && watch->m_object == object)
            return true;
    }
    return false;
}

} // namespace vfBase
