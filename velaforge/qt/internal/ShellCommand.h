// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/commands/CommandPrivate.h>

class QString;

namespace vfApplication {

class Document;
class MainWindow;

/// A command of the shell: it is carried out at once, stays out of every history, and says of itself what menus show.
/// Without a window it cannot be carried out.
class ShellCommand : public CommandPrivate
{
public:
    using CommandPrivate::Do;

    void invoke(const vfBase::VfVariant& argument) override;
    bool Do(const vfBase::VfVariant& argument) override;

protected:
    ~ShellCommand() override = default;

    /// @param keys  as QKeySequence reads them, null for none
    /// @param icon  null for none
    void describe(const QString& text, const char* keys, const char* icon, const QString& toolTip);
    void setEnabled(bool enabled);
    void setChecked(bool checked);

    virtual bool carryOut(MainWindow& window, const vfBase::VfVariant& argument) = 0;

    /// @return the active document, null when there is none
    static Document* document();
};

} // namespace vfApplication
