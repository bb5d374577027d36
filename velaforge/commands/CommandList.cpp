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
    // Read first: releasing our own body may destroy other.
    CommandListPrivate* body = other.d;
    vfBase::Referenced::operator=(other);
    d = body;
    return *this;
}

} // namespace vfApplication
