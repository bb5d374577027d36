// SPDX-License-Identifier: MIT
#pragma once

#include <osg/ref_ptr>

namespace osgDB {
class DatabasePager;
class ImagePager;
} // namespace osgDB

namespace vfApplication {

/// Returns pagers that ignore every request.
osg::ref_ptr<osgDB::DatabasePager> makeIgnoringDatabasePager();
osg::ref_ptr<osgDB::ImagePager> makeIgnoringImagePager();

/// Replaces the pagers of an osgViewer::View by ones that ignore every request, so that drawing reads no file: a
/// scene may name files to be loaded when the camera comes near. Call it after setSceneData(), which may make
/// new pagers.
template <class View>
void forbidPaging(View& view)
{
    view.setDatabasePager(makeIgnoringDatabasePager());
    view.setImagePager(makeIgnoringImagePager());
}

} // namespace vfApplication
