// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/SettingsObjectPrivate.h>
#include <velaforge/scene/ViewStyle.h>

#include <string>
#include <vector>

namespace vfViewer {

/// What was open when the program ended, and how it was looked at, to be opened again if the user wants that. Kept with
/// all other settings.
class Session : public vfBase::SettingsObjectPrivate
{
public:
    META_Object(vfViewer, Session)

        /// A document that was open.
        struct Entry
    {
        std::string path;
        vfScene::LookAt camera;
        vfScene::ViewStyle style;
    };

    Session() = default;
    Session(const Session& other, const osg::CopyOp& copyop);

    /// @return the one object, known to the store
    static Session& instance();

    /// Whether the next start opens it again; false unless set.
    bool isRestored() const { return m_isRestored; }
    void setRestored(bool isRestored) { m_isRestored = isRestored; }

    const std::vector<Entry>& getEntries() const { return m_entries; }
    void setEntries(const std::vector<Entry>& entries) { m_entries = entries; }

protected:
    ~Session() override = default;

private:
    bool m_isRestored = false;
    std::vector<Entry> m_entries;
};

} // namespace vfViewer
