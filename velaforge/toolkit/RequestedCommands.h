// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/StringList.h>
#include <velaforge/base/VfString.h>

#include <functional>

namespace vfBase {
class ArgumentParser;
}

namespace vfApplication {

/// The commands that a command line asks for with "--invoke" and "--script".
class RequestedCommands
{
public:
    /// What a toolkit side knows.
    struct Host
    {
        /// Reports a failure; the subject is a command, with file and line if a script names it.
        std::function<void(const vfBase::VfString& subject, const vfBase::VfString& reason)> tell;

        /// Returns the number of failures that the document manager has reported, such as files that could not be
        /// opened.
        std::function<unsigned int()> failureCount;

        /// Returns whether the program ends, so that no further command is run.
        std::function<bool()> isEnding;
    };

    enum class Result
    {
        Done,
        Failed, ///< a command failed on which nothing depends; all were run
        Stopped ///< a command failed on which others may depend, or none could be run
    };

    /// Adds the options to the help.
    static void declareOptions(vfBase::ArgumentParser& parser);

    /// Takes the options from a command line. Options that were taken before are kept.
    void readOptions(vfBase::ArgumentParser& parser);

    /// Returns whether nothing is asked for.
    bool isEmpty() const { return m_commands.isEmpty() && m_script.empty(); }

    /// Runs the commands of the script, then the others, in order. Throws only what the functions of the host throw.
    Result run(const Host& host) const;

private:
    vfBase::StringList m_commands; ///< each with its argument behind "="
    vfBase::VfString m_script;
};

} // namespace vfApplication
