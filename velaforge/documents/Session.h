// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/SettingsObjectPrivate.h>
#include <velaforge/base/SettingsValue.h>

#include <string>
#include <vector>

namespace vfApplication {

/// The documents that were open when the program ended, with the state of their views, as an object of the settings store.
/// The program fills it when it ends and reopens the documents at its next start, if the user wants that.
///
/// A program with sessions registers the object in one of its sources:
///
///     const vfBase::RegisterSettingsObjectProxy registered(
///         vfBase::SettingsObject(&vfApplication::Session::instance()), vfBase::Settings::global());
class VFAPPLICATION_EXPORT Session : public vfBase::SettingsObjectPrivate
{
public:
    META_Object(vfApplication, Session)

        /// A document that was open.
        struct Entry
    {
        std::string path;           ///< of its file, absolute
        vfBase::SettingsValue view; ///< the state of its view, as the program stores it
    };

    /// The largest number of documents; more of them in the store are ignored.
    static constexpr std::size_t mostEntries = 100;

    Session() = default;
    /// Copies the entries of another object.
    Session(const Session& other, const osg::CopyOp& copyop);

    /// Returns the object of the program.
    static Session& instance();

    /// Returns whether the next start should reopen the documents; false unless set.
    bool isRestored() const { return m_isRestored; }
    /// Sets whether the next start should reopen the documents.
    void setRestored(bool isRestored) { m_isRestored = isRestored; }

    /// Returns the documents, in the order in which they were opened.
    const std::vector<Entry>& getEntries() const { return m_entries; }
    /// Replaces the documents.
    void setEntries(const std::vector<Entry>& entries) { m_entries = entries; }

protected:
    ~Session() override = default;

private:
    bool m_isRestored = false;
    std::vector<Entry> m_entries;
};

} // namespace vfApplication
