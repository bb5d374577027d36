// SPDX-License-Identifier: MIT
#include <velaforge/isolation/Sandbox.h>

#include <velaforge/isolation/internal/CallFilter.h>
#include <velaforge/isolation/internal/Landlock.h>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vfIsolation {

namespace {

bool closeIfOpen(int descriptor)
{
    if (descriptor >= 0)
        close(descriptor);
    return descriptor >= 0;
}

} // namespace

std::string SandboxState::describe() const
{
    std::string missing;
    const auto add = [&missing](bool isThere, const char* what) {
        if (!isThere)
            missing += (missing.empty() ? "" : ", ") + std::string(what);
    };
    add(landlockVersion > 0, "Landlock is not there");
    add(hasCallFilter, "seccomp is not there");
    add(refusesFiles, "any file can be opened");
    add(refusesSockets, "sockets can be made");
    return missing;
}

SandboxState enterSandbox(const std::vector<std::string>& readableFiles)
{
    return enterSandbox(readableFiles, SandboxLayers::All);
}

SandboxState enterSandbox(const std::vector<std::string>& readableFiles, SandboxLayers layers)
{
    SandboxState state;
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return state;
    if (layers != SandboxLayers::CallFilter)
        state.landlockVersion = restrictFiles(readableFiles);
    if (layers != SandboxLayers::Landlock)
        state.hasCallFilter = restrictCalls();
    state.refusesFiles = !closeIfOpen(open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    state.refusesSockets = !closeIfOpen(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    return state;
}

} // namespace vfIsolation
