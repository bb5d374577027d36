// SPDX-License-Identifier: MIT
#include "Note.h"

#include <velaforge/application/Application.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>

namespace {

Note* activeNote()
{
    return dynamic_cast<Note*>(vfApplication::Application::instance(false)->getActiveDocument());
}

/// Adds its argument as a line to the active note.
class AddLine : public vfApplication::CommandPrivate
{
public:
    using CommandPrivate::Do;
    using CommandPrivate::undo;

    AddLine() { setName("Add line"); } // what the menu offers to undo

    bool canUndo() const override { return true; }

    bool Do(const vfBase::VfVariant& argument) override
    {
        if (!m_note)
            m_note = activeNote();
        if (!m_note)
            return false;
        std::vector<std::string> lines = m_note->lines();
        lines.push_back(argument.toString().str());
        m_note->setLines(lines);
        return true;
    }

    bool undo(const vfBase::VfVariant&) override
    {
        std::vector<std::string> lines = m_note->lines();
        lines.pop_back();
        m_note->setLines(lines);
        return true;
    }

private:
    Note* m_note =
        nullptr; // whose history has the command; another note may be the active one when it is undone
};

/// Takes the last change back. It does not go through the history: it works on it.
class Undo : public vfApplication::CommandPrivate
{
public:
    void invoke(const vfBase::VfVariant&) override
    {
        if (Note* note = activeNote())
            note->getCommandProcessor()->undo();
    }
};

/// Saves the active note under its name.
class Save : public vfApplication::CommandPrivate
{
public:
    void invoke(const vfBase::VfVariant&) override
    {
        Note* note = activeNote();
        if (!note)
            return;
        const vfBase::WriteResult result = note->save();
        // What a command throws is told to the user, and the program goes on.
        if (result.error())
            throw vfBase::BaseException(note->getTitle().str() + ": not saved: " + result.getMessage().str());
    }
};

template <class Command>
vfBase::VfObject* create()
{
    return new Command;
}

const vfBase::ClassInfo* const parent = &vfApplication::CommandPrivate::s_classInfo;
const vfBase::ClassInfo addLine("notebook", "AddLine", "notebook::AddLine", parent, nullptr, sizeof(AddLine),
                                create<AddLine>);
const vfBase::ClassInfo undo("notebook", "Undo", "notebook::Undo", parent, nullptr, sizeof(Undo),
                             create<Undo>);
const vfBase::ClassInfo save("notebook", "Save", "notebook::Save", parent, nullptr, sizeof(Save),
                             create<Save>);

} // namespace
