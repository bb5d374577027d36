// SPDX-License-Identifier: MIT
// Has a task done for ever: isolation_program <helper>
#include <velaforge/isolation/IsolatedJob.h>

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    vfIsolation::JobControl control;
    vfIsolation::IsolatedTask task;
    task.helper = argv[1];
    task.name = "sleep";
    runIsolated(control, task);
    return 1;
}
