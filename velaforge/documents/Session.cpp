// SPDX-License-Identifier: MIT
#include <velaforge/documents/Session.h>

#include <velaforge/base/SettingsProperties.h>

#include <osg/ref_ptr>

namespace vfApplication {

namespace {

using vfBase::SettingsProperties;
using vfBase::SettingsValue;

SettingsValue writeEntries(const Session& session)
{
    SettingsValue::List list;
    for (const Session::Entry& entry : session.getEntries())
        list.emplace_back(SettingsValue::Map{{"path", entry.path}, {"view", entry.view}});
    return list;
}

bool takeEntries(Session& session, const SettingsValue& value)
{
    const SettingsValue::List* list = value.list();
    if (!list)
        return false;
    std::vector<Session::Entry> entries;
    for (const SettingsValue& one : *list) {
        const SettingsValue::Map* map = one.map();
        if (!map || entries.size() == Session::mostEntries)
            continue;
        Session::Entry entry;
        const auto path = map->find("path");
        if (path == map->end() || !path->second.read(entry.path) || entry.path.empty())
            continue;
        if (const auto view = map->find("view"); view != map->end())
            entry.view = view->second;
        entries.push_back(entry);
    }
    session.setEntries(entries);
    return true;
}

const SettingsProperties
    properties("vfApplication::Session",
               {SettingsProperties::property("restored", &Session::isRestored, &Session::setRestored),
                SettingsProperties::property<Session>("documents", writeEntries, takeEntries)});

} // namespace

Session::Session(const Session& other, const osg::CopyOp& copyop)
    : SettingsObjectPrivate(other, copyop), m_isRestored(other.m_isRestored), m_entries(other.m_entries)
{}

Session& Session::instance()
{
    static const osg::ref_ptr<Session> session = new Session;
    return *session;
}

} // namespace vfApplication
