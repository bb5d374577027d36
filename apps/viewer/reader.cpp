// SPDX-License-Identifier: MIT
// The launcher of the processes that read and write files, which the viewer executes.
#include "reading/ModelReader.h"
#include "reading/ReaderServer.h"
#include "writing/FormatWriter.h"

#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/StandardDescriptors.h>

#include <osg/Notify>

#include <cstdlib>
#include <string>

#include <sys/socket.h>

namespace {

/// Where the viewer puts the socket.
constexpr int socketDescriptor = 3;

bool isSocket(int descriptor)
{
    int kind = 0;
    socklen_t size = sizeof(kind);
    return getsockopt(descriptor, SOL_SOCKET, SO_TYPE, &kind, &size) == 0 && kind == SOCK_SEQPACKET;
}

} // namespace

int main()
{
    vfBase::openStandardDescriptors();
    if (!isSocket(socketDescriptor))
        return EXIT_FAILURE; // started by hand, not by the program
    vfBase::NotifyHandler::instance().install();
    if (!std::getenv("OSG_NOTIFY_LEVEL"))
        osg::setNotifyLevel(osg::WARN);
    vfViewer::serveReaders(socketDescriptor,
                           {vfViewer::readModel, vfViewer::readImageOnQuad, vfViewer::writeFormat});
}
