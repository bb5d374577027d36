// SPDX-License-Identifier: MIT
#include <velaforge/base/Referenced.h>

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Observer.h>

namespace vfBase {

const ClassInfo Referenced::s_classInfo("vfBase", "Referenced", Referenced::classId(), &VfObject::s_classInfo,
                                        nullptr, static_cast<int>(sizeof(Referenced)), nullptr);

const ClassInfo* Referenced::getClassInfo() const
{
    return &s_classInfo;
}

std::uint64_t Referenced::getUniqueId() const
{
    return static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(m_imp.get()));
}

void Referenced::setImp(const Referenced& other)
{
    Referenced::operator=(other);
}

void Referenced::setThreadSafeRefUnref(bool threadSafe)
{
    if (m_imp)
        m_imp->setThreadSafeRefUnref(threadSafe);
}

int Referenced::ref() const
{
    return m_imp ? m_imp->ref() : 0;
}

int Referenced::unref() const
{
    return m_imp ? m_imp->unref() : 0;
}

int Referenced::unref_nodelete() const
{
    return m_imp ? m_imp->unref_nodelete() : 0;
}

bool Referenced::isValid() const
{
    return m_imp.valid();
}

void Referenced::addObserver(const Observer& observer) const
{
    if (m_imp && observer.get())
        m_imp->addObserver(observer.get());
}

void Referenced::removeObserver(const Observer& observer) const
{
    if (m_imp && observer.get())
        m_imp->removeObserver(observer.get());
}

ObserverSet Referenced::getOrCreateObserverSet() const
{
    return m_imp ? ObserverSet(m_imp->getOrCreateObserverSet()) : ObserverSet();
}

Referenced& Referenced::invalid()
{
    static Referenced handle;
    return handle;
}

const char* Referenced::classId()
{
    return "vfBase::Referenced";
}

} // namespace vfBase
