// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vfFormats {

/// Decides which files may be read beside a model, and finds those that it names.
///
///     const std::string model = "/home/me/boat/boat.obj";
///     const SideFiles reading(model, findSideFiles(model));
///     SideFiles::find("C:\\sails\\sail.png");   // "/home/me/boat/textures/sail.png", if it is there
///
/// Admitted are files in the folder of the model and below it, and in the folders beside it, as "../textures" is: these only
/// where the folder above belongs to the owner of the model's folder and not all users may write to it. Hidden files and
/// folders (".ssh") are not admitted, and neither is what links lead to elsewhere. A model that is a link has two folders:
/// that of the link and that of the file. Neither the current directory nor the environment plays a part. Which of these files
/// there are is looked up before, see findSideFiles(): no folder is opened here.
class SideFiles
{
public:
    /// From here on this thread reads @p model, until the object is destroyed. Objects nest.
    /// @param files  what findSideFiles() returned
    SideFiles(const std::string& model, const std::vector<std::string>& files);
    ~SideFiles();

    SideFiles(const SideFiles&) = delete;
    SideFiles& operator=(const SideFiles&) = delete;

    /// Returns whether this thread reads a model, so that there is a rule.
    static bool isInForce();

    /// Returns whether the file at @p path exists and may be read beside the model; true while no model is read.
    static bool isAdmitted(const std::string& path);

    /// Finds the file that a model names. Models are often made on another computer: the name may be an absolute path there,
    /// with a drive letter and backslashes, in quotation marks, with other capitals than the file, or with "%20" for a space.
    /// Such a path is looked for with as many of its last folders as are there, in the folder of the model; then its last name in
    /// the folders in and beside it.
    /// @param directories  where a name is looked for first: those of files that name others
    /// @return the path of an admitted file; empty when there is none, or no model is read
    static std::string find(const std::string& name, const std::vector<std::string>& directories = {});

    /// Returns the files that were asked for on this thread, are there, and are not listed, by their real paths, each once, a
    /// hundred at most. Forgets them.
    static std::vector<std::string> takeMissed();

private:
    struct Rule;
    class Finder;
    const Rule* m_rule;
    const Rule* m_former;
};

} // namespace vfFormats
