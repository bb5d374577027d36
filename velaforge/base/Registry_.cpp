// SPDX-License-Identifier: MIT
#include <velaforge/base/Registry_.h>

#include <velaforge/base/ClassInfo.h>

#include <algorithm>
#include <string_view>

namespace vfBase {

namespace {

using Records = std::map<std::string, std::vector<const ClassInfo*>, std::less<>>;

void drop(Records& records, const char* key, const ClassInfo* record)
{
    const auto entry = records.find(std::string_view(key));
    if (entry == records.end())
        return;
    auto& list = entry->second;
    list.erase(std::remove(list.begin(), list.end(), record), list.end());
    if (list.empty())
        records.erase(entry);
}

const ClassInfo* first(const Records& records, const char* key)
{
    const auto entry = records.find(std::string_view(key));
    return entry == records.end() ? nullptr : entry->second.front();
}

} // namespace

Registry_& Registry_::instance()
{
    // The constructor of the first record makes the registry, so it outlives every record.
    static Registry_ registry;
    return registry;
}

VfObject* Registry_::createType(const char* name) const
{
    const ClassInfo* record = findClass(name);
    return record ? record->create() : nullptr;
}

const ClassInfo* Registry_::findClass(const char* name) const
{
    if (!name)
        return nullptr;
    const ClassInfo* record = first(m_byId, name);
    return record ? record : first(m_byName, name);
}

std::vector<const ClassInfo*> Registry_::getClasses() const
{
    std::vector<const ClassInfo*> classes;
    for (const auto& [id, records] : m_byId)
        classes.push_back(records.front());
    return classes;
}

void Registry_::add(const ClassInfo* record)
{
    m_byId[record->getClassId()].push_back(record);
    m_byName[record->getClassName()].push_back(record);
}

void Registry_::remove(const ClassInfo* record)
{
    drop(m_byId, record->getClassId(), record);
    drop(m_byName, record->getClassName(), record);
}

} // namespace vfBase
