// SPDX-License-Identifier: MIT
#include <velaforge/isolation/internal/Landlock.h>

#include <cerrno>
#include <cstdint>

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace vfIsolation {

namespace {

/// As the newest interface has it: headers of older kernels lack the later fields.
struct RulesetAttributes
{
    std::uint64_t files = 0;
    std::uint64_t network = 0; ///< since version 4
    std::uint64_t scopes = 0;  ///< since version 6
};

constexpr int newestVersion = 6;

RulesetAttributes attributesOf(int version)
{
    constexpr unsigned int ofFirst = 13;                 // rights on files
    constexpr unsigned int added[] = {0, 1, 1, 0, 1, 0}; // by each version: refer, truncate, device ioctl
    unsigned int rights = ofFirst;
    for (int i = 0; i < version && i < newestVersion; ++i)
        rights += added[i];
    RulesetAttributes attributes;
    attributes.files = (std::uint64_t(1) << rights) - 1;
    if (version >= 4)
        attributes.network = 3; // bind and connect TCP
    if (version >= 6)
        attributes.scopes = 3; // abstract sockets and signals
    return attributes;
}

std::size_t sizeOf(int version)
{
    return version >= 6 ? 24 : version >= 4 ? 16 : 8;
}

int createRuleset(int version)
{
    const RulesetAttributes attributes = attributesOf(version);
    return static_cast<int>(syscall(SYS_landlock_create_ruleset, &attributes, sizeOf(version), 0));
}

void allowReading(int ruleset, const std::string& path)
{
    const int file = open(path.c_str(), O_PATH | O_CLOEXEC);
    struct stat status;
    if (file < 0)
        return;
    // Never a directory: a rule on one would grant all beneath it.
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        landlock_path_beneath_attr rule = {};
        rule.allowed_access = LANDLOCK_ACCESS_FS_READ_FILE;
        rule.parent_fd = file;
        syscall(SYS_landlock_add_rule, ruleset, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
    }
    close(file);
}

} // namespace

int restrictFiles(const std::vector<std::string>& readableFiles)
{
    long version = syscall(SYS_landlock_create_ruleset, nullptr, 0,
                           static_cast<unsigned int>(LANDLOCK_CREATE_RULESET_VERSION));
    if (version > newestVersion)
        version = newestVersion;
    // Some kernels name a version whose rights they refuse.
    int ruleset = -1;
    while (version > 0 && (ruleset = createRuleset(static_cast<int>(version))) < 0 && errno == EINVAL)
        --version;
    if (ruleset < 0)
        return 0;
    for (const std::string& path : readableFiles)
        allowReading(ruleset, path);
    const bool isInForce = syscall(SYS_landlock_restrict_self, ruleset, 0) == 0;
    close(ruleset);
    return isInForce ? static_cast<int>(version) : 0;
}

} // namespace vfIsolation
