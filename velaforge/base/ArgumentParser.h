// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/StringList.h>
#include <velaforge/base/VfObject.h>
#include <velaforge/base/VfString.h>

#include <memory>

namespace vfBase {

struct ArgumentParserPrivate;

/// The command line. Reading an option removes it from the vector; options that remain can be reported as
/// unrecognised.
///
///     vfBase::ArgumentParser parser(&argc, argv);
///     vfBase::VfString picture;
///     parser.readOptionParameter("--snapshot", picture);
///     const bool log = parser.readOptionParameter("--log");
///     parser.reportRemainingOptionsAsUnrecognized();
///     if (parser.hasErrors())
///         parser.printErrorMessages();
///
/// An argument is an option when it begins with "-" and is longer than that; "-" itself is a file name.
/// Arguments behind "--" are file names. The parser changes the caller's argc and argv in place; an argc of 0
/// and a null argv are allowed.
class VFBASE_EXPORT ArgumentParser : public VfObject
{
public:
    /// The kind of help that the command line asks for.
    enum HelpType : int
    {
        NoHelp = 0,
        CommandLineHelp = 1 ///< "--help" or "-h": the usage text with all options
    };

    /// Works on the caller's command line.
    /// @param argc, argv  stay the caller's and must live as long as the parser; argc must not be null
    ArgumentParser(int* argc, char** argv);
    ~ArgumentParser() override;

    ArgumentParser(const ArgumentParser&) = delete;
    ArgumentParser& operator=(const ArgumentParser&) = delete;

    static const ClassInfo s_classInfo;
    const ClassInfo* getClassInfo() const override;

    /// @return the number of arguments that are left, the program's name included; the caller's argc itself
    int& getArgumentCount();

    /// @return the caller's vector, in which the arguments that are left stand in front
    char** getArgumentVector();

    /// @return the argument at @p index, valid as long as the caller's argv; null for an index out of range
    const char* getArgumentAt(int index) const;

    /// @return true when the argument at @p index is an option and not a file name; false outside the range
    bool isOption(int index) const;

    /// Reads a flag, as "--log", and removes every occurrence of it.
    /// @return true when there was one
    bool readOptionParameter(const char* option);

    /// Reads an option with a text, as "--size 640x480" or "--size=640x480", and removes both. Of several the
    /// last one counts. A missing parameter (nothing follows, or another option) is recorded as an error and
    /// leaves @p value.
    /// @return true when a value was read
    bool readOptionParameter(const char* option, VfString& value);

    /// Reads an option with a whole number in the same way. A parameter that is malformed or out of range is
    /// an error too.
    bool readOptionParameter(const char* option, int& value);

    /// Reads an option with a real number in the same way.
    bool readOptionParameter(const char* option, double& value);

    /// Reads an option that may be given several times, and appends the parameters to @p values in their
    /// order.
    /// @return true when a value was read
    bool readOptionParameter(const char* option, StringList& values);

    /// @return the name in the usage text and in front of errors; null or empty until it is set
    const char* getApplicationName() const;

    /// Sets that name. The text is copied.
    void setApplicationName(const char* name);

    /// @return the line of the usage text that says what the program is for
    const char* getDescription() const;

    /// Sets that line. The text is copied.
    void setDescription(const char* description);

    /// @return the line behind "Usage:"
    const char* getCommandLineUsage() const;

    /// Sets that line. The text is copied.
    void setCommandLineUsage(const char* usage);

    /// Adds a row to the usage text.
    /// @param option        with its parameter, as "--image <filename>"
    /// @param defaultValue  shown behind the explanation; may be null
    void addCommandLineOption(const char* option, const char* explanation, const char* defaultValue);

    /// @return the kind of help asked for on the command line; asking changes nothing
    HelpType getHelpTypeRequested();

    /// Writes the usage text to standard output; nothing for NoHelp.
    void printUsage(HelpType type);

    /// Records an error. A text that is recorded already is not recorded again.
    void reportError(const VfString& message);

    /// @return true when an error was recorded
    bool hasErrors() const;

    /// @return the errors in the order in which they were recorded, one a line, without a line end at the end
    VfString getErrorMessage();

    /// Writes the errors to standard error, a line each with the application name in front.
    void printErrorMessages();

    /// Records an error for each option that has not been read, whether the usage text has it or not.
    void reportRemainingOptionsAsUnrecognized();

    /// @return "vfBase::ArgumentParser"
    static const char* classId();

private:
    std::unique_ptr<ArgumentParserPrivate> d;
};

} // namespace vfBase
