// SPDX-License-Identifier: MIT
#include <velaforge/base/ArgumentParser.h>

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Printable.h>

#include <osg/ApplicationUsage>
#include <osg/ArgumentParser>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

namespace vfBase {

struct ArgumentParserPrivate
{
    ArgumentParserPrivate(int* count, char** vector)
        : argc(count), argv(vector), parser(count, vector), usage(new osg::ApplicationUsage)
    {
        parser.setApplicationUsage(usage.get());
    }

    /// Returns the index of the "--" that ends the options; the count if there is none.
    int endOfOptions() const
    {
        for (int i = 1; argv && i < *argc; ++i) {
            if (argv[i] && std::strcmp(argv[i], "--") == 0)
                return i;
        }
        return argv ? *argc : 0;
    }

    int* argc;
    char** argv;
    osg::ArgumentParser parser;

    // Not the process-wide usage object, to which other libraries add rows: these are the rows of this parser
    // only.
    osg::ref_ptr<osg::ApplicationUsage> usage;

    std::string applicationName;
    std::string description;
    std::string commandLineUsage;
    std::vector<std::string> errors;
};

namespace {

/// One occurrence of an option with a parameter.
struct Occurrence
{
    bool found = false;
    bool complete = false;
    std::string parameter;
};

/// Consumes the first occurrence, written as two arguments or as one with "=".
Occurrence takeFirst(ArgumentParserPrivate& d, const std::string& option)
{
    Occurrence occurrence;
    const int end = d.endOfOptions();
    const std::string joined = option + "=";
    for (int i = 1; i < end; ++i) {
        const char* argument = d.argv[i];
        if (!argument)
            continue;
        if (option == argument) {
            occurrence.found = true;
            const char* next = i + 1 < end ? d.argv[i + 1] : nullptr;
            // A negative number or a lone "-" is a parameter, another option is not.
            occurrence.complete = next && (next[0] != '-' || next[1] == '\0' || d.parser.isNumber(next));
            if (occurrence.complete)
                occurrence.parameter = next;
            d.parser.remove(i, occurrence.complete ? 2 : 1);
            return occurrence;
        }
        if (std::strncmp(argument, joined.c_str(), joined.size()) == 0) {
            occurrence.found = true;
            occurrence.complete = argument[joined.size()] != '\0';
            occurrence.parameter = argument + joined.size();
            d.parser.remove(i, 1);
            return occurrence;
        }
    }
    return occurrence;
}

/// Consumes every occurrence and passes its parameter to @p accept, which returns what is wrong with it.
template <class Accept>
bool takeAll(ArgumentParser& parser, ArgumentParserPrivate& d, const char* option, Accept accept)
{
    bool read = false;
    for (Occurrence next = takeFirst(d, option); next.found; next = takeFirst(d, option)) {
        if (!next.complete) {
            parser.reportError(std::string("option \"") + option + "\" needs a value");
            continue;
        }
        const std::string complaint = accept(next.parameter);
        if (complaint.empty())
            read = true;
        else
            parser.reportError(std::string("option \"") + option + "\" needs " + complaint + ", not \"" +
                               next.parameter + "\"");
    }
    return read;
}

/// Returns whether the text begins with a blank: a typing mistake, which the system's functions would skip.
bool beginsWithBlank(const std::string& text)
{
    return !text.empty() && std::isspace(static_cast<unsigned char>(text[0])) != 0;
}

bool parseInteger(const std::string& text, int& value)
{
    errno = 0;
    char* end = nullptr;
    const long number = std::strtol(text.c_str(), &end, 10);
    if (beginsWithBlank(text) || end == text.c_str() || *end != '\0' || errno != 0 || number < INT_MIN ||
        number > INT_MAX)
        return false;
    value = static_cast<int>(number);
    return true;
}

bool parseReal(const std::string& text, double& value)
{
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    if (beginsWithBlank(text) || end == text.c_str() || *end != '\0' || !std::isfinite(number))
        return false;
    value = number;
    return true;
}

void assign(std::string& field, const char* text)
{
    field = text ? text : "";
}

} // namespace

const ClassInfo ArgumentParser::s_classInfo("vfBase", "ArgumentParser", ArgumentParser::classId(),
                                            &VfObject::s_classInfo, nullptr,
                                            static_cast<int>(sizeof(ArgumentParser)), nullptr);

ArgumentParser::ArgumentParser(int* argc, char** argv)
    : d(std::make_unique<ArgumentParserPrivate>(argc, argv))
{
    addCommandLineOption("-h, --help", "Show this text", nullptr);
}

ArgumentParser::~ArgumentParser() = default;

const ClassInfo* ArgumentParser::getClassInfo() const
{
    return &s_classInfo;
}

int& ArgumentParser::getArgumentCount()
{
    return *d->argc;
}

char** ArgumentParser::getArgumentVector()
{
    return d->argv;
}

const char* ArgumentParser::getArgumentAt(int index) const
{
    return d->argv && index >= 0 && index < *d->argc ? d->argv[index] : nullptr;
}

bool ArgumentParser::isOption(int index) const
{
    const char* argument = getArgumentAt(index);
    return argument && index <= d->endOfOptions() && argument[0] == '-' && argument[1] != '\0';
}

bool ArgumentParser::readOptionParameter(const char* option)
{
    bool found = false;
    for (int i = 1; i < d->endOfOptions();) {
        if (d->argv[i] && std::strcmp(d->argv[i], option) == 0) {
            d->parser.remove(i, 1);
            found = true;
        } else {
            ++i;
        }
    }
    return found;
}

bool ArgumentParser::readOptionParameter(const char* option, VfString& value)
{
    return takeAll(*this, *d, option, [&](const std::string& text) {
        value = text;
        return std::string();
    });
}

bool ArgumentParser::readOptionParameter(const char* option, int& value)
{
    return takeAll(*this, *d, option, [&](const std::string& text) {
        return parseInteger(text, value) ? std::string() : std::string("a whole number");
    });
}

bool ArgumentParser::readOptionParameter(const char* option, double& value)
{
    return takeAll(*this, *d, option, [&](const std::string& text) {
        return parseReal(text, value) ? std::string() : std::string("a number");
    });
}

bool ArgumentParser::readOptionParameter(const char* option, StringList& values)
{
    return takeAll(*this, *d, option, [&](const std::string& text) {
        values.append(text);
        return std::string();
    });
}

const char* ArgumentParser::getApplicationName() const
{
    return d->applicationName.c_str();
}

void ArgumentParser::setApplicationName(const char* name)
{
    assign(d->applicationName, name);
    d->usage->setApplicationName(d->applicationName);
}

const char* ArgumentParser::getDescription() const
{
    return d->description.c_str();
}

void ArgumentParser::setDescription(const char* description)
{
    assign(d->description, description);
    d->usage->setDescription(d->description);
}

const char* ArgumentParser::getCommandLineUsage() const
{
    return d->commandLineUsage.c_str();
}

void ArgumentParser::setCommandLineUsage(const char* usage)
{
    assign(d->commandLineUsage, usage);
    d->usage->setCommandLineUsage(d->commandLineUsage);
}

void ArgumentParser::addCommandLineOption(const char* option, const char* explanation,
                                          const char* defaultValue)
{
    d->usage->addCommandLineOption(option, explanation ? explanation : "", defaultValue ? defaultValue : "");
}

ArgumentParser::HelpType ArgumentParser::getHelpTypeRequested()
{
    for (int i = 1; i < d->endOfOptions(); ++i) {
        const char* argument = d->argv[i];
        if (argument && (std::strcmp(argument, "--help") == 0 || std::strcmp(argument, "-h") == 0))
            return CommandLineHelp;
    }
    return NoHelp;
}

void ArgumentParser::printUsage(HelpType type)
{
    if (type == NoHelp)
        return;
    std::ostream& out = std::cout;
    if (!d->applicationName.empty())
        out << d->applicationName << "\n";
    if (!d->description.empty())
        out << d->description << "\n";
    if (!d->commandLineUsage.empty())
        out << "\nUsage: " << d->commandLineUsage << "\n";
    out << "\nOptions:\n";
    std::size_t width = 0;
    for (const auto& row : d->usage->getCommandLineOptions())
        width = std::max(width, row.first.size());
    for (const auto& row : d->usage->getCommandLineOptions()) {
        out << "  " << row.first << std::string(width - row.first.size() + 2, ' ') << row.second;
        const auto& defaults = d->usage->getCommandLineOptionsDefaults();
        const auto byDefault = defaults.find(row.first);
        if (byDefault != defaults.end() && !byDefault->second.empty())
            out << " [" << byDefault->second << "]";
        out << "\n";
    }
    out.flush();
}

void ArgumentParser::reportError(const VfString& message)
{
    const std::string text = message;
    if (std::find(d->errors.begin(), d->errors.end(), text) == d->errors.end())
        d->errors.push_back(text);
}

bool ArgumentParser::hasErrors() const
{
    return !d->errors.empty();
}

VfString ArgumentParser::getErrorMessage()
{
    std::string text;
    for (const std::string& error : d->errors)
        text += (text.empty() ? "" : "\n") + error;
    return text;
}

void ArgumentParser::printErrorMessages()
{
    for (const std::string& error : d->errors)
        std::cerr << (d->applicationName.empty() ? "" : d->applicationName + ": ") << printable(error)
                  << "\n";
    std::cerr.flush();
}

void ArgumentParser::reportRemainingOptionsAsUnrecognized()
{
    const int end = d->endOfOptions();
    for (int i = 1; i < end; ++i) {
        if (isOption(i))
            reportError(std::string("unknown option \"") + d->argv[i] + "\"");
    }
}

const char* ArgumentParser::classId()
{
    return "vfBase::ArgumentParser";
}

} // namespace vfBase
