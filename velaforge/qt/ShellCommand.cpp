// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/ShellCommand.h>

#include <velaforge/application/Application.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/internal/Text.h>

namespace vfApplication {

void ShellCommand::invoke(const vfBase::VfVariant& argument)
{
    setArgument(argument);
    Do(argument);
}

bool ShellCommand::Do(const vfBase::VfVariant& argument)
{
    QtApplication* shell = QtApplication::instance();
    return shell && carryOut(shell->getImp(), argument);
}

void ShellCommand::describe(const QString& text, const char* keys, const char* icon, const QString& toolTip)
{
    Properties properties = getProperties();
    properties["text"] = vfBase::VfVariant(fromQt(text));
    if (keys)
        properties["shortcut"] = vfBase::VfVariant(keys);
    if (icon)
        properties["icon"] = vfBase::VfVariant(icon);
    if (!toolTip.isEmpty())
        properties["toolTip"] = vfBase::VfVariant(fromQt(toolTip));
}

void ShellCommand::setEnabled(bool enabled)
{
    getProperties()["enabled"] = vfBase::VfVariant(enabled);
}

void ShellCommand::setChecked(bool checked)
{
    Properties properties = getProperties();
    properties["checkable"] = vfBase::VfVariant(true);
    properties["checked"] = vfBase::VfVariant(checked);
}

Document* ShellCommand::document()
{
    const Application* application = Application::instance(false);
    return application ? application->getActiveDocument() : nullptr;
}

} // namespace vfApplication
