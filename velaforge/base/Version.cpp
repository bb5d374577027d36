// SPDX-License-Identifier: MIT
#include <velaforge/base/Version.h>

#include <osg/Notify>

namespace vfBase {

namespace {

bool s_verbose = false;
osg::NotifySeverity s_levelBefore = osg::NOTICE;

} // namespace

const char* getVersion()
{
    return VELAFORGE_VERSION;
}

void setVerbose(bool verbose)
{
    if (verbose == s_verbose)
        return;
    if (verbose) {
        s_levelBefore = osg::getNotifyLevel();
        if (s_levelBefore < osg::INFO)
            osg::setNotifyLevel(osg::INFO);
    } else {
        osg::setNotifyLevel(s_levelBefore);
    }
    s_verbose = verbose;
}

bool isVerbose()
{
    return s_verbose;
}

} // namespace vfBase
