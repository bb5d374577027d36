// SPDX-License-Identifier: MIT
#include <velaforge/isolation/internal/CallFilter.h>

#include <cerrno>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include <fcntl.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <unistd.h>

namespace vfIsolation {

namespace {

/// Calls by name, since not every architecture and every version of the library has each of them.
struct Calls
{
    std::uint32_t action;
    std::initializer_list<const char*> names;
};

const Calls& allowed()
{
    static const Calls calls = {
        SCMP_ACT_ALLOW,
        {// what is open
         "read", "pread64", "readv", "preadv", "write", "pwrite64", "writev", "pwritev", "lseek", "_llseek",
         "close", "close_range", "fstat", "fstat64", "ftruncate", "ftruncate64", "fallocate", "fadvise64",
         "fsync", "fdatasync", "sendmsg", "recvmsg", "poll", "ppoll", "select", "_newselect", "pselect6",
         "getdents64", "dup", "pipe", "pipe2",
         // names: Landlock does not hold these, and they tell little
         "stat", "stat64", "lstat", "lstat64", "newfstatat", "fstatat64", "statx", "access", "faccessat",
         "faccessat2", "readlink", "readlinkat", "getcwd",
         // memory
         "munmap", "mremap", "brk", "madvise", "mincore",
         // threads
         "futex", "futex_time64", "set_robust_list", "rseq", "sched_yield", "sched_getaffinity", "exit",
         "exit_group", "gettid", "getpid", "set_tid_address", "membarrier",
         // signals of its own
         "rt_sigaction", "rt_sigprocmask", "rt_sigreturn", "rt_sigpending", "sigaltstack", "restart_syscall",
         // clocks and facts
         "clock_gettime", "clock_gettime64", "clock_getres", "clock_nanosleep", "nanosleep", "gettimeofday",
         "time", "getrandom", "uname", "sysinfo", "getuid", "geteuid", "getgid", "getegid", "getppid",
         "getrusage", "times", "getrlimit", "umask", "getcpu"}};
    return calls;
}

const Calls& refused()
{
    static const Calls calls = {
        SCMP_ACT_ERRNO(EPERM),
        {// sockets
         "socket", "socketpair", "connect", "bind", "listen", "accept", "accept4", "sendto", "sendmmsg",
         "recvmmsg", "setsockopt", "shutdown",
         // processes and signals to others
         "fork", "vfork", "kill", "tkill", "rt_sigqueueinfo", "rt_tgsigqueueinfo", "pidfd_open",
         "pidfd_getfd", "pidfd_send_signal", "process_vm_readv", "process_vm_writev", "process_madvise",
         "kcmp", "wait4", "waitid", "setpgid", "setsid", "prlimit64", "setrlimit", "setpriority",
         "sched_setscheduler", "sched_setattr", "sched_setparam", "sched_setaffinity", "ioprio_set",
         // files by name
         "creat", "truncate", "unlink", "unlinkat", "rename", "renameat", "renameat2", "link", "linkat",
         "symlink", "symlinkat", "mkdir", "mkdirat", "rmdir", "mknod", "mknodat", "chmod", "fchmod",
         "fchmodat", "fchmodat2", "chown", "fchown", "lchown", "fchownat", "utime", "utimes", "futimesat",
         "utimensat", "setxattr", "lsetxattr", "fsetxattr", "removexattr", "lremovexattr", "fremovexattr",
         "chdir", "fchdir", "chroot", "pivot_root", "mount", "umount2", "open_by_handle_at",
         "name_to_handle_at", "open_tree", "move_mount", "fsopen", "fsmount", "flock", "inotify_init",
         "inotify_init1", "inotify_add_watch", "fanotify_init", "quotactl", "swapon", "swapoff", "sync",
         "syncfs", "memfd_create", "memfd_secret",
         // rights and the system
         "setuid", "setgid", "setreuid", "setregid", "setresuid", "setresgid", "setgroups", "setfsuid",
         "setfsgid", "capset", "seccomp", "landlock_create_ruleset", "landlock_add_rule",
         "landlock_restrict_self", "unshare", "setns", "keyctl", "add_key", "request_key", "perf_event_open",
         "userfaultfd", "io_uring_setup", "io_uring_enter", "io_uring_register", "io_setup", "io_submit",
         "personality", "modify_ldt", "iopl", "ioperm", "init_module", "finit_module", "delete_module",
         "kexec_load", "kexec_file_load", "reboot", "sethostname", "setdomainname", "settimeofday",
         "clock_settime", "adjtimex", "clock_adjtime", "acct", "syslog", "vhangup", "pkey_mprotect",
         "remap_file_pages", "timer_create", "setitimer", "alarm",
         // memory that other processes have, too
         "shmget", "shmat", "shmctl", "msgget", "msgsnd", "msgrcv", "msgctl", "semget", "semop", "semctl",
         "mq_open", "mq_unlink"}};
    return calls;
}

/// Calls that only an attack makes.
const Calls& fatal()
{
    static const Calls calls = {SCMP_ACT_KILL_PROCESS, {"execve", "execveat", "ptrace", "bpf"}};
    return calls;
}

class Filter
{
public:
    Filter() : m_context(seccomp_init(SCMP_ACT_ERRNO(ENOSYS))) {}
    ~Filter()
    {
        if (m_context)
            seccomp_release(m_context);
    }
    Filter(const Filter&) = delete;
    Filter& operator=(const Filter&) = delete;

    void add(const Calls& calls)
    {
        for (const char* name : calls.names)
            add(calls.action, name, {});
    }

    /// Adds a rule for a call whose arguments are as given.
    void add(std::uint32_t action, const char* name, const std::vector<scmp_arg_cmp>& arguments)
    {
        const int number = seccomp_syscall_resolve_name(name);
        if (number == __NR_SCMP_ERROR)
            return; // the library does not know it, so that it is unknown to the filter
        const int result = seccomp_rule_add_array(
            m_context, action, number, static_cast<unsigned int>(arguments.size()), arguments.data());
        // A call that another architecture has alone is none here.
        if (result != 0 && result != -EDOM && result != -EFAULT)
            m_isGood = false;
    }

    bool load()
    {
        if (!m_context || !m_isGood)
            return false;
        seccomp_attr_set(m_context, SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_KILL_PROCESS);
        constexpr std::uint32_t binaryTree = 2; // faster than a list
        seccomp_attr_set(m_context, SCMP_FLTATR_CTL_OPTIMIZE, binaryTree);
        return seccomp_load(m_context) == 0;
    }

private:
    scmp_filter_ctx m_context;
    bool m_isGood = true;
};

scmp_arg_cmp isEqual(unsigned int argument, scmp_datum_t value)
{
    return {argument, SCMP_CMP_EQ, value, 0};
}

/// Of the bits of a mask, exactly those of a value are set.
scmp_arg_cmp hasBits(unsigned int argument, scmp_datum_t mask, scmp_datum_t value)
{
    return {argument, SCMP_CMP_MASKED_EQ, mask, value};
}

void addOpening(Filter& filter)
{
    constexpr scmp_datum_t writing = O_ACCMODE | O_CREAT | O_TRUNC | O_APPEND;
    filter.add(SCMP_ACT_ALLOW, "open", {hasBits(1, writing, O_RDONLY)});
    filter.add(SCMP_ACT_ALLOW, "openat", {hasBits(2, writing, O_RDONLY)});
    for (const scmp_datum_t mode : {O_WRONLY, O_RDWR, O_ACCMODE}) {
        filter.add(SCMP_ACT_ERRNO(EACCES), "open", {hasBits(1, O_ACCMODE, mode)});
        filter.add(SCMP_ACT_ERRNO(EACCES), "openat", {hasBits(2, O_ACCMODE, mode)});
    }
}

void addMemory(Filter& filter)
{
    for (const char* name : {"mmap", "mmap2", "mprotect"}) {
        filter.add(SCMP_ACT_ALLOW, name, {hasBits(2, PROT_EXEC, 0)});
        filter.add(SCMP_ACT_ERRNO(EPERM), name, {hasBits(2, PROT_EXEC, PROT_EXEC)});
    }
}

void addThreads(Filter& filter)
{
    // The flags of clone3 lie behind a pointer; the C library falls back to clone.
    constexpr scmp_datum_t thread = CLONE_VM | CLONE_FS | CLONE_FILES | CLONE_SIGHAND | CLONE_THREAD;
    constexpr scmp_datum_t elsewhere = CLONE_NEWNS | CLONE_NEWCGROUP | CLONE_NEWUTS | CLONE_NEWIPC |
                                       CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET | CLONE_PTRACE |
                                       CLONE_VFORK;
    filter.add(SCMP_ACT_ALLOW, "clone", {hasBits(0, thread | elsewhere, thread)});
    filter.add(SCMP_ACT_ERRNO(EPERM), "clone", {hasBits(0, CLONE_THREAD, 0)});
    filter.add(SCMP_ACT_ALLOW, "tgkill",
               {isEqual(0, static_cast<scmp_datum_t>(getpid()))}); // as abort() does
}

void addControls(Filter& filter)
{
    for (const int command : {F_GETFD, F_SETFD, F_GETFL, F_DUPFD_CLOEXEC, F_ADD_SEALS, F_GET_SEALS})
        filter.add(SCMP_ACT_ALLOW, "fcntl", {isEqual(1, static_cast<scmp_datum_t>(command))});
    constexpr scmp_datum_t nameMemory = 0x53564d41; // PR_SET_VMA, by which allocators name their areas
    filter.add(SCMP_ACT_ALLOW, "prctl", {isEqual(0, nameMemory)});
    filter.add(SCMP_ACT_ERRNO(ENOTTY), "ioctl", {});
}

} // namespace

bool restrictCalls()
{
    Filter filter;
    filter.add(allowed());
    filter.add(refused());
    filter.add(fatal());
    addOpening(filter);
    addMemory(filter);
    addThreads(filter);
    addControls(filter);
    return filter.load();
}

} // namespace vfIsolation
