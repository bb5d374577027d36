// SPDX-License-Identifier: MIT
// The helper whose processes read and write files.
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/formats/ReaderTasks.h>
#include <velaforge/isolation/Helper.h>

#include <osg/Notify>

int main(int argc, char** argv)
{
    vfIsolation::Helper helper;
    vfBase::NotifyHandler::instance().install();
    osg::setNotifyLevel(osg::WARN);
    vfFormats::addReaderTasks(helper);
    return helper.run(argc, argv);
}
