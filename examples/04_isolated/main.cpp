// SPDX-License-Identifier: MIT
// Counts the words of files that cannot be trusted. A process reads each file that can do nothing else.
#include <velaforge/isolation/Helper.h>
#include <velaforge/isolation/IsolatedJob.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

using namespace vfIsolation;

// Runs in a process of its own, in which even a broken counter harms nothing.
std::string countWords(TaskContext& context)
{
    std::ifstream file{std::string(context.argument())};
    if (!file)
        return "cannot be opened";
    int words = 0;
    for (std::string word; file >> word;)
        ++words;
    const std::string text = std::to_string(words);
    context.append(text.data(), text.size());
    return std::string();
}

int main(int argc, char** argv)
{
    Helper helper;
    helper.add("count words", countWords);
    if (Helper::isStartedByProgram(argc, argv))
        return helper.run(argc, argv);

    IsolatedTask task;
    task.helper = std::filesystem::canonical("/proc/self/exe");
    task.name = "count words";
    int status = 0;
    for (int i = 1; i < argc; ++i) {
        task.argument = std::filesystem::absolute(argv[i]);
        task.readableFiles = {task.argument};
        IsolatedJob job(task);
        while (!job.wait(100))
            std::cerr << "." << std::flush; // a window would go on with its work
        const IsolatedResult result = job.take();
        const std::string words(reinterpret_cast<const char*>(result.bytes.data()), result.bytes.size());
        (result.reason.empty() ? std::cout : std::cerr)
            << argv[i] << ": " << (result.reason.empty() ? words : result.reason) << std::endl;
        status = result.reason.empty() ? status : 1;
    }
    return status;
}
