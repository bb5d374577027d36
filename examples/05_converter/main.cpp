// SPDX-License-Identifier: MIT
// Converts models: 05_converter <extension> <file>... writes each one beside it in the format of that extension. Processes
// that have access to nothing else read and write the files, so they may come from anywhere.
#include <velaforge/formats/ReadJob.h>
#include <velaforge/formats/WriteJob.h>

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

using namespace vfFormats;

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::cerr << "usage: " << argv[0] << " <extension> <file>..." << std::endl;
        return 1;
    }
    const std::string extension = argv[1];
    std::vector<std::unique_ptr<ReadJob>> jobs; // which read at the same time
    for (int i = 2; i < argc; ++i)
        jobs.push_back(std::make_unique<ReadJob>(argv[i]));
    int status = 0;
    for (const std::unique_ptr<ReadJob>& job : jobs) {
        while (!job->wait(100))
            std::cerr << static_cast<int>(job->progress() * 100) << " %\r" << std::flush;
        const ReadOutcome read = job->take();
        const std::string target = std::filesystem::path(job->path()).replace_extension(extension);
        const std::string reason = read.scene ? writeModel(*read.scene, target).reason : read.reason;
        if (reason.empty())
            std::cout << target << std::endl;
        else
            std::cerr << job->path() << ": " << reason << std::endl;
        for (const std::string& warning : read.warnings)
            std::cerr << warning << std::endl;
        status = reason.empty() ? status : 1;
    }
    return status;
}
