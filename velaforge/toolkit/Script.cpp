// SPDX-License-Identifier: MIT
#include <velaforge/toolkit/Script.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>

namespace vfApplication {

namespace {

const char* const byteOrderMark = "\xEF\xBB\xBF";

std::string trimmed(const std::string& text)
{
    const char* const blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Reads a stream to its end, up to the limits.
/// @return the reason why it is not a script; empty if it is one
std::string readLines(std::istream& input, std::vector<std::string>& lines)
{
    std::size_t size = 0;
    std::string line;
    const auto here = [&lines] { return "line " + std::to_string(lines.size() + 1); };
    for (char letter = 0; input.get(letter);) {
        if (++size > scriptLimit)
            return "a script has at most " + std::to_string(scriptLimit) + " bytes";
        if (letter == '\0')
            return here() + " has a zero byte; a script is text";
        if (letter == '\n') {
            lines.push_back(line);
            line.clear();
        } else if (line.size() == scriptLineLimit) {
            return here() + " has more than " + std::to_string(scriptLineLimit) + " bytes";
        } else {
            line += letter;
        }
    }
    lines.push_back(line);
    return std::string();
}

} // namespace

bool readScript(const vfBase::VfString& path, std::vector<ScriptLine>& lines, vfBase::VfString& reason)
{
    const bool isStandardInput = path == "-";
    std::ifstream file;
    errno = 0;
    if (!isStandardInput)
        file.open(path.str());
    std::istream& input = isStandardInput ? std::cin : file;
    std::vector<std::string> texts;
    std::string problem;
    if (input)
        problem = readLines(input, texts);
    // A directory can be opened but not read.
    if (problem.empty() && (input.bad() || (!isStandardInput && !file.is_open())))
        problem = std::strerror(errno != 0 ? errno : EIO);
    if (!problem.empty()) {
        reason = problem;
        return false;
    }
    if (!texts.empty() && texts[0].compare(0, std::strlen(byteOrderMark), byteOrderMark) == 0)
        texts[0].erase(0, std::strlen(byteOrderMark));
    const std::string name = isStandardInput ? "standard input" : path.str();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::string text = trimmed(texts[i]);
        if (!text.empty() && text[0] != '#')
            lines.push_back({text, name + ":" + std::to_string(i + 1) + ": "});
    }
    return true;
}

} // namespace vfApplication
