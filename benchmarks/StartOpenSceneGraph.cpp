// SPDX-License-Identifier: MIT
// A program that does nothing, but is linked with OpenSceneGraph: the least that any program on it costs.
#include <osg/Version>
#include <osgDB/Version>

int main()
{
    return osgGetVersion() && osgDBGetVersion() ? 0 : 1;
}
