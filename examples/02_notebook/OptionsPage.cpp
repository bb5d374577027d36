// SPDX-License-Identifier: MIT
#include "OptionsPage.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/RegisterSettingsObjectProxy.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/base/SettingsProperties.h>

#include <osg/ref_ptr>

using vfBase::SettingsProperties;

NotebookSettings& NotebookSettings::instance()
{
    static const osg::ref_ptr<NotebookSettings> settings = new NotebookSettings;
    return *settings;
}

const vfBase::ClassInfo NotebookPage::s_classInfo("notebook", "NotebookPage", "notebook::NotebookPage",
                                                  &UiOptionsPage::s_classInfo, nullptr, sizeof(NotebookPage),
                                                  []() -> vfBase::VfObject* { return new NotebookPage; });

namespace {

// What is kept of the settings, and the way into the store.
const SettingsProperties properties("notebook::NotebookSettings",
                                    {SettingsProperties::property("showsNumbers",
                                                                  &NotebookSettings::getShowsNumbers,
                                                                  &NotebookSettings::setShowsNumbers)});
const vfBase::RegisterSettingsObjectProxy registered(vfBase::SettingsObject(&NotebookSettings::instance()),
                                                     vfBase::Settings::global());

} // namespace
