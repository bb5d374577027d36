// SPDX-License-Identifier: MIT
#include "reading/ReaderProtocol.h"

namespace vfViewer {

bool putPath(ReaderRequest& request, const std::string& path)
{
    if (path.size() >= sizeof(request.path))
        return false;
    path.copy(request.path, path.size());
    return true;
}

} // namespace vfViewer
