// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/StringList.h>
#include <velaforge/base/VfObject.h>
#include <velaforge/base/VfString.h>

#include <memory>

namespace vfBase {

struct ArgumentParserPrivate;

/// The command line: who reads an option takes it off, and what nobody took is reported at the end.
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
/// What stands behind a "--" is never an option. Works on the argc and argv given, in place, and also on
/// an argc of 0 and a null argv.
class VFBASE_EXPORT ArgumentParser : public VfObject
{
public:
    /// What kind of help is asked for.
    enum HelpType : int
    {
        NoHelp = 0,
        CommandLineHelp = 1 ///< "--help" or "-h": the usage text with all options
    };

    /// @param argc, argv  both stay with the caller and must live as long as the parser; argc must not be null
    ArgumentParser(int* argc, char** argv);
    ~ArgumentParser() override;

    ArgumentParser(const ArgumentParser&) = delete;
    ArgumentParser& operator=(const ArgumentParser&) = delete;

    static const ClassInfo s_classInfo;
    const ClassInfo* getClassInfo() const override;

    int& getArgumentCount();
    char** getArgumentVector();

    /// @return the argument, null outside 0 to the count
    const char* getArgumentAt(int index) const;

    /// @return true when the argument at @p index is an option and not a file name; false outside the range
    bool isOption(int index) const;

    /// Takes a flag off the command line, as often as it stands there.
    /// @return true when it was there
    bool readOptionParameter(const char* option);

    /// Takes an option and its parameter off the command line, as "--size 640x480" or "--size=640x480".
    /// Given several times, the last one counts. An option whose parameter is missing (nothing follows, or
    /// another option) or malformed is an error that hasErrors() tells, and leaves @p value as it was.
    /// @return true when a value was read
    bool readOptionParameter(const char* option, VfString& value);
    bool readOptionParameter(const char* option, int& value);
    bool readOptionParameter(const char* option, double& value);

    /// Takes every one of them, and appends the parameters in the order in which they stand.
    bool readOptionParameter(const char* option, StringList& values);

    /// The name shown in usage text and errors; null or empty until it is set.
    const char* getApplicationName() const;
    void setApplicationName(const char* name);

    /// One line that tells what the program is for.
    const char* getDescription() const;
    void setDescription(const char* description);

    /// The line behind "Usage:".
    const char* getCommandLineUsage() const;
    void setCommandLineUsage(const char* usage);

    /// Adds a row to the usage text.
    /// @param option        with its parameter, as "--image <filename>"
    /// @param defaultValue  shown behind the explanation; may be null
    void addCommandLineOption(const char* option, const char* explanation, const char* defaultValue);

    /// @return the kind of help asked for on the command line; asking changes nothing
    HelpType getHelpTypeRequested();

    /// Writes the usage text to standard output; nothing for NoHelp.
    void printUsage(HelpType type);

    /// Records an error that hasErrors() then tells. A text that is recorded already is not recorded again.
    void reportError(const VfString& message);

    bool hasErrors() const;

    /// @return the errors in the order in which they were recorded, one a line, without a line end at the end
    VfString getErrorMessage();

    /// Writes the errors to standard error, a line each with the application name in front.
    void printErrorMessages();

    /// Records an error for each option that nobody has read.
    void reportRemainingOptionsAsUnrecognized();

    /// @return "vfBase::ArgumentParser"
    static const char* classId();

private:
    std::unique_ptr<ArgumentParserPrivate> d;
};

} // namespace vfBase
