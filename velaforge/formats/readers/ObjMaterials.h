// SPDX-License-Identifier: MIT
#pragma once

#include <osg/StateSet>
#include <osg/ref_ptr>

#include <map>
#include <string>

namespace vfFormats {

/// The materials that files of the format "obj" name, by their names.
class ObjMaterials
{
public:
    /// @param directory  in which the file lies that names the libraries
    explicit ObjMaterials(const std::string& directory) : m_directory(directory) {}

    /// Adds the materials of a library, or of several in one line; what is missing is told by the gate.
    void addLibrary(const std::string& names);

    /// @return how a surface of that material is drawn; null for none of that name
    osg::StateSet* find(const std::string& name) const;

private:
    bool readLibrary(const std::string& path);

    std::string m_directory;
    std::map<std::string, osg::ref_ptr<osg::StateSet>> m_materials;
};

} // namespace vfFormats
