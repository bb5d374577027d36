// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/StringList.h>
#include <velaforge/base/VfObject.h>
#include <velaforge/base/VfString.h>

#include <memory>

namespace vfBase {

struct ArgumentParserPrivate;

/// Reads the command line. Reading an option consumes it; options that no code has read are reported at the
/// end.
///
///     vfBase::ArgumentParser parser(&argc, argv);
///     vfBase::VfString picture;
///     parser.readOptionParameter("--snapshot", picture);
///     const bool log = parser.readOptionParameter("--log");
///     parser.reportRemainingOptionsAsUnrecognized();
///     if (parser.hasErrors())
///         parser.printErrorMessages();
///
/// An argument is an option if it begins with "-" and is longer than that; "-" itself is a file name.
/// Arguments behind "--" are not options. The parser changes the argc and argv given, in place. It also works
/// with an argc of 0 and a null argv.
class VFBASE_EXPORT ArgumentParser : public VfObject
{
public:
    /// The kind of help that the command line asks for.
    enum HelpType : int
    {
        NoHelp = 0,         ///< none
        CommandLineHelp = 1 ///< "--help" or "-h": the usage text with all options
    };

    /// Makes a parser of the command line. @p argc, which must not be null, and @p argv belong to the caller
    /// and must live as long as the parser.
    ArgumentParser(int* argc, char** argv);
    ~ArgumentParser() override;

    ArgumentParser(const ArgumentParser&) = delete;
    ArgumentParser& operator=(const ArgumentParser&) = delete;

    /// The class record, without a creator.
    static const ClassInfo s_classInfo;
    const ClassInfo* getClassInfo() const override;

    /// Returns the number of arguments left, program name included.
    int& getArgumentCount();

    /// Returns the arguments left, program name included.
    char** getArgumentVector();

    /// Returns the argument at @p index, null for an index out of range.
    const char* getArgumentAt(int index) const;

    /// Returns whether the argument at @p index is an option; false for a file name and for an index out of
    /// range.
    bool isOption(int index) const;

    /// Consumes every occurrence of the flag @p option.
    /// @return false if there was none
    bool readOptionParameter(const char* option);

    /// Consumes every occurrence of an option with its parameter, such as "--size 640x480" or
    /// "--size=640x480", and sets @p value to the last parameter. If a parameter is missing, because another
    /// option or nothing follows, or is malformed, records an error and leaves @p value unchanged.
    /// @return true if a value was read
    bool readOptionParameter(const char* option, VfString& value);

    /// Does the same for a whole number.
    bool readOptionParameter(const char* option, int& value);

    /// Does the same for a number.
    bool readOptionParameter(const char* option, double& value);

    /// Does the same, and appends the parameters of all occurrences to @p values, in order.
    bool readOptionParameter(const char* option, StringList& values);

    /// Returns the name shown in usage text and errors; null or empty until it is set.
    const char* getApplicationName() const;

    /// Sets the name shown in usage text and errors.
    void setApplicationName(const char* name);

    /// Returns the line that describes the program.
    const char* getDescription() const;

    /// Sets the line that describes the program.
    void setDescription(const char* description);

    /// Returns the line behind "Usage:".
    const char* getCommandLineUsage() const;

    /// Sets the line behind "Usage:".
    void setCommandLineUsage(const char* usage);

    /// Adds a row to the usage text.
    /// @param option        option and parameter, such as "--image <filename>"
    /// @param explanation   what the option does
    /// @param defaultValue  shown behind the explanation; may be null
    void addCommandLineOption(const char* option, const char* explanation, const char* defaultValue);

    /// Returns the kind of help that the command line asks for. Consumes nothing.
    HelpType getHelpTypeRequested();

    /// Writes the usage text to standard output; nothing for NoHelp.
    void printUsage(HelpType type);

    /// Records an error, unless an error with the same text is recorded.
    void reportError(const VfString& message);

    /// Returns whether an error was recorded.
    bool hasErrors() const;

    /// Returns the recorded errors in order, one per line, without a line end behind the last.
    VfString getErrorMessage();

    /// Writes the recorded errors to standard error, one per line, with the application name in front.
    void printErrorMessages();

    /// Records an error for each option that is left on the command line.
    void reportRemainingOptionsAsUnrecognized();

    /// Returns "vfBase::ArgumentParser".
    static const char* classId();

private:
    std::unique_ptr<ArgumentParserPrivate> d;
};

} // namespace vfBase
