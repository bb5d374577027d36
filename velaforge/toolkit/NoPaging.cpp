// SPDX-License-Identifier: MIT
#include <velaforge/toolkit/NoPaging.h>

#include <osgDB/DatabasePager>
#include <osgDB/ImagePager>

#include <string>

namespace vfApplication {

namespace {

// Without any pager, osgViewer::Viewer::checkNeedToDoFrame() would dereference null.

class IgnoringDatabasePager : public osgDB::DatabasePager
{
public:
    void requestNodeFile(const std::string&, osg::NodePath&, float, const osg::FrameStamp*,
                         osg::ref_ptr<osg::Referenced>&, const osg::Referenced*) override
    {}
};

class IgnoringImagePager : public osgDB::ImagePager
{
public:
    osg::ref_ptr<osg::Image> readRefImageFile(const std::string&, const osg::Referenced*) override
    {
        return nullptr;
    }
    void requestImageFile(const std::string&, osg::Object*, int, double, const osg::FrameStamp*,
                          osg::ref_ptr<osg::Referenced>&, const osg::Referenced*) override
    {}
};

} // namespace

osg::ref_ptr<osgDB::DatabasePager> makeIgnoringDatabasePager()
{
    return new IgnoringDatabasePager;
}

osg::ref_ptr<osgDB::ImagePager> makeIgnoringImagePager()
{
    return new IgnoringImagePager;
}

} // namespace vfApplication
