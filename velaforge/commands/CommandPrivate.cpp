// SPDX-License-Identifier: MIT
#include <velaforge/commands/CommandPrivate.h>

#include <velaforge/base/ClassInfo.h>

namespace vfApplication {

namespace {

vfBase::VfObject* createCommand()
{
    return new CommandPrivate;
}

} // namespace

const vfBase::ClassInfo CommandPrivate::s_classInfo("vfApplication", "CommandPrivate",
                                                    CommandPrivate::classId(), &vfBase::VfObject::s_classInfo,
                                                    nullptr, static_cast<int>(sizeof(CommandPrivate)),
                                                    &createCommand);

struct CommandPrivate::Extras
{
    vfBase::VfVariant argument;
    Properties properties;
};

CommandPrivate::CommandPrivate() = default;

CommandPrivate::CommandPrivate(const CommandPrivate& other)
    : osg::Referenced(other),
      vfBase::VfObject(other),
      m_name(other.m_name),
      m_extras(new Extras(other.extras()))
{}

CommandPrivate::CommandPrivate(CommandPrivate&& other)
    : CommandPrivate(static_cast<const CommandPrivate&>(other))
{}

CommandPrivate& CommandPrivate::operator=(const CommandPrivate& other)
{
    m_name = other.m_name;
    if (m_extras || other.m_extras) {
        setArgument(other.getArgument());
        setProperties(other.getProperties());
    }
    return *this;
}

CommandPrivate& CommandPrivate::operator=(CommandPrivate&& other)
{
    return *this = static_cast<const CommandPrivate&>(other);
}

CommandPrivate::~CommandPrivate() = default;

const vfBase::ClassInfo* CommandPrivate::getClassInfo() const
{
    return &s_classInfo;
}

bool CommandPrivate::canUndo() const
{
    return false;
}

CommandPrivate::Extras& CommandPrivate::extras() const
{
    if (!m_extras)
        m_extras = std::make_unique<Extras>();
    return *m_extras;
}

const vfBase::VfVariant& CommandPrivate::getArgument() const
{
    static const vfBase::VfVariant none;
    return m_extras ? m_extras->argument : none;
}

void CommandPrivate::setArgument(const vfBase::VfVariant& argument)
{
    if (m_extras || !argument.isEmpty())
        extras().argument = argument;
}

CommandPrivate::Properties CommandPrivate::getProperties() const
{
    return extras().properties;
}

void CommandPrivate::setProperties(const Properties& properties)
{
    extras().properties = properties;
}

bool CommandPrivate::Do(const vfBase::VfVariant&)
{
    return false;
}

bool CommandPrivate::undo(const vfBase::VfVariant&)
{
    return false;
}

bool CommandPrivate::Do()
{
    return Do(getArgument());
}

bool CommandPrivate::undo()
{
    return undo(getArgument());
}

const char* CommandPrivate::classId()
{
    return "vfApplication::CommandPrivate";
}

} // namespace vfApplication
