// SPDX-License-Identifier: MIT
#include <velaforge/commands/CommandList.h>

namespace vfApplication {

CommandListPrivate::~CommandListPrivate() = default;

CommandList::CommandList(CommandListPrivate* body) : vfBase::Referenced(body, true), d(body) {}

CommandList::CommandList(const vfBase::Referenced& other)
    : CommandList(dynamic_cast<CommandListPrivate*>(other.getImp()))
{}

CommandList::~CommandList() = default;

CommandList& CommandList::operator=(const CommandList& other)
{
    CommandListPrivate* body = other.d; // read first: letting go of our own body may end other
    vfBase::Referenced::operator=(other);
    d = body;
    return *this;
}

} // namespace vfApplication
