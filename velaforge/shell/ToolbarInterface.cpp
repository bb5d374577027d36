// SPDX-License-Identifier: MIT
#include <velaforge/shell/ToolbarInterface.h>

#include <velaforge/application/Application.h>

namespace vfApplication {

Application* ToolbarInterface::getApplication() const
{
    return Application::instance(false);
}

} // namespace vfApplication
