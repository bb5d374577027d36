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

CommandPrivate::CommandPrivate() = default;

CommandPrivate::CommandPrivate(const CommandPrivate& other)
    : osg::Referenced(),
      vfBase::VfObject(),
      m_name(other.m_name),
      m_argument(other.m_argument),
      m_properties(other.getProperties().getImp())
{}

CommandPrivate::CommandPrivate(CommandPrivate&& other)
    : CommandPrivate(static_cast<const CommandPrivate&>(other))
{}

CommandPrivate& CommandPrivate::operator=(const CommandPrivate& other)
{
    m_name = other.m_name;
    m_argument = other.m_argument;
    if (m_properties || other.m_properties)
        setProperties(other.getProperties());
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

CommandPrivate::Properties CommandPrivate::getProperties() const
{
    if (m_properties)
        return Properties(m_properties.get());
    Properties made;
    m_properties = made.getImp();
    return made;
}

void CommandPrivate::setProperties(const Properties& properties)
{
    getProperties() = properties;
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
    return Do(m_argument);
}

bool CommandPrivate::undo()
{
    return undo(m_argument);
}

const char* CommandPrivate::classId()
{
    return "vfApplication::CommandPrivate";
}

} // namespace vfApplication
