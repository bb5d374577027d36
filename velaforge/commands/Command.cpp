// SPDX-License-Identifier: MIT
#include <velaforge/commands/Command.h>

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Registry_.h>
#include <velaforge/base/Require.h>
#include <velaforge/commands/CommandPrivate.h>

namespace vfApplication {

const vfBase::ClassInfo Command::s_classInfo("vfApplication", "Command", Command::classId(),
                                             &vfBase::Referenced::s_classInfo, nullptr,
                                             static_cast<int>(sizeof(Command)), nullptr);

Command::Command(CommandPrivate* body) : vfBase::Referenced(body, true), d(body) {}

Command::Command(const vfBase::Referenced& other) : Command(dynamic_cast<CommandPrivate*>(other.getImp())) {}

Command& Command::operator=(const Command& other)
{
    // Read first: releasing our own body may destroy other.
    CommandPrivate* body = other.d;
    vfBase::Referenced::operator=(other);
    d = body;
    return *this;
}

void Command::setImp(const vfBase::Referenced& other)
{
    *this = Command(other);
}

const vfBase::ClassInfo* Command::getClassInfo() const
{
    return &s_classInfo;
}

void Command::invoke(const vfBase::VfVariant& argument)
{
    VF_REQUIRE(d, "Command::invoke", "the handle has no body");
    d->invoke(argument);
}

void Command::invoke()
{
    VF_REQUIRE(d, "Command::invoke", "the handle has no body");
    d->invoke(vfBase::VfVariant());
}

bool Command::canUndo() const
{
    VF_REQUIRE(d, "Command::canUndo", "the handle has no body");
    return d->canUndo();
}

bool Command::Do()
{
    VF_REQUIRE(d, "Command::Do", "the handle has no body");
    return d->Do();
}

bool Command::Do(const vfBase::VfVariant& argument)
{
    VF_REQUIRE(d, "Command::Do", "the handle has no body");
    return d->Do(argument);
}

bool Command::undo()
{
    VF_REQUIRE(d, "Command::undo", "the handle has no body");
    return d->undo();
}

bool Command::undo(const vfBase::VfVariant& argument)
{
    VF_REQUIRE(d, "Command::undo", "the handle has no body");
    return d->undo(argument);
}

const char* Command::getName() const
{
    VF_REQUIRE(d, "Command::getName", "the handle has no body");
    return d->getName().c_str();
}

void Command::setName(const char* name)
{
    VF_REQUIRE(d && name, "Command::setName", "the handle has no body, or a text is null");
    d->setName(name);
}

Command::Properties Command::getProperties() const
{
    VF_REQUIRE(d, "Command::getProperties", "the handle has no body");
    return d->getProperties();
}

void Command::setProperties(const Properties& properties)
{
    VF_REQUIRE(d, "Command::setProperties", "the handle has no body");
    d->setProperties(properties);
}

const char* Command::getClassName() const
{
    return getClassInfo()->getClassName();
}

vfBase::VfString Command::getId() const
{
    return getClassInfo()->getClassId();
}

const char* Command::classId()
{
    return "vfApplication::Command";
}

Command Command::getCommandByName(const std::string& name)
{
    vfBase::VfObject* object = vfBase::Registry_::instance().createType(name.c_str());
    auto* body = dynamic_cast<CommandPrivate*>(object);
    if (!body)
        delete object;
    return Command(body);
}

Command& Command::invalid()
{
    static Command handle;
    return handle;
}

} // namespace vfApplication
