// SPDX-License-Identifier: MIT
#include <velaforge/formats/ReadGuard.h>

#include <velaforge/formats/internal/PluginPath.h>

#include <osgDB/Registry>

namespace vfFormats {

namespace {

using osgDB::ReaderWriter;
using ReadResult = ReaderWriter::ReadResult;

class FindNothing : public osgDB::FindFileCallback
{
public:
    std::string findDataFile(const std::string&, const osgDB::Options*, osgDB::CaseSensitivity) override
    {
        return std::string();
    }

    std::string findLibraryFile(const std::string& name, const osgDB::Options*,
                                osgDB::CaseSensitivity) override
    {
        return pluginPath(name);
    }
};

class ReadNothing : public osgDB::ReadFileCallback
{
public:
    ReadResult openArchive(const std::string&, ReaderWriter::ArchiveStatus, unsigned int,
                           const osgDB::Options*) override
    {
        return refused();
    }
    ReadResult readObject(const std::string&, const osgDB::Options*) override { return refused(); }
    ReadResult readImage(const std::string&, const osgDB::Options*) override { return refused(); }
    ReadResult readHeightField(const std::string&, const osgDB::Options*) override { return refused(); }
    ReadResult readNode(const std::string&, const osgDB::Options*) override { return refused(); }
    ReadResult readShader(const std::string&, const osgDB::Options*) override { return refused(); }
    ReadResult readScript(const std::string&, const osgDB::Options*) override { return refused(); }

private:
    /// As if the file were not there: OpenSceneGraph has shaders of its own for texts, which it asks for then.
    static ReadResult refused() { return ReadResult::FILE_NOT_FOUND; }
};

} // namespace

void installReadGuard()
{
    static const bool isInstalled = [] {
        osgDB::Registry::instance()->setFindFileCallback(new FindNothing);
        osgDB::Registry::instance()->setReadFileCallback(new ReadNothing);
        return true;
    }();
    (void)isInstalled;
}

} // namespace vfFormats
