// SPDX-License-Identifier: MIT
#include "model/Session.h"

#include <velaforge/base/RegisterSettingsObjectProxy.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/base/SettingsProperties.h>
#include <velaforge/scene/StoredStyles.h>

#include <osg/ref_ptr>

namespace vfViewer {

namespace {

using vfBase::SettingsProperties;
using vfBase::SettingsValue;

/// More than a user opens, fewer than a damaged file could name.
constexpr std::size_t mostEntries = 100;

SettingsValue writeEntries(const Session& session)
{
    SettingsValue::List list;
    for (const Session::Entry& entry : session.getEntries())
        list.emplace_back(SettingsValue::Map{{"path", entry.path},
                                             {"camera", vfScene::stored(entry.camera)},
                                             {"style", vfScene::stored(entry.style)}});
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
        Session::Entry entry;
        if (!map || entries.size() == mostEntries || !vfScene::storedPart(*map, "path").read(entry.path) ||
            entry.path.empty() || !vfScene::readStored(vfScene::storedPart(*map, "camera"), entry.camera))
            continue;
        vfScene::readStored(vfScene::storedPart(*map, "style"), entry.style);
        entries.push_back(entry);
    }
    session.setEntries(entries);
    return true;
}

const SettingsProperties
    properties("vfViewer::Session",
               {SettingsProperties::property("restored", &Session::isRestored, &Session::setRestored),
                SettingsProperties::property<Session>("documents", writeEntries, takeEntries)});

const vfBase::RegisterSettingsObjectProxy registered(vfBase::SettingsObject(&Session::instance()),
                                                     vfBase::Settings::global());

} // namespace

Session::Session(const Session& other, const osg::CopyOp& copyop)
    : SettingsObjectPrivate(other, copyop), m_isRestored(other.m_isRestored), m_entries(other.m_entries)
{}

Session& Session::instance()
{
    static const osg::ref_ptr<Session> session = new Session;
    return *session;
}

} // namespace vfViewer
