// SPDX-License-Identifier: MIT
// Keys and mnemonics of the menus, in each language.
#include "Viewer.h"

#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/internal/MainWindow.h>

#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

#include <map>
#include <string>

using vfTest::Program;
using vfTest::Viewer;

namespace {

/// What each key does, and complaints about keys that do two things.
class Keys
{
public:
    void add(const QKeySequence& key, const QAction& action)
    {
        if (key.isEmpty())
            return;
        const auto [known, isNew] = m_actions.emplace(key.toString().toStdString(), &action);
        if (!isNew && known->second != &action)
            complaints += known->first + " is " + known->second->text().toStdString() + " and " +
                          action.text().toStdString() + "\n";
    }

    std::string complaints;

private:
    std::map<std::string, const QAction*> m_actions;
};

/// Collects the keys of a menu and of those below it. Returns complaints about mnemonics that two of its entries have.
std::string collect(QMenu& menu, Keys& keys)
{
    Q_EMIT menu.aboutToShow(); // some fill themselves
    Keys mnemonics;
    std::string complaints;
    for (QAction* action : menu.actions()) {
        for (const QKeySequence& key : action->shortcuts())
            keys.add(key, *action);
        mnemonics.add(QKeySequence::mnemonic(action->text()), *action);
        if (action->menu())
            complaints += collect(*action->menu(), keys);
    }
    return complaints +
           (mnemonics.complaints.empty() ? "" : menu.title().toStdString() + ": " + mnemonics.complaints);
}

} // namespace

class ViewerKeys : public vfTest::OnDisplay, public testing::WithParamInterface<const char*>
{};

TEST_P(ViewerKeys, NoKeyDoesTwoThingsMnemonicsIncluded)
{
    vfApplication::QtApplication::addTranslations(VELAFORGE_VIEWER_TRANSLATIONS, "vfviewer");
    Viewer viewer({vfTest::sailboat});
    viewer.run([&] {
        viewer.ui([&] { vfApplication::QtApplication::instance()->setLanguage(GetParam()); });
        Program::pause(100);
        viewer.ui([&] {
            Keys keys;
            std::string complaints;
            for (QAction* action : viewer.program().window().menuBar()->actions()) {
                keys.add(QKeySequence::mnemonic(action->text()), *action);
                ASSERT_NE(nullptr, action->menu());
                complaints += collect(*action->menu(), keys);
            }
            EXPECT_EQ("", complaints);
            EXPECT_EQ("", keys.complaints);
        });
    });
}

INSTANTIATE_TEST_SUITE_P(Languages, ViewerKeys, testing::Values("en", "de"));
